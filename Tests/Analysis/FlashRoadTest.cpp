#include "Analysis/Analyzer.h"
#include "Check/Builders.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

// Flashes on the way from a file to its report.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Words = std::vector<std::string>;

/// Black and white in turn, every third frame.
std::filesystem::path flashingSpot()
{
    return Media::make({"flashing.mp4",
                        Words{"-f", "lavfi", "-i",
                              "color=black:s=320x180:r=25:d=2,drawbox=w=iw:h=ih:t=fill:color=white:"
                              "enable='mod(floor(n/3)\\,2)'",
                              "-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p"}});
}

Profile asking()
{
    Profile profile = bareProfile();
    profile.video = VideoRule();
    profile.video->flashes = FlashRule{{u"BCAP Code"_s, {}, u"2015"_s, {}, {}}, {}};
    return profile;
}

Profile notAsking()
{
    Profile profile = bareProfile();
    profile.id = u"other"_s;
    profile.loudness = LoudnessRule();
    return profile;
}

const CheckResult* rowOf(const ProfileReport& report, const QString& id)
{
    const auto found = std::ranges::find(report.checks, id, &CheckResult::id);
    return found == report.checks.end() ? nullptr : &*found;
}

TEST(FlashRoad, AFlashingFileFailsWhereItIsAskedAndNowhereElse)
{
    const FileUrl url = FileUrl::fromPath(flashingSpot());
    const auto analysis = Analyzer::analyze(url, {asking(), notAsking()}).value();
    const CheckResult* row = rowOf(analysis.report.profiles.at(0), u"psy-flash"_s);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->verdict, Verdict::fail);
    // The changes come at frames 3, 6 and so on; the seventh is 21.
    ASSERT_TRUE(row->moment);
    EXPECT_EQ(row->moment->frame, 21);
    EXPECT_EQ(row->moment->box, (NormalizedRect{0, 0, 1, 1}));
    EXPECT_EQ(rowOf(analysis.report.profiles.at(1), u"psy-flash"_s), nullptr);
    const auto& events = analysis.report.events.value();
    EXPECT_EQ(std::ranges::count(events, SignalEvent::Kind::psyFlash, &SignalEvent::kind), 1);
}

TEST(FlashRoad, ARecordWithoutThemIsDecodedOnceMoreForWhoAsks)
{
    const FakeTools tools;
    tools.record("ffmpeg");
    const FileUrl url = FileUrl::fromPath(flashingSpot());
    auto analysis = Analyzer::analyze(url, {notAsking()}).value();
    EXPECT_FALSE(analysis.media.signal.value().flashes);
    const auto callsBefore = tools.calls("ffmpeg").size();
    ASSERT_TRUE(Analyzer::rescore(analysis.media, {notAsking()}));
    EXPECT_EQ(tools.calls("ffmpeg").size(), callsBefore);
    const FileReport report = Analyzer::rescore(analysis.media, {asking()}).value();
    EXPECT_EQ(tools.calls("ffmpeg").size(), callsBefore + 1);
    const CheckResult* row = rowOf(report.profiles.at(0), u"psy-flash"_s);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->verdict, Verdict::fail);
    ASSERT_TRUE(Analyzer::rescore(analysis.media, {asking(), notAsking()}));
    EXPECT_EQ(tools.calls("ffmpeg").size(), callsBefore + 1);
}

} // namespace
} // namespace vantroque
