#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/Animated.h"
#include "Views/PaintedWords.h"
#include "Views/WindowFixture.h"

#include <QClipboard>
#include <QScrollBar>

namespace vantroque {
namespace {

class ReportPane : public WindowTest {
protected:
    ReportSections& report(const std::string& file,
                           std::vector<Profile> profiles = WindowScenes::profiles())
    {
        open(std::move(profiles));
        drop({anyFile(file)});
        EXPECT_TRUE(soonIdle());
        return *the<ReportSections>();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QTest::keyClick(window().windowHandle(), key, modifiers);
    }
    /// Platforms that all have something that passes.
    static std::vector<Profile> withCodecs()
    {
        auto profiles = WindowScenes::profiles();
        for (Profile& profile : profiles)
            profile.audio = AudioRule{.codecs = {u"aac"_s}};
        return profiles;
    }
    static int rowOf(const QAbstractItemView& view, const QString& start)
    {
        const QStringList texts = rows(view);
        for (int i = 0; i < texts.size(); ++i)
            if (texts[i].startsWith(start))
                return i;
        return -1;
    }
};

TEST_F(ReportPane, BeginsWithTheVerdict)
{
    report("fail.mp4");
    EXPECT_TRUE(shows(u"Passes 1 of 3 platforms"_s));
    EXPECT_TRUE(shows(model().files().selectedReport()->summaryLine));
}

TEST_F(ReportPane, OpensWhatFailsAndTellsHowFreshItIs)
{
    auto& sections = report("fail.mp4");
    const int row = rowOf(sections, u"Fail, Harbour Video"_s);
    ASSERT_GE(row, 0);
    const QString text = rows(sections)[row];
    EXPECT_TRUE(text.contains(u"spec inferred"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"d · 2026-09-01"_s)) << text.toStdString();
    EXPECT_GE(rowOf(sections, u"Fail, Loudness, -19.6"_s), 0);
}

TEST_F(ReportPane, AClickOpensARowWithWhatWasExpectedAndTheFix)
{
    auto& sections = report("fail.mp4");
    const int row = rowOf(sections, u"Fail, Loudness"_s);
    const QModelIndex index = sections.model()->index(row, 0);
    const int height = sections.visualRect(index).height();
    QTest::mouseClick(sections.viewport(), Qt::LeftButton, {}, sections.visualRect(index).center());
    EXPECT_TRUE(rows(sections)[row].contains(u"loudnorm"_s)) << "the fix";
    EXPECT_TRUE(soon([&] { return sections.visualRect(index).height() > height; }));
}

TEST_F(ReportPane, ARowOpensInASmoothMoveWhereTheDesktopWantsIt)
{
    auto& sections = report("fail.mp4");
    const QModelIndex index = sections.model()->index(rowOf(sections, u"Fail, Loudness"_s), 0);
    const auto height = [&] { return sections.sizeHintForIndex(index).height(); };
    const int closed = height();
    AnimationStyle::set(sections, false);
    Q_EMIT sections.clicked(index);
    const int opened = height();
    EXPECT_GE(opened, closed + 60);
    Q_EMIT sections.clicked(index);
    EXPECT_EQ(height(), closed);
    AnimationStyle::set(sections, true);
    Q_EMIT sections.clicked(index);
    EXPECT_LT(height(), closed + 30);
    EXPECT_TRUE(soon([&] { return height() == opened; }));
}

TEST_F(ReportPane, IsAsHighAsItsRows)
{
    auto& sections = report("fail.mp4");
    Q_EMIT sections.clicked(sections.model()->index(rowOf(sections, u"Fail, Loudness"_s), 0));
    const QModelIndex last = sections.model()->index(sections.model()->rowCount() - 1, 0);
    EXPECT_TRUE(soon([&] { return sections.height() == sections.visualRect(last).bottom() + 1; }))
        << sections.height() << " for " << sections.visualRect(last).bottom();
}

TEST_F(ReportPane, PlatformsThatRefuseTheFileStandBeforeThoseThatTakeIt)
{
    auto& sections = report("fail.mp4");
    const int harbour = rowOf(sections, u"Fail, Harbour Video"_s);
    const int quay = rowOf(sections, u"Fail, Quay Social"_s);
    const int northern = rowOf(sections, u"Pass, Northern Streaming TV"_s);
    EXPECT_EQ(harbour, 0);
    EXPECT_LT(harbour, quay);
    EXPECT_LT(quay, northern) << "though it is the first of the report";
    EXPECT_TRUE(shows(u"2 fail · 1 pass"_s));
}

TEST_F(ReportPane, WhatPassesIsFoldedUnderWhatFails)
{
    auto& sections = report("fail.mp4", withCodecs());
    const QStringList before = rows(sections);
    EXPECT_TRUE(before[1].startsWith(u"Fail, Loudness"_s)) << before[1].toStdString();
    EXPECT_TRUE(before[2].startsWith(u"Fail, True peak"_s)) << before[2].toStdString();
    ASSERT_EQ(before[3], u"2 passed, folded"_s) << before.join(u'\n').toStdString();
    EXPECT_EQ(before.count(u"3 passed, folded"_s), 1) << before.join(u'\n').toStdString();
    sections.setFocus();
    sections.setCurrentIndex(sections.model()->index(3, 0));
    QTest::keyClick(&sections, Qt::Key_Return);
    EXPECT_EQ(rows(sections).size(), before.size() + 2);
    EXPECT_EQ(rows(sections)[3], u"2 passed, open"_s);
    EXPECT_TRUE(rows(sections)[4].startsWith(u"Pass, Audio"_s)) << rows(sections)[4].toStdString();
    QTest::keyClick(&sections, Qt::Key_Return);
    EXPECT_EQ(rows(sections), before);
}

TEST_F(ReportPane, APlatformThatTakesTheFileIsOneLineThatOpensToAllOfItsRows)
{
    auto& sections = report("fail.mp4", withCodecs());
    const int row = rowOf(sections, u"Pass, Northern Streaming TV"_s);
    const QModelIndex index = sections.model()->index(row, 0);
    EXPECT_EQ(sections.sizeHintForIndex(index).height(), 32);
    Q_EMIT sections.clicked(index);
    EXPECT_TRUE(rows(sections)[row + 1].startsWith(u"Pass, "_s));
    EXPECT_FALSE(rows(sections)[row + 1].contains(u"folded"_s));
}

TEST_F(ReportPane, RecommendationsAndTheFileItselfStandBelowThePlatforms)
{
    open();
    std::set<QString> all;
    for (const Profile& profile : model().profiles().profiles())
        all.insert(profile.id);
    model().profiles().setEnabledProfileIDs(all);
    drop({anyFile("fail.mp4")});
    ASSERT_TRUE(soonIdle());
    auto& sections = *the<ReportSections>();
    const int advice = rowOf(sections, u"Recommendations"_s);
    ASSERT_GT(advice, 0);
    EXPECT_TRUE(rows(sections)[advice + 1].contains(u"Upload Advice"_s));
    const int file = rowOf(sections, u"The file itself"_s);
    EXPECT_GT(file, advice);
    EXPECT_TRUE(rows(sections)[file + 1].contains(u"Picture and sound"_s));
    sections.setFocus();
    sections.setCurrentIndex(sections.model()->index(advice - 1, 0));
    QTest::keyClick(&sections, Qt::Key_Down);
    EXPECT_EQ(sections.currentIndex().row(), advice + 1) << "the heading is no stop";
}

TEST_F(ReportPane, ExpectedStandsOnTheRowWhereThereIsRoom)
{
    auto& sections = report("fail.mp4");
    const QModelIndex index = sections.model()->index(1, 0);
    sections.setWide(false);
    EXPECT_EQ(sections.sizeHintForIndex(index).height(), 44);
    sections.setWide(true);
    EXPECT_EQ(sections.sizeHintForIndex(index).height(), 32);
    auto* pane = the<ReportView>();
    resizeTo({1600, 900});
    pane->setMinimumWidth(700);
    ASSERT_TRUE(soon([&] { return pane->width() >= 700; }));
    pane->verticalScrollBar()->setValue(pane->verticalScrollBar()->maximum());
    EXPECT_TRUE(paintedWords(window()).contains(u"Expected: -24 LKFS ± 2 LU"_s));
}

TEST_F(ReportPane, ARowOrAPlatformIsCopiedAsText)
{
    auto& sections = report("fail.mp4");
    sections.setFocus();
    ASSERT_TRUE(soon([&] { return sections.hasFocus(); }));
    sections.setCurrentIndex(sections.model()->index(0, 0));
    press(Qt::Key_C, Qt::ControlModifier);
    QString text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith(u"  HARBOUR VIDEO (spec inferred)  FAIL\n"_s))
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"True peak"_s));
    sections.setCurrentIndex(sections.model()->index(1, 0));
    press(Qt::Key_C, Qt::ControlModifier);
    text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.startsWith(u"    XX Loudness "_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"expected: -24 LKFS ± 2 LU"_s)) << text.toStdString();
    EXPECT_FALSE(text.contains(u"True peak"_s));
}

TEST_F(ReportPane, WhatIsOpenIsRememberedOfEachFile)
{
    auto& sections = report("fail.mp4");
    Q_EMIT sections.clicked(sections.model()->index(0, 0));
    const QStringList closed = rows(sections);
    drop({anyFile("fail2.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto files = model().files().analyses();
    model().files().select(files[1].id);
    EXPECT_GT(rows(sections).size(), closed.size());
    model().files().select(files[0].id);
    EXPECT_EQ(rows(sections), closed);
}

TEST_F(ReportPane, AnotherChoiceOfPlatformsRescoresWhatIsShown)
{
    auto& sections = report("fail.mp4");
    model().profiles().toggle(u"harbour-video"_s);
    EXPECT_TRUE(soon([&] { return rowOf(sections, u"Fail, Harbour Video"_s) < 0; }));
    EXPECT_TRUE(soonShows(u"Passes 1 of 2 platforms"_s));
}

TEST_F(ReportPane, ChannelsShowTheirLoudestMoment)
{
    report("ok.mp4");
    const auto* channels = the<ChannelMeters>();
    for (const auto* panel : window().findChildren<ChannelMeters*>())
        if (panel->isVisible())
            channels = panel;
    EXPECT_EQ(channels->accessibleDescription(),
              u"L -13.4 dBFS, peak -4.1; R -15.0 dBFS, peak 0.0"_s);
    EXPECT_EQ(channels->toolTip(),
              u"Every channel in the file. The bar is the level at the playhead, over a tenth of a "
              "second, and the line is its peak. Stopped, the bars show each channel's loudest "
              "moment. Red means full scale."_s);
    EXPECT_EQ(channels->accessibleName(), u"CHANNELS"_s);
    EXPECT_EQ(the<LoudnessMeter>()->accessibleName(), u"LOUDNESS"_s);
}

/// With the player beside it, which the operator sees as well.
class ReportOfAPlayer : public ReportPane {
protected:
    ReportSections& withPlayer(const std::string& file)
    {
        ReportSections& sections = report(file);
        EXPECT_TRUE(soon([this] { return model().player() != nullptr; }));
        return sections;
    }
    PlayerController& player() { return *model().player(); }
    static void press(ReportSections& sections, const QString& start)
    {
        const int row = rowOf(sections, start);
        ASSERT_GE(row, 0) << rows(sections).join(u'\n').toStdString();
        QTest::mouseClick(sections.viewport(), Qt::LeftButton, {},
                          sections.visualRect(sections.model()->index(row, 0)).topLeft()
                              + QPoint(100, 12));
    }
};

TEST_F(ReportOfAPlayer, ARowThatPointsAtAMomentGoesThere)
{
    auto& sections = withPlayer("ok_events.mp4");
    press(sections, u"Warning, Picture and sound"_s);
    const int row = rowOf(sections, u"Warning, Black frames"_s);
    ASSERT_GE(row, 0);
    EXPECT_TRUE(rows(sections)[row].endsWith(u", at 00:00:20:00"_s));
    press(sections, u"Warning, Black frames"_s);
    EXPECT_EQ(player().playhead().frame(), 500);
    EXPECT_EQ(player().focus().selectedEventID(), u"blackFrame-500-2"_s);
    press(sections, u"Warning, Stereo phase"_s);
    EXPECT_EQ(player().playhead().frame(), 50);
}

TEST_F(ReportOfAPlayer, CaptionsAreReportedAfterThePlatformsAndAWordGoesToItsCue)
{
    auto& sections = withPlayer("ok.mp4");
    EXPECT_LT(rowOf(sections, u"Warning, Captions"_s), 0);
    player().captions().setCaptionsShown(false);
    player().captions().loadCaptions(FileUrl::fromPath(
        m_folder.write("spot.srt", "1\n00:00:01,000 --> 00:00:02,000\nfine\n\n"
                                   "2\n00:00:04,000 --> 00:00:06,000\nthe the end\n")));
    ASSERT_TRUE(soon([&] { return rowOf(sections, u"Warning, Captions"_s) >= 0; }));
    EXPECT_EQ(rowOf(sections, u"Warning, Captions"_s), rows(sections).size() - 1);
    press(sections, u"Warning, Captions"_s);
    press(sections, u"Warning, Doubled words"_s);
    EXPECT_EQ(player().playhead().frame(), 100);
    EXPECT_TRUE(player().captions().captionsShown());
    EXPECT_EQ(player().captions().activeCues(player().currentSeconds()).size(), 1U);
    player().captions().removeCaptions();
    EXPECT_TRUE(soon([&] { return rowOf(sections, u"Warning, Captions"_s) < 0; }));
}

TEST_F(ReportOfAPlayer, ChannelsShowWhatIsPlayed)
{
    withPlayer("ok.mp4");
    const auto* channels = the<ChannelMeters>();
    for (const auto* panel : window().findChildren<ChannelMeters*>())
        if (panel->isVisible())
            channels = panel;
    player().seek(0);
    player().shuttle().press(ShuttleState::Direction::forward, true);
    EXPECT_EQ(channels->accessibleDescription(),
              u"L -30.0 dBFS, peak -9.0; R -31.0 dBFS, peak -9.0"_s);
    player().seek(3); // 0.12 s, in the second tenth
    EXPECT_EQ(channels->accessibleDescription(),
              u"L -13.4 dBFS, peak -4.1; R -15.0 dBFS, peak 0.0"_s);
    player().seek(250); // after what was measured
    EXPECT_EQ(channels->accessibleDescription(), u"L – dBFS, peak –; R – dBFS, peak –"_s);
    player().shuttle().stop();
    EXPECT_EQ(channels->accessibleDescription(),
              u"L -13.4 dBFS, peak -4.1; R -15.0 dBFS, peak 0.0"_s);
}

} // namespace
} // namespace vantroque
