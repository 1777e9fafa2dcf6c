#pragma once

#include "Analysis/Analyzer.h"
#include "Check/TextRegions.h"
#include "Probe/Prober.h"
#include "Support/BoxClips.h"
#include "Support/Clips.h"
#include "Support/FakeRecognizer.h"
#include "Support/FakeTools.h"

// Text in the picture on the way from a file to its report.

namespace vantroque {

inline MediaInfo probed(const std::filesystem::path& clip)
{
    return Prober::probe(FileUrl::fromPath(clip)).value();
}

inline Profile withSlate(double seconds)
{
    Profile profile = bareProfile();
    profile.content = ContentRule();
    profile.content->slateSeconds = seconds;
    return profile;
}

inline const std::vector<Profile> placement{withPlacement(0.9, 0.95)};

/// Recognizers that read white boxes in the middle of a frame, and on a slate always one line.
class Readers {
public:
    RecognizerPool pool{
        FakeRecognizer::answering([this](const QImage& picture, FakeRecognizer::Subject subject,
                                         auto deadline) -> Result<FakeRecognizer::Lines> {
            if (subject == FakeRecognizer::Subject::slate) {
                ++slates;
                return FakeRecognizer::Lines{{BoxClips::middle, QStringLiteral("ABCD1234")}};
            }
            ++frames;
            return FakeRecognizer::lookingAt({BoxClips::middle})(picture, subject, deadline);
        })};
    std::atomic<int> frames = 0;
    std::atomic<int> slates = 0;
};

/// The text of `BoxClips::titled`, to the frame.
inline void expectTitled(const std::optional<SignalInfo>& signal)
{
    ASSERT_TRUE(signal);
    EXPECT_EQ(signal->textScanAttempted, true);
    ASSERT_THAT(signal->textRegions, testing::Optional(testing::SizeIs(1)));
    const TextRegion& region = signal->textRegions->front();
    EXPECT_NEAR(region.start * 25, 30, 1e-6);
    EXPECT_NEAR(region.end * 25, 90, 1e-6);
    EXPECT_EQ(region.text, QStringLiteral("TEXT 0"));
}

/// The measured word of each row of text placement.
inline std::vector<QString> placementOf(const FileReport& report)
{
    std::vector<QString> measured;
    for (const ProfileReport& profile : report.profiles)
        for (const CheckResult& row : profile.checks)
            if (row.id == QStringLiteral("text-safe") || row.id == QStringLiteral("text-zones"))
                measured.push_back(row.measured);
    return measured;
}

/// A measured file whose text nobody has looked for.
inline MediaInfo measured()
{
    MediaInfo media = probed(BoxClips::titled());
    media.signal = SignalInfo();
    media.signal->blackRuns.emplace();
    media.signal->decodeHealth.emplace();
    return media;
}

} // namespace vantroque
