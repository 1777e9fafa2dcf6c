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
    void show(const FileReport& report, const std::vector<Profile>& profiles, bool fresh);

Q_SIGNALS:
    /// The keyboard came to a row.
    void rowShown(const QRect& row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void toggle(const QModelIndex& index);
    void open(const QModelIndex& index);
    void fitRows();

    ReportRows* m_rows;
    ReportRowDelegate* m_delegate;
    QVariantAnimation* m_opening;
};

} // namespace vantroque
