#pragma once

#include "VantroqueApp/Views/Profiles/ProfileRows.h"

#include <QListView>

#include <vector>

namespace vantroque {

class GroupHeader;

/// The platforms by group. All headings are always in sight: those that were scrolled past lie on
/// top, those to come at the foot.
class ProfileList : public QListView {
    Q_OBJECT

public:
    /// `choice` must outlive it.
    explicit ProfileList(ProfileChoice& choice, QWidget* parent = nullptr);

    ProfileRows& rows() { return m_rows; }
    /// From the first platform to the last, with their headings.
    int wholeHeight() const;
    /// Brings the keyboard to a platform: to the present one, else to the first.
    void enter();

    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    void leftUpwards(); ///< By the keyboard.
    void typed(const QString& text);
    void allWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;

private:
    struct Stacked {
        GroupHeader* header = nullptr;
        int place = 0; ///< Where its rows are, in the viewport.
        int top = 0;   ///< As near to it as the others leave room.
    };

    std::vector<Stacked> stacked() const;
    void placeHeaders();
    void refreshHeaders();
    void tellReaders();
    void press(GroupHeader& header);
    QModelIndex platform(int from, int step) const;

    ProfileRows m_rows;
    std::vector<GroupHeader*> m_headers;
};

} // namespace vantroque
