#include "Probe/Probed.h"
#include "Support/FakeTools.h"
#include "Support/FieldPictures.h"
#include "Support/Media.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Prober::PacketStats;
using testing::ElementsAre;
using testing::IsEmpty;

QByteArray packetList(const QStringList& packets)
{
    return (u"{\"packets\": [{"_s + packets.join(u"}, {"_s) + u"}]}"_s).toUtf8();
}

QString packet(double time, int size = 100)
{
    return u"\"pts_time\": \"%1\", \"dts_time\": \"%1\", \"size\": \"%2\""_s.arg(time, 0, 'f', 6)
        .arg(size);
}

/// Packets at these times.
QByteArray packetsAt(const std::vector<double>& times)
{
    QStringList packets;
    for (const double time : times)
        packets << packet(time);
    return packetList(packets);
}

/// `count` intervals at 25 a second, of which the first `odd` are longer by `share`.
std::vector<double> cadence(int count, int odd, double share)
{
    std::vector<double> times{0};
    for (int i = 0; i < count; ++i)
        times.push_back(times.back() + 0.04 * (i < odd ? 1 + share : 1));
    return times;
}

class PacketStatsOf : public testing::Test {
protected:
    Result<PacketStats> result(const QByteArray& json, double fps = 25) const
    {
        m_tools.print("ffprobe", json);
        return Prober::packetStats(m_tools.ffprobe(), FileUrl::fromPath("/a.mp4"), fps);
    }
    PacketStats of(const QByteArray& json, double fps = 25) const
    {
        return result(json, fps).value();
    }
    bool isVFR(const std::vector<double>& times, double fps = 25) const
    {
        return of(packetsAt(times), fps).isVFR;
    }
    const FakeTools m_tools;
};

TEST_F(PacketStatsOf, EightTimesOrFewerAreNeverVariable)
{
    const std::vector<double> wild{0, 0.5, 0.51, 1.7, 1.8, 3, 3.01, 9};
    EXPECT_FALSE(isVFR(wild));
    auto nine = wild;
    nine.push_back(12);
    EXPECT_TRUE(isVFR(nine));
}

TEST_F(PacketStatsOf, ThreeOfAHundredIntervalsAreTooMany)
{
    const auto stats = of(packetsAt(cadence(100, 3, 0.2)));
    EXPECT_TRUE(stats.isVFR);
    EXPECT_EQ(stats.vfrDetail, u"3% of frame intervals deviate from the 25.000 fps cadence"_s);
}

TEST_F(PacketStatsOf, TwoOfAHundredIntervalsAreAllowed)
{
    const auto stats = of(packetsAt(cadence(100, 2, 0.2)));
    EXPECT_FALSE(stats.isVFR);
    EXPECT_EQ(stats.vfrDetail, std::nullopt);
}

TEST_F(PacketStatsOf, AnIntervalMayBeOffByTwelvePercent)
{
    EXPECT_FALSE(isVFR(cadence(100, 50, 0.12)));
    EXPECT_TRUE(isVFR(cadence(100, 50, 0.125)));
    EXPECT_TRUE(isVFR(cadence(100, 50, -0.125)));
}

TEST_F(PacketStatsOf, WithoutARateNothingIsVariable)
{
    EXPECT_FALSE(isVFR(cadence(100, 50, 1), 0));
    EXPECT_FALSE(isVFR(cadence(100, 50, 1), -1));
}

TEST_F(PacketStatsOf, FramesWithoutATimeDeviateFromNothing)
{
    QStringList packets;
    for (int i = 0; i < 50; ++i)
        packets << (i % 10 == 4 ? u"\"size\": \"100\""_s : packet(i * 0.04));
    const auto stats = of(packetList(packets));
    EXPECT_FALSE(stats.isVFR);
    EXPECT_EQ(stats.packetCount, 50);
    packets.removeIf([](const QString& each) { return !each.contains(u"pts_time"); });
    EXPECT_TRUE(of(packetList(packets)).isVFR) << "without them the gaps are gaps";
}

TEST_F(PacketStatsOf, TimesOfShowingAndOfDecodingAreNotMixed)
{
    QStringList packets; // P and B frames in turn, of which some P frames do not say when they show
    for (int i = 0; i < 50; ++i) {
        const double shown = i % 2 == 0 ? (i + 2) * 0.04 : i * 0.04;
        const QString rest = u"\"dts_time\": \"%1\", \"size\": \"100\""_s.arg(i * 0.04, 0, 'f', 6);
        packets << (i % 10 == 4 ? rest : u"\"pts_time\": \"%1\", "_s.arg(shown, 0, 'f', 6) + rest);
    }
    EXPECT_FALSE(of(packetList(packets)).isVFR);
}

TEST_F(PacketStatsOf, TwoFieldsInAPacketEachAreAFrame)
{
    const auto fields = [&](const QByteArray& json, double fps) {
        m_tools.print("ffprobe", json);
        return Prober::packetStats(m_tools.ffprobe(), FileUrl::fromPath("/a.mp4"), fps, "v:0",
                                   [] { return true; })
            .value();
    };
    std::vector<double> apart;
    std::vector<double> mixed;
    for (int i = 0; i < 50; ++i) {
        apart.insert(apart.end(), {-0.08 + i * 0.04, -0.08 + i * 0.04 + 0.02});
        mixed.push_back(i * 0.04);
        if (i % 3 != 0)
            mixed.push_back(i * 0.04 + 0.02);
    }
    for (const double counted : {25.0, 50.0}) {
        const auto stats = fields(packetsAt(apart), counted);
        EXPECT_FALSE(stats.isVFR) << counted;
        EXPECT_EQ(stats.packetCount, 50);
        EXPECT_EQ(stats.aheadOfZero, 2);
        EXPECT_NEAR(stats.constantRate.value_or(0), 25, 1e-3);
    }
    EXPECT_FALSE(fields(packetsAt(mixed), 41.5).isVFR);
    EXPECT_EQ(fields(packetsAt(mixed), 41.5).packetCount, 50);
    mixed.erase(mixed.begin() + 20, mixed.begin() + 40);
    for (std::size_t i = 20; i < mixed.size(); i += 5)
        mixed[i] += 0.015;
    EXPECT_TRUE(fields(packetsAt(mixed), 25).isVFR) << "what jitters still does";
}

TEST_F(PacketStatsOf, TheOrderOfThePacketsDoesNotMatterForTheCadence)
{
    auto times = cadence(100, 0, 0);
    for (std::size_t i = 0; i + 3 < times.size(); i += 4)
        std::swap(times[i + 1], times[i + 3]);
    EXPECT_FALSE(isVFR(times));
}

TEST_F(PacketStatsOf, FramesCountByPresentationAndBitsByDecodingTime)
{
    QStringList packets;
    for (int i = 0; i < 10; ++i)
        packets << u"\"pts_time\": \"%1\", \"dts_time\": \"%2\", \"size\": \"125\""_s
                       .arg(5 + 0.04 * i)
                       .arg(0.5 * i);
    const auto stats = of(packetList(packets));
    EXPECT_FALSE(stats.isVFR);
    EXPECT_THAT(stats.perSecondKbps, ElementsAre(2, 2, 2, 2, 2));
}

TEST_F(PacketStatsOf, APacketWithOneTimeOnlyStillCounts)
{
    const auto stats = of(packetList({u"\"pts_time\": \"0.2\", \"size\": \"1000\""_s,
                                      u"\"dts_time\": \"1.2\", \"size\": \"500\""_s}));
    EXPECT_EQ(stats.totalBits, 12'000);
    EXPECT_THAT(stats.perSecondKbps, ElementsAre(8, 4));
}

TEST_F(PacketStatsOf, APacketWithoutSizeOrTimeIsCountedButHasNoBits)
{
    const auto stats = of(packetList({packet(0), u"\"pts_time\": \"0.04\""_s, u"\"size\": \"7\""_s,
                                      u"\"pts_time\": \"N/A\""_s}));
    EXPECT_EQ(stats.packetCount, 4);
    EXPECT_EQ(stats.totalBits, 800);
}

TEST_F(PacketStatsOf, SecondsWithoutPacketsHaveNoEntry)
{
    const auto stats = of(packetList({packet(7.5, 250), packet(0.999, 125), packet(0, 125)}));
    EXPECT_THAT(stats.perSecondKbps, ElementsAre(2, 2));
}

TEST_F(PacketStatsOf, TimesOutsideOfADayCountInTheTotalOnly)
{
    const auto stats =
        of(packetList({packet(-0.04), packet(86'400), packet(1e300 / 1e290), packet(86'399.5),
                       u"\"dts_time\": \"1e300\", \"size\": \"1\""_s}));
    EXPECT_EQ(stats.perSecondKbps.size(), 1U);
    EXPECT_EQ(stats.totalBits, 4 * 800 + 8);
}

TEST_F(PacketStatsOf, AnEmptyListIsAWorkingOne)
{
    for (const char* json : {"{}", R"({"packets": []})"}) {
        const auto stats = of(json);
        EXPECT_EQ(stats.packetCount, 0);
        EXPECT_EQ(stats.totalBits, 0);
        EXPECT_THAT(stats.perSecondKbps, IsEmpty());
    }
}

TEST_F(PacketStatsOf, AListThatIsNotJsonFails)
{
    for (const char* text : {"", "garbage", "[]", R"({"packets": [{)"})
        EXPECT_FALSE(result(text).has_value()) << text;
}

TEST_F(PacketStatsOf, AFailingToolsWordsArePassedOn)
{
    m_tools.put("ffprobe", "echo '{\"packets\": []}'; echo broken pipe dream >&2; exit 3");
    const auto stats = Prober::packetStats(m_tools.ffprobe(), FileUrl::fromPath("/a.mp4"), 25);
    ASSERT_FALSE(stats);
    EXPECT_EQ(stats.error().description, u"ffprobe exited with status 3: broken pipe dream\n"_s);
}

TEST(PacketStats, PacketsOfEveryKindOfFileAreRead)
{
    // Side data, such as of a transport stream or of alpha, comes as an empty list in the packet.
    for (const auto& file : {Clips::transportStream(), Clips::vp8WithAlpha(), Clips::matroska(),
                             Clips::mpeg2InMxf(), Clips::plain()}) {
        const auto video = probedVideo(file);
        EXPECT_EQ(video.frameCount, 25) << file;
        EXPECT_FALSE(video.isVFR) << file;
        EXPECT_FALSE(video.bitratePerSecondKbps.empty()) << file;
        EXPECT_GT(video.bitrateKbps.value_or(0), 0) << file;
    }
}

TEST(PacketStats, AVariableRateIsToldFromRealFiles)
{
    const auto video = probedVideo(Clips::variableRate());
    EXPECT_TRUE(video.isVFR);
    EXPECT_EQ(video.nominalFrameRate, 18);
    EXPECT_EQ(video.vfrDetail, u"100% of frame intervals deviate from the 18.000 fps cadence"_s);
}

TEST(PacketStats, ThreeLongIntervalsOfARealFileAreFound)
{
    const auto video = probedVideo(Clips::threeOfHundredOff());
    EXPECT_EQ(video.frameCount, 101);
    EXPECT_TRUE(video.isVFR);
    EXPECT_EQ(video.vfrDetail, u"3% of frame intervals deviate from the 24.852 fps cadence"_s);
}

TEST(PacketStats, FieldsInPacketsOfTheirOwnHaveNoRateOfTheirOwn)
{
    for (const bool isMixed : {false, true})
        for (const std::string extension : {"ts", "mkv", "mp4"}) {
            const auto file = FieldPictures::clip(
                (isMixed ? "mixed-fields." : "fields.") + extension, 48, isMixed);
            SCOPED_TRACE(file.native());
            const auto video = probedVideo(file);
            EXPECT_EQ(video.nominalFrameRate, 25);
            EXPECT_EQ(video.frameCount, 48);
            EXPECT_FALSE(video.isVFR) << video.vfrDetail.value_or(QString()).toStdString();
        }
}

TEST(PacketStats, FramesAfterAnIndexOfTheFirstFragmentAloneCount)
{
    using Media::operator+;
    const auto file = Media::make(
        {"hybrid.mp4", Clips::picture("64x64", "25", "2") + Clips::x264()
                           + std::vector<std::string>{"-g", "12", "-movflags", "+frag_keyframe"}});
    EXPECT_EQ(probedVideo(file).frameCount, 50);
}

TEST(PacketStats, FramesAheadOfAnEditListAreNotCounted)
{
    using Media::operator+;
    using Words = std::vector<std::string>;
    const auto whole = Media::make(
        {"to-cut.mp4", Clips::picture("64x64", "25", "3") + Clips::x264() + Words{"-g", "25"}});
    const auto cut = Media::make(
        {"cut-between-key-frames.mp4", {"-ss", "1.4", "-i", whole.native(), "-c", "copy"}});
    const auto video = probedVideo(cut);
    EXPECT_EQ(video.frameCount, 40) << "from 1.4 to 3 s; ten more lead up to it";
    EXPECT_FALSE(video.isVFR);
}

} // namespace
} // namespace vantroque
