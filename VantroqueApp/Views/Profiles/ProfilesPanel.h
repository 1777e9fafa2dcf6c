#pragma once

#include "VantroqueApp/Model/Choices/ProfileSets.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class QLabel;
class QPushButton;
class QScrollArea;

namespace vantroque {

class OwnProfilesFoot;
class ProfileList;
class SavedSets;
class SearchField;

/// The platforms to check against, over the right of the window. A part of the window and not a
/// menu, so that it is opaque and inside whatever the desktop does.
class ProfilesPanel : public QWidget {
    Q_OBJECT

public:
    /// Hidden at first. `opener` is the button that opens it; all must outlive it.
    /// `readAgain` has the operator's own profiles read anew.
    ProfilesPanel(ProfileChoice& choice, ProfileSets& sets, std::function<void()> readAgain,
                  const QWidget& opener, QWidget& window);

    void open();
    void close();

Q_SIGNALS:
    void openChanged(bool isOpen);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent*) override {} ///< Ends here, and not in the window below.
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* head();
    QWidget* foot();
    void search();
    void selectAll(bool on);
    void refresh();
    void place();
    void takeRenewed();

    ProfileChoice& m_choice;
    const std::function<void()> m_readAgain;
    const QWidget& m_opener;
    SearchField* m_search;
    SavedSets* m_sets;
    QScrollArea* m_setsArea;
    ProfileList* m_list;
    QLabel* m_none;
    QWidget* m_head = nullptr;
    OwnProfilesFoot* m_own;
    QWidget* m_foot = nullptr;
    QLabel* m_count = nullptr;
    QPushButton* m_all = nullptr;
    QPushButton* m_nothing = nullptr;
    int m_listHeight = 0;       ///< Of all platforms.
    QPointer<QWidget> m_before; ///< Had the keyboard.
};

} // namespace vantroque
