#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

const char* const retagFix =
    "Export with the colour tags the picture was actually made with (Rec.709, video range for an "
    "HD SDR spot). In ffmpeg: -color_range tv -colorspace bt709 -color_primaries bt709 -color_trc "
    "bt709.";

struct Tags {
    std::optional<QString> range;
    std::optional<QString> space;
    std::optional<QString> primaries;
    std::optional<QString> transfer;
    int height = 1080;
};

CheckResult tagged(const Tags& tags)
{
    MediaInfo media = hdSpot();
    media.video->colorRange = tags.range;
    media.video->colorSpace = tags.space;
    media.video->colorPrimaries = tags.primaries;
    media.video->colorTransfer = tags.transfer;
    media.video->height = tags.height;
    return colorTagsRow(media).value();
}

CheckResult colorTags(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("color-tags", "Colour tags", verdict, measured,
               "tagged video range and Rec.709 for HD SDR, or PQ/HLG with Rec.2020 for HDR", fix);
}

std::optional<CheckResult> hdrOf(const QString& transfer, const std::optional<HDRMetadata>& hdr)
{
    MediaInfo media = hdSpot();
    media.video->colorTransfer = transfer;
    media.video->hdr = hdr;
    return hdrRow(media);
}

CheckResult hdrMetadata(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("hdr-metadata", "HDR metadata", verdict, measured,
               "static metadata (MaxCLL, MaxFALL, mastering display) on a PQ stream", fix);
}

} // namespace

TEST(ColorTagsRow, WithoutPictureThereIsNoRow)
{
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_EQ(colorTagsRow(media), std::nullopt);
}

TEST(ColorTagsRow, AnUntaggedFileIsInfo)
{
    const auto untagged =
        colorTags(Verdict::info, "untagged. Players assume Rec.709 video range for HD");
    EXPECT_EQ(tagged({}), untagged);
    EXPECT_EQ(tagged({.range = u"unknown"_s}), untagged);
}

TEST(ColorTagsRow, TagsThatGoTogetherPass)
{
    EXPECT_EQ(
        tagged({u"tv"_s, u"bt709"_s, u"bt709"_s, u"bt709"_s}),
        colorTags(Verdict::pass, "video range, Rec.709 matrix, bt709 primaries, bt709 transfer"));
    EXPECT_EQ(tagged({u"tv"_s, u"bt2020nc"_s, u"bt2020"_s, u"arib-std-b67"_s}),
              colorTags(Verdict::pass, "video range, Rec.2020 matrix, bt2020 primaries, "
                                       "arib-std-b67 transfer"));
}

TEST(ColorTagsRow, OneTagIsEnoughAndTheRestIsNamedUntagged)
{
    EXPECT_EQ(tagged({.range = u"tv"_s}), colorTags(Verdict::pass, "video range, matrix untagged"));
    EXPECT_EQ(tagged({.space = u"bt709"_s}),
              colorTags(Verdict::pass, "range untagged, Rec.709 matrix"));
    EXPECT_EQ(tagged({.primaries = u"bt709"_s}),
              colorTags(Verdict::pass, "range untagged, matrix untagged, bt709 primaries"));
    EXPECT_EQ(tagged({.transfer = u"smpte2084"_s}),
              colorTags(Verdict::pass, "range untagged, matrix untagged, smpte2084 transfer"));
}

TEST(ColorTagsRow, FullRangeWarns)
{
    EXPECT_EQ(tagged({.range = u"pc"_s}),
              colorTags(Verdict::warn,
                        "full range, matrix untagged. tagged full range (0–255). Broadcast and ad "
                        "delivery expect video range (16–235). A player that honours the tag shows "
                        "a different picture from one that ignores it",
                        retagFix));
}

TEST(ColorTagsRow, AnSDMatrixOnAnHDPictureWarns)
{
    EXPECT_EQ(tagged({.space = u"smpte170m"_s, .height = 720}),
              colorTags(Verdict::warn,
                        "range untagged, Rec.601 matrix. Rec.601 matrix on an HD frame: colours "
                        "shift when a player decodes it as Rec.709",
                        retagFix));
    EXPECT_EQ(tagged({.space = u"smpte170m"_s, .height = 719}).verdict, Verdict::pass);
}

TEST(ColorTagsRow, AnHDRTransferWantsItsPrimaries)
{
    EXPECT_EQ(tagged({.primaries = u"bt709"_s, .transfer = u"smpte2084"_s}),
              colorTags(Verdict::warn,
                        "range untagged, matrix untagged, bt709 primaries, smpte2084 transfer. HDR "
                        "transfer (smpte2084) with bt709 primaries; HDR deliveries carry Rec.2020",
                        retagFix));
}

TEST(ColorTagsRow, ProblemsAreJoined)
{
    EXPECT_EQ(tagged({u"pc"_s, u"bt470bg"_s, u"bt709"_s, u"arib-std-b67"_s}).measured,
              u"full range, Rec.601 matrix, bt709 primaries, arib-std-b67 transfer. tagged full "
              u"range (0–255). Broadcast and ad delivery expect video range (16–235). A player "
              u"that honours the tag shows a different picture from one that ignores it; Rec.601 "
              u"matrix on an HD frame: colours shift when a player decodes it as Rec.709; HDR "
              u"transfer (arib-std-b67) with bt709 primaries; HDR deliveries carry Rec.2020"_s);
}

TEST(HdrRow, OnlyAnHDRPictureHasTheRow)
{
    EXPECT_EQ(hdrRow(hdSpot()), std::nullopt);
    EXPECT_EQ(hdrOf(u"bt709"_s, HDRMetadata{1000, 400, {}, {}}), std::nullopt);
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_EQ(hdrRow(media), std::nullopt);
}

TEST(HdrRow, StaticMetadataPasses)
{
    EXPECT_EQ(hdrOf(u"smpte2084"_s, HDRMetadata{1000, 400, u"P3-D65"_s, 999.5}),
              hdrMetadata(Verdict::pass, "PQ (HDR10), MaxCLL 1000 nits, MaxFALL 400 nits, mastered "
                                         "on P3-D65 at 1000 nits"));
    EXPECT_EQ(hdrOf(u"smpte2084"_s, HDRMetadata{{}, {}, u"Rec.2020"_s, {}}),
              hdrMetadata(Verdict::pass, "PQ (HDR10), mastered on Rec.2020"));
    EXPECT_EQ(hdrOf(u"arib-std-b67"_s, HDRMetadata{1000, {}, {}, 4000}),
              hdrMetadata(Verdict::pass, "HLG, MaxCLL 1000 nits"));
}

TEST(HdrRow, PQWithoutMetadataWarns)
{
    const auto warning = hdrMetadata(
        Verdict::warn, "PQ (HDR10), no static metadata",
        "Export HDR10 with mastering display and content light level metadata (x265: "
        "master-display and max-cll; Compressor and Resolve write them from the project's HDR "
        "settings).");
    EXPECT_EQ(hdrOf(u"smpte2084"_s, {}), warning);
    EXPECT_EQ(hdrOf(u"smpte2084"_s, HDRMetadata{{}, 400, {}, {}}), warning)
        << "a lone average does not count";
}

TEST(HdrRow, HLGNeedsNoMetadata)
{
    EXPECT_EQ(hdrOf(u"arib-std-b67"_s, {}),
              hdrMetadata(Verdict::info, "HLG. Static metadata is optional for HLG"));
}

} // namespace vantroque::SignalChecks
