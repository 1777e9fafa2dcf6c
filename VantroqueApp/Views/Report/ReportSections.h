#pragma once

#include "VantroqueApp/Views/Report/ReportRows.h"

#include <QListView>

class QVariantAnimation;

namespace vantroque {

class ReportRowDelegate;

/// What each platform says. As high as its rows: what holds it scrolls.
class ReportSections : public QListView {
    Q_OBJECT

public:
    explicit ReportSections(QWidget* parent = nullptr);
    /// `fresh`: another file than before.
    void show(std::vector<ProfileReport> reports, const std::vector<Profile>& profiles, bool fresh);
    /// Where rows may point at; frames count at `frameRate`.
    void setEvents(std::vector<SignalEvent> events, double frameRate);

Q_SIGNALS:
    /// The keyboard came to a row.
    void rowShown(const QRect& row);
    /// A row that points there was pressed.
    void momentChosen(const vantroque::SignalEvent& event);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void press(const QModelIndex& index);
    void toggle(const QModelIndex& index);
    void open(const QModelIndex& index);
    void fitRows();

    ReportRows* m_rows;
    ReportRowDelegate* m_delegate;
    QVariantAnimation* m_opening;
};

} // namespace vantroque
