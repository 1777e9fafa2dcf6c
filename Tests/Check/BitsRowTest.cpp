#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

/// A 10-bit picture and 24-bit sound.
MediaInfo deep()
{
    MediaInfo media = measuredSpot();
    media.video->bitDepth = 10;
    media.audio->codec = u"pcm"_s;
    media.audio->bitDepth = 24;
    media.signal->channelLevels = {{-20, -3, 16}, {-20, -3, 24}};
    media.signal->detail = DetailEstimate{};
    media.signal->detail->lumaBitsInUse = 10;
    return media;
}

QString bits(const MediaInfo& media)
{
    const auto found = bitsRow(media);
    return found ? found->measured : u"no row"_s;
}

} // namespace

TEST(BitsRow, FullDepthsAreStated)
{
    EXPECT_EQ(bitsRow(deep()),
              row("bits-in-use", "Bits in use", Verdict::info, "10-bit picture, 24-bit audio",
                  "stated, not graded: which bits the samples actually vary in"));
}

TEST(BitsRow, PaddedSamplesAreNamed)
{
    MediaInfo media = deep();
    media.signal->detail->lumaBitsInUse = 8;
    media.signal->channelLevels = {{-20, -3, 12}, {-20, -3, 16}};
    EXPECT_EQ(bits(media), u"10-bit picture carrying 8-bit values (the source was 8-bit), 24-bit "
                           u"PCM carrying 16-bit audio"_s);
}

TEST(BitsRow, AnUnmeasuredPictureStatesItsFormat)
{
    MediaInfo media = deep();
    media.signal->detail->lumaBitsInUse.reset();
    EXPECT_EQ(bits(media), u"10-bit picture, 24-bit audio"_s);
    media.signal->detail.reset();
    EXPECT_EQ(bits(media), u"10-bit picture, 24-bit audio"_s);
    media.signal.reset();
    EXPECT_EQ(bits(media), u"10-bit picture"_s);
}

TEST(BitsRow, OnlyMeasuredPCMIsStated)
{
    std::vector<MediaInfo> files(5, deep());
    files[0].audio->codec = u"aac"_s;
    files[1].audio->bitDepth.reset();
    files[2].signal->channelLevels.reset();
    files[3].signal->channelLevels = {{-99, -99, 0}, {}};
    files[4].audio.reset();
    for (const MediaInfo& media : files)
        EXPECT_EQ(bits(media), u"10-bit picture"_s);
}

TEST(BitsRow, WithNothingToStateThereIsNoRow)
{
    MediaInfo media = deep();
    media.video.reset();
    EXPECT_EQ(bits(media), u"24-bit audio"_s);
    media.audio.reset();
    EXPECT_EQ(bits(media), u"no row"_s);
    media = measuredSpot();
    EXPECT_EQ(bits(media), u"no row"_s);
}

} // namespace vantroque::SignalChecks
