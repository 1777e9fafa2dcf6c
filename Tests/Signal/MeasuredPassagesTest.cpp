#include "Records/EmptyPassages.h"
#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"

#include <gmock/gmock.h>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

class MeasuredPassages : public testing::Test {
private:
    const CleanRun m_cleanRun;
};

/// Four seconds of noise with sound, at 25 frames a second.
std::string film(const std::string& picture, const std::string& sound)
{
    return "color=gray:s=320x180:r=25:d=4,noise=c0s=60:c0f=t+u" + picture
           + "[out0];aevalsrc=exprs='" + sound + "':s=48000:d=4[out1]";
}

EmptyPassages passages(const std::string& name, const std::string& graph)
{
    MediaInfo media = probed(Media::make({name + ".mkv",
                                          {"-f", "lavfi", "-i", graph, "-c:v", "ffv1", "-pix_fmt",
                                           "yuv420p", "-c:a", "pcm_s16le"}}));
    auto info = SignalAnalyzer::analyze(media.url, media, {}, nullptr);
    EXPECT_TRUE(info);
    media.signal = *std::move(info);
    return EmptyPassages::of(media);
}

auto near(double start, double end)
{
    constexpr double aFrame = 0.041;
    return testing::AllOf(testing::Field(&TimeSpan::start, testing::DoubleNear(start, aFrame)),
                          testing::Field(&TimeSpan::end, testing::DoubleNear(end, aFrame)));
}

TEST_F(MeasuredPassages, BlackFrozenAndSilentOnesAreKeptWithTheirTimes)
{
    const std::string black =
        ",drawbox=color=black:t=fill:enable='between(n,25,39)+between(n,90,99)'";
    const std::string frozen = ",drawbox=color=gray:t=fill:enable='between(n,50,79)'";
    const EmptyPassages found =
        passages("passages", film(black + frozen, "0.1*sin(2000*PI*t)*(1-between(t\\,1\\,2))"));
    EXPECT_THAT(found.black, ElementsAre(near(1, 1.6), near(3.6, 4)));
    EXPECT_THAT(found.frozen, ElementsAre(near(2, 3.2)));
    EXPECT_THAT(found.silent, ElementsAre(near(1, 2)));
}

TEST_F(MeasuredPassages, AFreezeToTheEndEndsWithTheFilm)
{
    const EmptyPassages found =
        passages("frozen-tail", film(",drawbox=color=gray:t=fill:enable='gte(n,60)'",
                                     "0.1*sin(2000*PI*t)*lt(t\\,3)"));
    EXPECT_THAT(found.frozen, ElementsAre(near(2.4, 4)));
    EXPECT_THAT(found.silent, ElementsAre(near(3, 4)));
    EXPECT_THAT(found.black, IsEmpty());
}

TEST_F(MeasuredPassages, AFilmThatMovesAndSoundsHasNone)
{
    EXPECT_EQ(passages("lively", film("", "0.1*sin(2000*PI*t)")), EmptyPassages());
}

} // namespace
} // namespace vantroque
