#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"
#include "Base/Json.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "VantroqueApp/Views/Controls/NoticeBar.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Profiles/GroupHeader.h"
#include "VantroqueApp/Views/Profiles/ProfileList.h"
#include "VantroqueApp/Views/Profiles/SearchField.h"
#include "VantroqueApp/Views/Profiles/SetChip.h"
#include "Views/WindowFixture.h"

#include <QDesktopServices>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBrowser>

namespace vantroque {
namespace {

class ProfilesOfTheWindow : public WindowTest {
protected:
    /// What ships with the program.
    static std::vector<Profile> shipped() { return *ProfileStore::loadAll(); }

    void openPanel(std::vector<Profile> profiles = WindowScenes::profiles())
    {
        open(std::move(profiles));
        QTest::mouseClick(button(), Qt::LeftButton);
        EXPECT_TRUE(panel().isVisible());
    }
    ToolButton* button() { return the<ToolButton>(u"Profiles"_s); }
    ProfilesPanel& panel() { return *the<ProfilesPanel>(); }
    ProfileList& list() { return *the<ProfileList>(); }
    SearchField& search() { return *the<SearchField>(); }
    QPushButton& press(const QString& accessibleName)
    {
        auto* found = the<QPushButton>(accessibleName);
        QTest::mouseClick(found, Qt::LeftButton);
        return *found;
    }
    QModelIndex row(const QString& name)
    {
        for (int i = 0; i < list().model()->rowCount(); ++i)
            if (const auto index = list().model()->index(i, 0); index.data().toString() == name)
                return index;
        return {};
    }
    QStringList shownNames()
    {
        QStringList names;
        for (int i = 0; i < list().model()->rowCount(); ++i)
            names << list().model()->index(i, 0).data().toString();
        return names;
    }
    void click(const QString& name)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualRect(row(name)).center());
    }
    bool isChosen(const QString& id) { return model().profiles().enabledProfileIDs().contains(id); }
    void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    std::vector<GroupHeader*> headers()
    {
        std::vector<GroupHeader*> shown;
        for (GroupHeader* header : list().findChildren<GroupHeader*>())
            if (header->isVisible())
                shown.push_back(header);
        return shown;
    }
};

TEST_F(ProfilesOfTheWindow, LieInsideTheWindowInOneColumnWhateverItsSize)
{
    for (const QSize size : {QSize(1024, 700), QSize(1440, 900), QSize(1920, 1080)}) {
        openPanel(shipped());
        resizeTo(size);
        EXPECT_EQ(panel().width(), 360);
        EXPECT_EQ(panel().parentWidget(), &window());
        EXPECT_EQ(panel().geometry().right() + 1, size.width() - 12);
        EXPECT_EQ(panel().y(), 44);
        EXPECT_LE(panel().height(), size.height() - 56);
        EXPECT_FALSE(panel().isWindow());
    }
    openPanel(WindowScenes::profiles());
    EXPECT_LT(panel().height(), window().height() - 56) << "no higher than its rows";
    EXPECT_EQ(list().verticalScrollBar()->maximum(), 0);
}

TEST_F(ProfilesOfTheWindow, SearchHasTheKeyboardAndFindsNamesAndShortNames)
{
    openPanel(shipped());
    EXPECT_EQ(QApplication::focusWidget(), &search());
    EXPECT_EQ(search().placeholderText(), u"Find a platform"_s);
    type(u"dv360"_s);
    EXPECT_EQ(shownNames(), (QStringList{u"Digital / CTV"_s, u"Google Display & Video 360"_s}));
    EXPECT_EQ(headers().size(), 1U);
    search().clear();
    type(u"LOUDNESS"_s);
    EXPECT_EQ(shownNames(),
              (QStringList{u"Broadcast"_s, u"ATSC A/85 Loudness"_s, u"EBU R 128 Loudness"_s,
                           u"Recommendations"_s, u"Streaming Loudness (AES TD1008)"_s}));
    type(u" of nobody"_s);
    EXPECT_TRUE(shows(u"No platform matches"_s));
    EXPECT_FALSE(list().isVisible());
}

TEST_F(ProfilesOfTheWindow, KeysGoThroughTheListAndTickPlatforms)
{
    openPanel(shipped());
    key(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &list());
    EXPECT_EQ(list().currentIndex().data(), u"Amazon Streaming TV and Prime Video"_s);
    ASSERT_TRUE(isChosen(u"amazon-streaming-tv"_s));
    key(Qt::Key_Space);
    EXPECT_FALSE(isChosen(u"amazon-streaming-tv"_s));
    key(Qt::Key_End);
    EXPECT_EQ(list().currentIndex().data(), u"YouTube Upload"_s);
    key(Qt::Key_Home);
    EXPECT_EQ(list().currentIndex().data(), u"Amazon Streaming TV and Prime Video"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(model().profiles().enabledProfileIDs().size(), 43U);
    key(Qt::Key_Up);
    EXPECT_EQ(QApplication::focusWidget(), &search());
    key(Qt::Key_Down);
    type(u"net"_s);
    EXPECT_EQ(search().text(), u"net"_s) << "typing searches from the list as well";
}

TEST_F(ProfilesOfTheWindow, EveryRowThatTheKeyboardComesToIsInSight)
{
    openPanel(shipped());
    resizeTo({1024, 700});
    key(Qt::Key_Down);
    const auto inSight = [&] {
        const QRect current = list().visualRect(list().currentIndex());
        return list().viewport()->rect().contains(current)
               && std::ranges::none_of(headers(), [&](const GroupHeader* header) {
                      return header->geometry().intersects(current);
                  });
    };
    for (const Qt::Key way : {Qt::Key_Down, Qt::Key_Up})
        for (int i = 0; i < 41; ++i) {
            EXPECT_TRUE(inSight()) << list().currentIndex().data().toString().toStdString();
            key(way);
        }
    key(Qt::Key_PageDown);
    EXPECT_TRUE(inSight());
    key(Qt::Key_End);
    EXPECT_TRUE(inSight());
    key(Qt::Key_PageUp);
    EXPECT_TRUE(inSight());
}

TEST_F(ProfilesOfTheWindow, APressAnywhereInARowTicksItAndTwoQuickOnesTakeItBack)
{
    openPanel();
    click(u"Meadow Broadcast Delivery"_s);
    EXPECT_TRUE(isChosen(u"meadow-broadcast-delivery"_s));
    click(u"Meadow Broadcast Delivery"_s);
    EXPECT_FALSE(isChosen(u"meadow-broadcast-delivery"_s));
    const QPoint place = list().visualRect(row(u"Meadow Broadcast Delivery"_s)).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, {}, place);
    EXPECT_FALSE(isChosen(u"meadow-broadcast-delivery"_s));
    EXPECT_TRUE(panel().isVisible());
}

TEST_F(ProfilesOfTheWindow, AChangeRescoresAtOnce)
{
    openPanel();
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    ASSERT_TRUE(panel().isVisible());
    click(u"Harbour Video"_s);
    EXPECT_FALSE(model().rescorer().isCurrent(entry(0)));
    ASSERT_TRUE(soonIdle());
    EXPECT_FALSE(profileIDs(entry(0)).contains(u"harbour-video"_s));
}

TEST_F(ProfilesOfTheWindow, AllHeadingsStayInSightWithTheirCounts)
{
    openPanel(shipped());
    resizeTo({1024, 700});
    QScrollBar& bar = *list().verticalScrollBar();
    ASSERT_GT(bar.maximum(), 0);
    for (const int value : {0, bar.maximum() / 2, bar.maximum()}) {
        bar.setValue(value);
        ASSERT_EQ(headers().size(), 3U);
        int above = -36;
        for (const GroupHeader* header : headers()) {
            EXPECT_TRUE(list().viewport()->rect().contains(header->geometry()));
            EXPECT_GE(header->y(), above + 36);
            above = header->y();
        }
    }
    bar.setValue(0);
    EXPECT_EQ(headers()[0]->y(), 0);
    EXPECT_EQ(headers()[2]->y(), list().viewport()->height() - 36);
    QStringList counts;
    for (const auto* title : list().findChildren<QPushButton*>())
        if (title->accessibleName().contains(u','))
            counts << title->accessibleName();
    EXPECT_EQ(counts, (QStringList{u"Digital / CTV, 23 of 23"_s, u"Broadcast, 0 of 15"_s,
                                   u"Recommendations, 0 of 5"_s}));
}

TEST_F(ProfilesOfTheWindow, AHeadingAtTheFootIsScrolledToAndThenFolds)
{
    openPanel(shipped());
    resizeTo({1024, 700});
    press(u"Broadcast, 0 of 15"_s);
    EXPECT_EQ(headers()[1]->y(), 36);
    EXPECT_EQ(list().visualRect(row(u"ARD, ZDF and ORF Programme"_s)).top(), 72);
    const QPushButton& title = press(u"Broadcast, 0 of 15"_s);
    EXPECT_FALSE(row(u"ATSC A/85 Loudness"_s).isValid());
    EXPECT_EQ(title.accessibleDescription(), u"folded"_s);
    search().setText(u"A/85"_s);
    EXPECT_TRUE(row(u"ATSC A/85 Loudness"_s).isValid()) << "a search looks into it";
    search().clear();
    press(u"Broadcast, 0 of 15"_s);
    press(u"Broadcast, 0 of 15"_s);
    EXPECT_TRUE(row(u"ATSC A/85 Loudness"_s).isValid());
}

TEST_F(ProfilesOfTheWindow, AllAndNoneOfAGroupLeaveTheOthers)
{
    openPanel(shipped());
    EXPECT_FALSE(the<QPushButton>(u"All of Digital / CTV"_s)->isEnabled()) << "nothing to change";
    EXPECT_FALSE(the<QPushButton>(u"None of Broadcast"_s)->isEnabled());
    press(u"All of Broadcast"_s);
    EXPECT_EQ(model().profiles().enabledProfileIDs().size(), 38U);
    press(u"None of Digital / CTV"_s);
    EXPECT_EQ(model().profiles().enabledProfileIDs().size(), 15U);
    EXPECT_FALSE(the<QPushButton>(u"None of Digital / CTV"_s)->isEnabled());
}

TEST_F(ProfilesOfTheWindow, WhileSearchingAllAndNoneMeanThoseThatAreFound)
{
    openPanel(shipped());
    type(u"loudness"_s);
    press(u"All of Broadcast"_s);
    EXPECT_EQ(model().profiles().enabledProfileIDs().size(), 25U);
    EXPECT_FALSE(the<QPushButton>(u"All of Broadcast"_s)->isEnabled());
    EXPECT_EQ(the<QPushButton>(u"None of Broadcast"_s)->toolTip(),
              u"Check none of those found in this group"_s);
}

TEST_F(ProfilesOfTheWindow, TheFootCountsAndSelectsAllOrNone)
{
    openPanel();
    const auto* count = the<QLabel>(u"Chosen platforms"_s);
    EXPECT_EQ(count->text(), u"Checking 3 platforms"_s);
    press(u"Select None"_s);
    EXPECT_EQ(count->text(), u"No platforms selected"_s);
    press(u"Select All"_s);
    EXPECT_EQ(count->text(), u"Checking 6 platforms"_s);
    EXPECT_FALSE(the<QPushButton>(u"Select All"_s)->isEnabled());
}

TEST_F(ProfilesOfTheWindow, EscapeClearsTheSearchAndThenCloses)
{
    openPanel();
    type(u"quay"_s);
    key(Qt::Key_Escape);
    EXPECT_TRUE(search().text().isEmpty());
    EXPECT_TRUE(panel().isVisible());
    key(Qt::Key_Escape);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(ProfilesOfTheWindow, TheButtonAndAClickOutsideClose)
{
    openPanel();
    EXPECT_TRUE(button()->isChecked());
    QTest::mouseClick(button(), Qt::LeftButton);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_FALSE(button()->isChecked());
    QTest::mouseClick(button(), Qt::LeftButton);
    ASSERT_TRUE(panel().isVisible());
    QTest::mouseClick(&panel(), Qt::LeftButton, {}, QPoint(180, 70));
    EXPECT_TRUE(panel().isVisible()) << "inside";
    QTest::mouseClick(&window(), Qt::LeftButton, {}, QPoint(200, 300));
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(ProfilesOfTheWindow, TheKeyboardGoesBackToWhereItWas)
{
    open();
    drop({anyFile("ok.mp4")});
    ASSERT_TRUE(soonIdle());
    auto* files = the<FileListView>();
    files->setFocus();
    QTest::mouseClick(button(), Qt::LeftButton);
    ASSERT_EQ(QApplication::focusWidget(), &search())
        << QApplication::focusWidget()->accessibleName().toStdString();
    key(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), files);
}

TEST_F(ProfilesOfTheWindow, TabStaysInThePanelAndComesToAllOfIt)
{
    openPanel(shipped());
    QStringList names;
    do {
        names << QApplication::focusWidget()->accessibleName();
        key(Qt::Key_Tab);
    } while (QApplication::focusWidget() != &search() && names.size() < 30);
    names.sort();
    QStringList expected{u"Find a platform"_s,
                         u"Save this choice"_s,
                         u"Platforms to check"_s,
                         u"Digital / CTV, 23 of 23"_s,
                         u"None of Digital / CTV"_s,
                         u"Open the Folder of Your Own Profiles"_s,
                         u"Broadcast, 0 of 15"_s,
                         u"All of Broadcast"_s,
                         u"Recommendations, 0 of 5"_s,
                         u"All of Recommendations"_s,
                         u"Select All"_s,
                         u"Select None"_s};
    expected.sort();
    EXPECT_EQ(names, expected);
    key(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"Select None"_s);
}

TEST_F(ProfilesOfTheWindow, TheKeysOfTheTransportRestMeanwhile)
{
    openPanel();
    EXPECT_EQ(TransportKeys::shared().editingFields(), 1);
    key(Qt::Key_Escape);
    EXPECT_EQ(TransportKeys::shared().editingFields(), 0);
}

TEST_F(ProfilesOfTheWindow, SayHowOldASpecificationIs)
{
    auto profiles = WindowScenes::profiles();
    const QDate today = QDateTime::currentDateTimeUtc().date();
    const auto verified = [&](std::size_t index, int days) {
        profiles[index].verifiedDate = today.addDays(-days).toString(Qt::ISODate);
    };
    verified(0, 180);
    verified(1, 213);
    verified(2, 752);
    profiles[3].verifiedDate = u"some day"_s;
    openPanel(profiles);
    const auto words = [&](std::size_t index) {
        return row(profiles[index].name).data(Qt::AccessibleTextRole).toString();
    };
    EXPECT_EQ(words(0), u"Northern Streaming TV, fresh"_s);
    EXPECT_EQ(words(1), u"Harbour Video, spec inferred, stale 213d"_s);
    EXPECT_EQ(words(2), u"Quay Social Stories and Reels, expired 752d"_s);
    EXPECT_EQ(words(3), u"Meadow Broadcast Delivery, unreadable"_s);
    EXPECT_EQ(row(profiles[0].name).data(Qt::ToolTipRole),
              profiles[0].sourceURL + u"\nVerified "_s + profiles[0].verifiedDate);
}

TEST_F(ProfilesOfTheWindow, AScreenReaderReadsEachPlatformAndWhetherItIsChecked)
{
    openPanel();
    auto* interface = QAccessible::queryAccessibleInterface(&list());
    ASSERT_NE(interface, nullptr);
    ASSERT_EQ(interface->childCount(), list().model()->rowCount());
    const auto reads = [&](const QString& name) {
        const auto* row = interface->child(this->row(name).row());
        return std::tuple(row->text(QAccessible::Name), static_cast<bool>(row->state().checkable),
                          static_cast<bool>(row->state().checked));
    };
    EXPECT_EQ(reads(u"Harbour Video"_s),
              std::tuple(u"Harbour Video, spec inferred, fresh"_s, true, true));
    click(u"Harbour Video"_s);
    EXPECT_EQ(reads(u"Harbour Video"_s),
              std::tuple(u"Harbour Video, spec inferred, fresh"_s, true, false));
    EXPECT_EQ(interface->child(0)->text(QAccessible::Name), u"Digital / CTV, 2 of 3"_s);
    EXPECT_EQ(interface->child(0)->role(), QAccessible::ListItem);
}

class SavedSetsOfThePanel : public ProfilesOfTheWindow {
protected:
    QLineEdit& nameField() { return *the<QLineEdit>(u"Name of the set"_s); }
    void save(const QString& name)
    {
        press(u"Save this choice"_s);
        type(name);
        key(Qt::Key_Return);
    }
    static void chooseInMenu(const QString& text)
    {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions())
            if (action->text() == text)
                menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
    }
};

TEST_F(SavedSetsOfThePanel, AreSavedUnderAName)
{
    openPanel();
    save(u"Streaming"_s);
    auto* chip = the<QPushButton>(u"Streaming, 3 platforms"_s);
    ASSERT_NE(chip, nullptr);
    EXPECT_TRUE(chip->isChecked());
    EXPECT_FALSE(the<QPushButton>(u"Save this choice"_s)->isEnabled());
    press(u"Select All"_s);
    EXPECT_FALSE(the<QPushButton>(u"Streaming, 3 platforms"_s)->isChecked());
    press(u"Streaming, 3 platforms"_s);
    EXPECT_EQ(model().profiles().enabledProfileIDs().size(), 3U);
    EXPECT_TRUE(the<QPushButton>(u"Streaming, 3 platforms"_s)->isChecked());
    press(u"Select None"_s);
    EXPECT_FALSE(the<QPushButton>(u"Save this choice"_s)->isEnabled());
}

TEST_F(SavedSetsOfThePanel, AnEscapedNameIsNotKept)
{
    openPanel();
    press(u"Save this choice"_s);
    type(u"Nothing"_s);
    key(Qt::Key_Escape);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_FALSE(nameField().isVisible());
    EXPECT_TRUE(model().profileSets().sets().empty());
}

TEST_F(SavedSetsOfThePanel, MakeRoomForTheFieldOfAName)
{
    openPanel(shipped());
    save(u"A first choice of a few"_s);
    click(u"Netflix Ads"_s);
    QApplication::processEvents();
    press(u"Save this choice"_s);
    QApplication::processEvents();
    EXPECT_GT(nameField().y(), 0) << "no room beside the chip";
    const auto* area = panel().findChild<QScrollArea*>(u"sets"_s);
    EXPECT_TRUE(area->viewport()->rect().contains(nameField().geometry()));
    EXPECT_LT(area->mapTo(&panel(), area->rect().bottomLeft()).y(), list().y());
}

TEST_F(SavedSetsOfThePanel, HaveAMenuByMouseAndByKeyboard)
{
    openPanel();
    save(u"Streaming"_s);
    auto* chip = the<QPushButton>(u"Streaming, 3 platforms"_s);
    chip->setFocus();
    QTest::keyClick(chip, Qt::Key_F10, Qt::ShiftModifier);
    chooseInMenu(u"Rename"_s);
    ASSERT_TRUE(nameField().isVisible());
    EXPECT_EQ(nameField().text(), u"Streaming"_s);
    type(u"TV"_s);
    key(Qt::Key_Return);
    ASSERT_NE(the<QPushButton>(u"TV, 3 platforms"_s), nullptr);
    click(u"Harbour Video"_s);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, QPoint(5, 5),
                              the<QPushButton>(u"TV, 3 platforms"_s)->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(the<QPushButton>(u"TV, 3 platforms"_s), &byMouse);
    chooseInMenu(u"Update"_s);
    EXPECT_EQ(model().profileSets().count(0), 2U);
    EXPECT_TRUE(panel().isVisible());
    QApplication::sendEvent(the<QPushButton>(u"TV, 2 platforms"_s), &byMouse);
    chooseInMenu(u"Delete"_s);
    EXPECT_TRUE(model().profileSets().sets().empty());
}

TEST_F(SavedSetsOfThePanel, WrapAndStayInsideThePanel)
{
    openPanel();
    for (int i = 0; i < 7; ++i) {
        model().profiles().toggle(
            model().profiles().profiles()[static_cast<std::size_t>(i) % 6].id);
        save(u"A set with a long name %1"_s.arg(i) + QString(i * 10, u'n'));
    }
    QApplication::processEvents();
    const auto chips = panel().findChildren<SetChip*>();
    ASSERT_EQ(chips.size(), 6) << "an empty choice gets no name";
    for (const SetChip* chip : chips) {
        EXPECT_TRUE(chip->isVisible());
        EXPECT_LE(chip->geometry().right(), chip->parentWidget()->width());
        EXPECT_EQ(chip->height(), SetChip::chipHeight);
        EXPECT_LE(chip->geometry().bottom(), chip->parentWidget()->height());
    }
    const auto* area = panel().findChild<QScrollArea*>(u"sets"_s);
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0) << "four lines are in sight";
    EXPECT_LT(area->mapTo(&panel(), area->rect().bottomLeft()).y(), list().y());
}

/// As an operator does it: one group of platforms, found by typing, for later as well.
TEST_F(SavedSetsOfThePanel, AFewPlatformsAreChosenAndKeptInAFewKeys)
{
    openPanel(shipped());
    press(u"Select None"_s);
    search().setFocus();
    type(u"nbcu"_s);
    key(Qt::Key_Down);
    while (list().currentIndex().data().toString() != u"NBCUniversal Linear Commercial"_s)
        key(Qt::Key_Down);
    key(Qt::Key_Space);
    type(u"x"_s);
    key(Qt::Key_Escape);
    type(u"a/85"_s);
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    save(u"US broadcast"_s);
    EXPECT_EQ(model().profiles().enabledProfileIDs(), (std::set{u"atsc-a85"_s, u"nbcu-linear"_s}));
    EXPECT_NE(the<QPushButton>(u"US broadcast, 2 platforms"_s), nullptr);
}

/// Two hundred files of profiles in a folder.
TEST_F(ProfilesOfTheWindow, TwoHundredAreListedAndFound)
{
    const QByteArray one = contents(*ProfileStore::profilesDirectory().url / "netflix-ads.json");
    for (int i = 0; i < 200; ++i) {
        const QByteArray number = QByteArray::number(i);
        QByteArray text = one;
        text.replace("\"netflix-ads\"", "\"platform-" + number + "\"")
            .replace("\"Netflix Ads\"", "\"Platform " + number + "\"");
        m_folder.write("profiles/" + number.toStdString() + ".json", text);
    }
    const auto profiles = ProfileStore::loadFrom(m_folder / "profiles");
    ASSERT_TRUE(profiles);
    openPanel(*profiles);
    EXPECT_EQ(list().model()->rowCount(), 201);
    EXPECT_TRUE(window().rect().contains(panel().geometry()));
    type(u"platform 199"_s);
    EXPECT_EQ(shownNames(), (QStringList{u"Digital / CTV"_s, u"Platform 199"_s}));
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    EXPECT_FALSE(isChosen(u"platform-199"_s));
}

/// A file manager stands for the desktop's.
TEST_F(ProfilesOfTheWindow, OnesOwnStandBesideTheOthersAndABrokenOneTakesNoneAlong)
{
    const auto write = [this](const std::string& name, const QString& id, const QString& title) {
        Profile own = WindowScenes::profiles().front();
        own.id = id;
        own.name = title;
        m_folder.write("data/Vantroque/Profiles/" + name, Json::write(own).value());
    };
    const auto rowSays = [this](const QString& name) {
        return row(name).data(Qt::AccessibleTextRole).toString();
    };
    const auto shipped = WindowScenes::profiles();
    m_folder.write("data/Vantroque/Profiles/broken.json", "{}");
    open(shipped);
    EXPECT_EQ(model().profiles().profiles().size(), shipped.size());
    auto* bar = the<NoticeBar>();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->accessibleName(), u"A profile of your own cannot be used"_s);
    for (auto* show : bar->findChildren<ToolButton*>())
        if (show->text() == u"Show"_s)
            QTest::mouseClick(show, Qt::LeftButton);
    ASSERT_TRUE(panel().isVisible());
    EXPECT_TRUE(shows(u"broken.json: .id: missing"_s));
    EXPECT_THAT(the<CopyButton>(u"Copy what is wrong"_s)->copied().toStdString(),
                testing::HasSubstr("vantroque-cli profiles --check "
                                   + (m_folder / "data/Vantroque/Profiles/broken.json").native()));
    EXPECT_TRUE(window().rect().contains(panel().geometry()));

    write("broken.json", u"mine"_s, u"My Own"_s);
    write("better.json", shipped[1].id, u"My Better One"_s);
    key(Qt::Key_Escape);
    QTest::mouseClick(button(), Qt::LeftButton);
    ASSERT_TRUE(soon([&] { return row(u"My Own"_s).isValid(); }));
    EXPECT_THAT(rowSays(u"My Own"_s).toStdString(), testing::HasSubstr(", yours,"));
    EXPECT_THAT(rowSays(u"My Better One"_s).toStdString(),
                testing::HasSubstr(", yours, stands in"));
    EXPECT_FALSE(row(shipped[1].name).isValid());
    EXPECT_TRUE(isChosen(u"mine"_s));
    EXPECT_FALSE(the<CopyButton>(u"Copy what is wrong"_s)->isVisible());
    EXPECT_TRUE(shows(u"2 of yours"_s));
    click(u"My Own"_s);
    EXPECT_FALSE(isChosen(u"mine"_s));

    std::filesystem::remove_all(m_folder / "data/Vantroque/Profiles");
    QTextBrowser manager;
    QDesktopServices::setUrlHandler(u"file"_s, &manager, "setSource");
    the<QPushButton>(u"Open the Folder of Your Own Profiles"_s)->setFocus();
    key(Qt::Key_Space);
    QDesktopServices::unsetUrlHandler(u"file"_s);
    EXPECT_EQ(manager.source().fileName(), u"Profiles"_s);
    EXPECT_TRUE(std::filesystem::is_directory(m_folder / "data/Vantroque/Profiles"));
}

} // namespace
} // namespace vantroque
