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

} // namespace
} // namespace vantroque
