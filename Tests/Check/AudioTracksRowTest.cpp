#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

/// A measured file of streams with so many channels.
MediaInfo withTracks(const std::vector<int>& channels, const std::vector<TrackLoudness>& measured)
{
    MediaInfo media = measuredSpot();
    media.audio->channels = channels.front();
    media.audio->streamCount = static_cast<int>(channels.size());
    media.audio->tracks.emplace();
    for (const int count : channels)
        media.audio->tracks->push_back({u"pcm_s24le"_s, 48'000, count, {}, {}});
    media.signal->audioTracks = measured;
    return media;
}

CheckResult tracks(const char* measured, const char* graded = "track 1")
{
    const std::string expected =
        std::string("stated, not graded: the other rows speak of ") + graded;
    return row("audio-tracks", "Audio tracks", Verdict::info, measured, expected.c_str());
}

} // namespace

TEST(AudioTracksRow, AFileOfOneStreamHasNone)
{
    EXPECT_EQ(audioTracksRow(measuredSpot()), std::nullopt);
    MediaInfo media = hdSpot();
    media.audio->streamCount = 2;
    EXPECT_EQ(audioTracksRow(media), std::nullopt) << "it was not measured";
}

TEST(AudioTracksRow, EachFurtherStreamHasItsFigures)
{
    EXPECT_EQ(audioTracksRow(withTracks({2, 2, 6}, {{1, 1, -23.14, -3.2}, {2, 1, -18, -1}})),
              tracks("track 2, stereo (2 ch): -23.1 LKFS, -3.2 dBTP; track 3, 5.1 (6 ch): -18.0 "
                     "LKFS, -1.0 dBTP"));
}

TEST(AudioTracksRow, SilentOnesAreNamedTogether)
{
    std::vector<TrackLoudness> measured{{2, 2, -30, -9}};
    for (int first = 4; first < 16; first += 2)
        measured.push_back({first, 2, -70, first == 6 ? -60.1 : -99});
    EXPECT_EQ(
        audioTracksRow(withTracks(std::vector<int>(16, 1), measured)),
        tracks("tracks 3 and 4: -30.0 LKFS, -9.0 dBTP; tracks 5 to 16: silent", "tracks 1 and 2"));
    EXPECT_EQ(audioTracksRow(withTracks({2, 1}, {{1, 1, -70, -99}})), tracks("track 2: silent"));
    EXPECT_EQ(audioTracksRow(withTracks({2, 2}, {{1, 1, -70, -60}})),
              tracks("track 2, stereo (2 ch): -70.0 LKFS, -60.0 dBTP"));
}

TEST(AudioTracksRow, WhatWasNotMeasuredIsSaid)
{
    EXPECT_EQ(audioTracksRow(withTracks({2, 11}, {})), tracks("track 2, 11 ch: not measured"));
    MediaInfo old = measuredSpot();
    old.audio->streamCount = 3;
    EXPECT_EQ(audioTracksRow(old), tracks("only the first of 3 was measured"));
}

TEST(AudioTracksRow, APairAloneIsNamed)
{
    MediaInfo media = withTracks({1, 1}, {});
    media.signal->audioTracks.reset();
    EXPECT_EQ(audioTracksRow(media), tracks("tracks 1 and 2 are left and right", "tracks 1 and 2"));
}

} // namespace vantroque::SignalChecks
