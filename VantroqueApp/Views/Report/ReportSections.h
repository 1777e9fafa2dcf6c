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
    /// `open` is what is open of the file, is kept up and must stay. Moments count frames at
    /// `frameRate`.
    void show(const FileReport& report, const std::vector<Profile>& profiles, double frameRate,
              OpenRows& open);
    /// There is room for all of a check on one line.
    void setWide(bool wide);
    /// Goes to the row of a check, and opens what it stands in.
    void reveal(const QString& profile, const QString& check);

Q_SIGNALS:
    /// The keyboard came to a row.
    void rowShown(const QRect& row);
    /// A row that points there was pressed.
    void momentChosen(const QString& check, const vantroque::CheckMoment& moment);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void press(const QModelIndex& index);
    void toggle(const QModelIndex& index);
    void open(const QModelIndex& index);
    void copy() const;
    void fitRows();

    ReportRows* m_rows;
    ReportRowDelegate* m_delegate;
    QVariantAnimation* m_opening;
    const OpenRows* m_open = nullptr; ///< Of the file that is shown.
    bool m_wide = false;
};

} // namespace vantroque
