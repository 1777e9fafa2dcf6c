#include "Signal/SignalPass.h"

#include <mutex>

// What is shown while a file is decoded.

namespace vantroque {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::Not;
using testing::SizeIs;
using Stage = AnalysisProgress::Stage;

/// Listens to a decode, on whatever threads it reports.
class Listener {
public:
    AnalysisProgress::OnUpdate callback()
    {
        return [this](const AnalysisProgress::Snapshot& snapshot) {
            const std::scoped_lock lock(m_mutex);
            m_stages.push_back(snapshot.stage);
            m_fractions.push_back(snapshot.fraction);
        };
    }
    const std::vector<Stage>& stages() const { return m_stages; }
    const std::vector<double>& fractions() const { return m_fractions; }

private:
    std::mutex m_mutex;
    std::vector<Stage> m_stages;
    std::vector<double> m_fractions;
};

TEST_F(SignalPass, ShowsHowFarItGotAndWhatItSaw)
{
    Listener listener;
    AnalysisProgress::Snapshot last;
    {
        AnalysisProgress progress(listener.callback());
        progress.set(Stage::probing);
        value(pass(Clips::plain(), {}, &progress));
        last = progress.snapshot();
    }
    EXPECT_EQ(listener.stages().front(), Stage::probing);
    EXPECT_EQ(listener.stages().back(), Stage::decoding);
    EXPECT_TRUE(std::ranges::is_sorted(listener.stages()));
    EXPECT_TRUE(std::ranges::is_sorted(listener.fractions()));
    EXPECT_THAT(listener.fractions(), Each(AllOf(Ge(0.0), Le(1.0))));
    EXPECT_GT(last.fraction, 0.05) << "probing alone comes no further";
    EXPECT_EQ(last.duration, 1);
    EXPECT_NEAR(last.mediaSeconds, 1, 0.1);
    ASSERT_THAT(last.frames, SizeIs(5)) << "every sixth of 25";
    EXPECT_DOUBLE_EQ(last.frames[4].time, 24.0 / 25);
    EXPECT_EQ(last.frames[0].frame->width, 192);
    EXPECT_EQ(last.frames[0].frame->height, 108);
    ASSERT_GE(last.audio.size(), 9U) << "tenths of a second";
    EXPECT_THAT(last.audio[5].levels->rms, SizeIs(2));
    EXPECT_EQ(last.preview, nullptr) << "nobody asked for it";
}

TEST_F(SignalPass, WhatSoundAloneWritesIsNoPicture)
{
    ffmpegWrites(2 * frameBytes, "Stream mapping:\n" + window + summary, 0);
    AnalysisProgress progress;
    EXPECT_TRUE(pass(sound(), {}, &progress));
    EXPECT_THAT(progress.snapshot().frames, IsEmpty());
}

TEST_F(SignalPass, ShowsThePreviewThatIsAskedFor)
{
    AnalysisProgress progress;
    value(pass(Clips::plain(), {.previewWidth = 160}, &progress));
    const auto last = progress.snapshot();
    ASSERT_NE(last.preview, nullptr);
    EXPECT_EQ(last.preview->width, 160);
    EXPECT_EQ(last.preview->height, 90);
    EXPECT_DOUBLE_EQ(last.previewTime, 24.0 / 25);
    EXPECT_GT(*std::ranges::max_element(last.preview->y), 200);
    EXPECT_LT(*std::ranges::min_element(last.preview->y), 40);
}

TEST_F(SignalPass, APictureTooNarrowForAPreviewHoldsNothingUp)
{
    const auto clip = Media::make(
        {"pixel.mkv",
         {"-f", "lavfi", "-i", "color=white:s=2x2:r=25:d=1,crop=1:1:exact=1,format=yuv444p", "-c:v",
          "ffv1"}});
    const MediaInfo media = probed(clip);
    AnalysisProgress progress;
    const SignalInfo info = value(pass(media, {.previewWidth = 960}, &progress));
    EXPECT_NEAR(info.levels->yMaxPercent, 100, 1);
    EXPECT_THAT(progress.snapshot().frames, SizeIs(5));
}

TEST_F(SignalPass, WithNobodyWatchingMakesNoPreview)
{
    const MediaInfo media = probed(Clips::plain());
    m_tools.record("ffmpeg");
    value(pass(media, {.previewWidth = 160}));
    EXPECT_THAT(m_tools.calls("ffmpeg"), ElementsAre(Not(Contains("[preview]"))));
}

} // namespace
} // namespace vantroque
