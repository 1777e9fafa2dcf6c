#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

namespace {

const char* const fix =
    "Check that nothing has slipped, then trim or extend the sound to the picture's first and last "
    "frame and export again.";

/// Four seconds of picture, and sound from and to these moments.
MediaInfo soundFrom(double start, double end)
{
    MediaInfo media = measuredSpot();
    media.signal->pictureEnd = 4;
    media.signal->soundStart = start;
    media.signal->soundEnd = end;
    return media;
}

std::optional<CheckResult> sync(const char* measured)
{
    return row("sync", "Sound and picture", Verdict::warn, measured,
               "sound and picture begin and end together", fix);
}

} // namespace

TEST(SyncRow, SoundThatGoesWithThePictureHasNone)
{
    EXPECT_EQ(syncRow(soundFrom(0, 4)), std::nullopt);
    EXPECT_EQ(syncRow(soundFrom(0.25, 4.25)), std::nullopt);
    EXPECT_EQ(syncRow(soundFrom(-0.25, 3.75)), std::nullopt);
}

TEST(SyncRow, SoundThatBeginsOrEndsOffThePictureWarns)
{
    EXPECT_EQ(syncRow(soundFrom(0, 6)), sync("sound ends 2.00 s after the picture"));
    EXPECT_EQ(syncRow(soundFrom(0, 3.74)), sync("sound ends 0.26 s before the picture"));
    EXPECT_EQ(syncRow(soundFrom(0.48, 4)), sync("sound begins 0.48 s after the picture"));
    EXPECT_EQ(syncRow(soundFrom(-1, 3)), sync("sound begins 1.00 s before the picture, sound ends "
                                              "1.00 s before the picture"));
}

TEST(SyncRow, OnlyMeasuredSoundUnderAPictureHasOne)
{
    EXPECT_EQ(syncRow(hdSpot()), std::nullopt);
    EXPECT_EQ(syncRow(measuredSpot()), std::nullopt);
    MediaInfo media = soundFrom(1, 6);
    media.video.reset();
    EXPECT_EQ(syncRow(media), std::nullopt);
    media = soundFrom(1, 6);
    media.audio.reset();
    EXPECT_EQ(syncRow(media), std::nullopt);
}

} // namespace vantroque::SignalChecks
