#include "Builders.h"
#include "Check/SignalChecks.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Rows containerRows(const ContainerRule& rule, const MediaInfo& media = hdSpot())
{
    Profile profile = bareProfile();
    profile.container = rule;
    return rowsOf(checkContainer, profile, media);
}

Profile withVideo(const VideoRule& rule)
{
    Profile profile = bareProfile();
    profile.video = rule;
    return profile;
}

Rows resolutionRows(const std::vector<ResolutionOption>& options, int width, int height)
{
    VideoRule rule;
    rule.resolutions = options;
    MediaInfo media = hdSpot();
    media.video->width = width;
    media.video->height = height;
    return rowsOf(checkResolution, withVideo(rule), media);
}

Rows pixelAspectRows(const std::optional<QString>& sampleAspect)
{
    VideoRule rule;
    rule.squarePixelsRequired = true;
    MediaInfo media = hdSpot();
    media.video->sampleAspect = sampleAspect;
    return rowsOf(checkPixels, withVideo(rule), media);
}

Rows scanRows(const std::optional<QString>& fieldOrder, std::optional<double> combed,
              const std::optional<std::vector<double>>& interlacedRates = {})
{
    VideoRule rule;
    rule.progressiveRequired = true;
    rule.interlacedAllowedRates = interlacedRates;
    MediaInfo media = hdSpot();
    media.video->fieldOrder = fieldOrder;
    if (combed) {
        media.signal = SignalInfo{};
        media.signal->interlacedRatio = combed;
    }
    return rowsOf(checkPixels, withVideo(rule), media);
}

CheckResult scan(Verdict verdict, const char* measured, const char* expected = "progressive",
                 const char* fix = nullptr)
{
    return row("scan-type", "Scan type", verdict, measured, expected, fix);
}

const char* const deinterlace = "Deinterlace on export (in ffmpeg: -vf bwdif) or re-export the "
                                "progressive master.";

Rows chromaRows(const std::optional<QString>& preferred,
                const std::optional<std::vector<QString>>& accepted,
                const std::optional<QString>& chroma)
{
    VideoRule rule;
    rule.chromaPreferred = preferred;
    rule.chromaAccepted = accepted;
    MediaInfo media = hdSpot();
    media.video->chroma = chroma;
    return rowsOf(checkChroma, withVideo(rule), media);
}

CheckResult chroma(Verdict verdict, const char* measured, const char* expected,
                   const char* fix = nullptr)
{
    return row("chroma", "Chroma subsampling", verdict, measured, expected, fix);
}

} // namespace

TEST(FormatChecks, AnAllowedContainerPasses)
{
    const auto pass = row("container", "Container", Verdict::pass, "mp4", "mp4 or mov");
    EXPECT_THAT(containerRows({{u"mp4"_s, u"mov"_s}, {}, {}, {}}), ElementsAre(pass));
    EXPECT_THAT(containerRows({{u"mp4"_s, u"mov"_s}, u"mp4"_s, {}, {}}), ElementsAre(pass));
}

TEST(FormatChecks, AnAllowedContainerThatIsNotPreferredIsAccepted)
{
    EXPECT_THAT(containerRows({{u"mp4"_s, u"mov"_s}, u"mov"_s, {}, {}}),
                ElementsAre(row("container", "Container", Verdict::pass,
                                "mp4 (accepted; mov preferred)", "mp4 or mov")));
}

TEST(FormatChecks, AnotherContainerFailsAndProposesThePreferredOrTheFirstAllowed)
{
    EXPECT_THAT(containerRows({{u"mov"_s, u"mxf"_s}, u"mxf"_s, {}, {}}),
                ElementsAre(row("container", "Container", Verdict::fail, "mp4", "mov or mxf",
                                "Remux or re-export as .mxf.")));
    EXPECT_THAT(containerRows({{u"mov"_s, u"mxf"_s}, {}, {}, {}}),
                ElementsAre(row("container", "Container", Verdict::fail, "mp4", "mov or mxf",
                                "Remux or re-export as .mov.")));
}

TEST(FormatChecks, ContainersAreComparedExactly)
{
    EXPECT_EQ(containerRows({{u"MP4"_s}, {}, {}, {}}).front().verdict, Verdict::fail);
}

TEST(FormatChecks, AnEmptyAllowedListFailsEveryFileAndProposesMp4)
{
    EXPECT_THAT(containerRows({{}, {}, {}, {}}),
                ElementsAre(row("container", "Container", Verdict::fail, "mp4", "",
                                "Remux or re-export as .mp4.")));
    EXPECT_THAT(containerRows({{}, u"mov"_s, {}, {}}),
                ElementsAre(row("container", "Container", Verdict::fail, "mp4", "",
                                "Remux or re-export as .mov.")));
}

TEST(FormatChecks, FastStartIsJudgedWhereItIsKnownAndRecommended)
{
    const ContainerRule rule{{u"mp4"_s}, {}, {}, true};
    MediaInfo media = hdSpot();
    EXPECT_THAT(idsOf(containerRows(rule, media)), ElementsAre(u"container"_s));
    media.moovBeforeMdat = true;
    EXPECT_EQ(containerRows(rule, media).back(), row("fast-start", "Fast start", Verdict::pass,
                                                     "moov atom before mdat", "moov atom first"));
    media.moovBeforeMdat = false;
    EXPECT_EQ(containerRows(rule, media).back(),
              row("fast-start", "Fast start", Verdict::warn, "moov atom after mdat",
                  "moov atom first, so playback starts before the upload finishes processing",
                  "Re-export with fast start on. In ffmpeg: -movflags +faststart. Media Encoder "
                  "has it on by default."));
    EXPECT_THAT(idsOf(containerRows({{u"mp4"_s}, {}, {}, {}}, media)), ElementsAre(u"container"_s));
}

TEST(FormatChecks, AnUpperCaseExtensionFailsAndALowerCaseOneHasNoRow)
{
    const ContainerRule rule{{u"mp4"_s}, {}, true, {}};
    MediaInfo media = hdSpot();
    EXPECT_THAT(idsOf(containerRows(rule, media)), ElementsAre(u"container"_s));
    media.url = FileUrl::fromPath("/spots/spot.Mp4");
    EXPECT_EQ(containerRows(rule, media).back(),
              row("extension-case", "Extension case", Verdict::fail, ".Mp4",
                  "lowercase extension (.mp4)", "Rename the file so the extension is lowercase."));
}

TEST(FormatChecks, AListedSizePasses)
{
    EXPECT_THAT(resolutionRows({{1280, 720, {}}, {1920, 1080, {}}}, 1920, 1080),
                ElementsAre(row("resolution", "Resolution", Verdict::pass, "1920x1080",
                                "1280x720 or 1920x1080")));
    EXPECT_THAT(resolutionRows({{1280, 720, {}}, {1920, 1080, true}}, 1920, 1080),
                ElementsAre(row("resolution", "Resolution", Verdict::pass, "1920x1080",
                                "1280x720 or 1920x1080")));
}

TEST(FormatChecks, AListedSizeBesideAPreferredOneIsAccepted)
{
    EXPECT_THAT(resolutionRows({{1280, 720, {}}, {1920, 1080, true}}, 1280, 720),
                ElementsAre(row("resolution", "Resolution", Verdict::pass, "1280x720 (accepted)",
                                "1280x720 or 1920x1080")));
}

TEST(FormatChecks, AnotherSizeFailsAndProposesThePreferredOrTheFirst)
{
    EXPECT_THAT(resolutionRows({{1280, 720, {}}, {1920, 1080, true}}, 1080, 1920),
                ElementsAre(row("resolution", "Resolution", Verdict::fail, "1080x1920",
                                "1280x720 or 1920x1080", "Re-export at 1920x1080.")));
    EXPECT_THAT(resolutionRows({{1280, 720, false}, {1920, 1080, {}}}, 1921, 1080),
                ElementsAre(row("resolution", "Resolution", Verdict::fail, "1921x1080",
                                "1280x720 or 1920x1080", "Re-export at 1280x720.")));
}

TEST(FormatChecks, AnEmptyListOfSizesHasNoRow)
{
    EXPECT_THAT(resolutionRows({}, 1920, 1080), IsEmpty());
}

TEST(FormatChecks, AnUnstatedOrEqualPixelAspectIsSquare)
{
    const auto pass =
        row("pixel-aspect", "Pixel aspect", Verdict::pass, "square", "square pixels (1:1)");
    for (const auto& aspect : {std::optional<QString>(), std::optional(u""_s),
                               std::optional(u"1:1"_s), std::optional(u"0:1"_s)})
        EXPECT_THAT(pixelAspectRows(aspect), ElementsAre(pass));
}

TEST(FormatChecks, AnotherPixelAspectFails)
{
    EXPECT_THAT(pixelAspectRows(u"64:45"_s),
                ElementsAre(row("pixel-aspect", "Pixel aspect", Verdict::fail, "SAR 64:45",
                                "square pixels (1:1)",
                                "Re-export with square pixels; anamorphic masters must be "
                                "resampled.")));
}

TEST(FormatChecks, PixelRulesThatAreNotSetHaveNoRows)
{
    EXPECT_THAT(rowsOf(checkPixels, withVideo({}), hdSpot()), IsEmpty());
}

TEST(FormatChecks, AFileThatIsNotShownToBeInterlacedIsProgressive)
{
    const auto pass = scan(Verdict::pass, "progressive");
    EXPECT_THAT(scanRows({}, {}), ElementsAre(pass));
    EXPECT_THAT(scanRows(u"progressive"_s, 0.0), ElementsAre(pass));
    EXPECT_THAT(scanRows(u"unknown"_s, {}), ElementsAre(pass));
}

TEST(FormatChecks, AFifthOfCombedFramesIsNotYetInterlaced)
{
    EXPECT_THAT(scanRows(u"progressive"_s, 0.2), ElementsAre(scan(Verdict::pass, "progressive")));
    EXPECT_THAT(scanRows(u"progressive"_s, 0.21),
                ElementsAre(scan(Verdict::fail, "21% of sampled frames are interlaced",
                                 "progressive", deinterlace)));
}

TEST(FormatChecks, TheMeasurementOutvotesTheFlag)
{
    EXPECT_THAT(scanRows(u"tt"_s, 0.9),
                ElementsAre(scan(Verdict::fail, "90% of sampled frames are interlaced",
                                 "progressive", deinterlace)));
    EXPECT_THAT(scanRows(u"unknown"_s, 0.5),
                ElementsAre(scan(Verdict::fail, "50% of sampled frames are interlaced",
                                 "progressive", deinterlace)));
}

TEST(FormatChecks, ADeclaredFieldOrderFailsWithoutMeasurement)
{
    EXPECT_THAT(scanRows(u"tt"_s, {}),
                ElementsAre(scan(Verdict::fail, "field order tt", "progressive", deinterlace)));
}

TEST(FormatChecks, InterlacePassesAtAnAllowedRate)
{
    const auto accepted =
        scan(Verdict::pass, "interlaced, accepted at 25.00", "progressive, or interlaced at 25.00");
    EXPECT_THAT(scanRows(u"tt"_s, {}, {{29.97, 25}}), ElementsAre(accepted));
    EXPECT_THAT(scanRows({}, 0.5, {{25}}), ElementsAre(accepted));
    EXPECT_THAT(scanRows(u"progressive"_s, 0.5, {{25}}), ElementsAre(accepted));
    EXPECT_EQ(scanRows(u"tt"_s, {}, {{25.02}}).front().verdict, Verdict::fail);
    EXPECT_EQ(scanRows(u"tt"_s, {}, {{29.97}}).front().verdict, Verdict::fail);
}

TEST(FormatChecks, LowerFieldFirstWarnsAtAnAllowedRate)
{
    const auto warning = scan(Verdict::warn, "interlaced, lower field first",
                              "progressive, or interlaced upper field first at 25.00",
                              "Re-export upper field first.");
    EXPECT_THAT(scanRows(u"bb"_s, {}, {{25}}), ElementsAre(warning));
    EXPECT_THAT(scanRows(u"bt"_s, 0.9, {{25}}), ElementsAre(warning));
}

TEST(FormatChecks, PreferredChromaPassesAndAcceptedChromaWarns)
{
    EXPECT_THAT(chromaRows(u"422"_s, {{u"420"_s}}, u"422"_s),
                ElementsAre(chroma(Verdict::pass, "4:2:2", "4:2:2 or 4:2:0")));
    EXPECT_THAT(
        chromaRows(u"422"_s, {{u"420"_s}}, u"420"_s),
        ElementsAre(chroma(Verdict::warn, "4:2:0 (accepted; 4:2:2 preferred)", "4:2:2 or 4:2:0")));
}

TEST(FormatChecks, OtherChromaFailsWithThePixelFormat)
{
    EXPECT_THAT(chromaRows(u"422"_s, {{u"444"_s}}, u"420"_s),
                ElementsAre(chroma(Verdict::fail, "4:2:0 (yuv420p)", "4:2:2 or 4:4:4",
                                   "Re-export with 4:2:2 or 4:4:4 chroma.")));
    EXPECT_THAT(chromaRows(u"422"_s, {}, {}),
                ElementsAre(chroma(Verdict::fail, "unknown (yuv420p)", "4:2:2",
                                   "Re-export with 4:2:2 chroma.")));
}

TEST(FormatChecks, AcceptedChromaWithoutAPreferredOneLeavesItsPlaceEmpty)
{
    EXPECT_THAT(chromaRows({}, {{u"420"_s}}, u"420"_s),
                ElementsAre(chroma(Verdict::warn, "4:2:0 (accepted;  preferred)", "4:2:0")));
}

TEST(FormatChecks, ChromaHasNoRowWithoutRule)
{
    EXPECT_THAT(chromaRows({}, {}, u"420"_s), IsEmpty());
}

TEST(FormatChecks, WithoutPictureThereAreNoPictureRows)
{
    VideoRule rule;
    rule.resolutions = {{1920, 1080, {}}};
    rule.squarePixelsRequired = true;
    rule.progressiveRequired = true;
    rule.chromaPreferred = u"420"_s;
    MediaInfo media = hdSpot();
    media.video.reset();
    for (const auto check : {checkResolution, checkPixels, checkChroma})
        EXPECT_THAT(rowsOf(check, withVideo(rule), media), IsEmpty());
}

TEST(FormatChecks, AFlagThatNoFrameBearsOutIsToBeCorrected)
{
    const auto fixOf = [](double combed) { return scanRows(u"tt"_s, combed).at(0).fix.value(); };
    EXPECT_EQ(scanRows(u"tt"_s, 0.0).at(0).verdict, Verdict::fail);
    EXPECT_EQ(fixOf(0), u"Nothing is combed: the picture is progressive and only flagged as "
                        u"interlaced. Flag it as progressive on export (in ffmpeg: -vf "
                        u"setfield=prog), and do not deinterlace it."_s);
    EXPECT_EQ(fixOf(0.01), fixOf(0));
    EXPECT_EQ(fixOf(0.02), QString::fromUtf8(deinterlace));
}

TEST(FormatChecks, ATelecineIsNotToBeDeinterlaced)
{
    VideoRule rule;
    rule.progressiveRequired = true;
    Profile profile = withVideo(rule);
    MediaInfo media = measuredSpot();
    media.signal->interlacedRatio = 0.4;
    media.signal->cadence = FrameCadence{};
    media.signal->cadence->frameCountSeen = 100;
    media.signal->cadence->repeatedFieldsTop = 40;
    media.signal->cadence->repeatedFieldsNeither = 60;
    const auto telecine = rowsOf(checkPixels, profile, media);
    EXPECT_EQ(telecine.at(0).verdict, Verdict::fail);
    EXPECT_EQ(telecine.at(0).fix, SignalChecks::duplicatesRow(media, {}, false)->fix);
    EXPECT_EQ(telecine.at(0).fix, u"Remove the pulldown (inverse telecine) and deliver progressive "
                                  u"at the native rate."_s);
    media.signal->cadence->repeatedFieldsTop = 10;
    EXPECT_EQ(rowsOf(checkPixels, profile, media).at(0).fix, QString::fromUtf8(deinterlace));
}

TEST(FormatChecks, APictureOnItsSideHasTheSizeThatIsShown)
{
    VideoRule rule;
    rule.resolutions.push_back({.width = 1080, .height = 1920});
    MediaInfo media = hdSpot();
    EXPECT_EQ(rowsOf(checkResolution, withVideo(rule), media).at(0).measured, u"1920x1080"_s);
    for (const int rotation : {90, -90, 270}) {
        media.video->rotation = rotation;
        EXPECT_EQ(rowsOf(checkResolution, withVideo(rule), media).at(0).verdict, Verdict::pass);
    }
    media.video->rotation = 180;
    EXPECT_EQ(rowsOf(checkResolution, withVideo(rule), media).at(0).verdict, Verdict::fail);
}

} // namespace vantroque::Checker
