#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "Views/Animated.h"
#include "Views/WindowFixture.h"

namespace vantroque {
namespace {

class ReportPane : public WindowTest {
protected:
    ReportSections& report(const std::string& file)
    {
        open();
        drop({anyFile(file)});
        EXPECT_TRUE(soonIdle());
        return *the<ReportSections>();
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
    EXPECT_TRUE(rows(sections)[row].contains(u"Expected: "_s));
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
