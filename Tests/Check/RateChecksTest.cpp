#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Rows rateRows(const FrameRateRule& rule, double rate, bool vfr = false,
              const std::optional<QString>& detail = {})
{
    Profile profile = bareProfile();
    profile.frameRate = rule;
    MediaInfo media = hdSpot();
    media.video->nominalFrameRate = rate;
    media.video->isVFR = vfr;
    media.video->vfrDetail = detail;
    return rowsOf(checkFrameRate, profile, media);
}

FrameRateRule rates(const std::vector<double>& allowed,
                    const std::optional<std::vector<double>>& preferred = {})
{
    FrameRateRule rule;
    rule.allowed = allowed;
    rule.preferred = preferred;
    return rule;
}

CheckResult frameRate(Verdict verdict, const char* measured, const char* expected,
                      const char* fix = nullptr)
{
    return row("frame-rate", "Frame rate", verdict, measured, expected, fix);
}

CodecOption h264(std::optional<int> min, std::optional<int> max, std::optional<bool> cbr = {})
{
    CodecOption option;
    option.codec = u"h264"_s;
    option.minBitrateKbps = min;
    option.maxBitrateKbps = max;
    option.cbrRequired = cbr;
    return option;
}

Rows bitrateRows(const std::vector<CodecOption>& options, std::optional<double> kbps)
{
    Profile profile = bareProfile();
    profile.video = VideoRule{};
    profile.video->codecs = options;
    MediaInfo media = hdSpot();
    media.video->bitrateKbps = kbps;
    return rowsOf(checkBitrate, profile, media);
}

CheckResult bitrate(Verdict verdict, const char* measured, const char* expected,
                    const char* fix = nullptr)
{
    return row("bitrate", "Video bitrate", verdict, measured, expected, fix);
}

const char* const below10 = "Re-export at 10 Mbps or higher (in ffmpeg: -b:v 10000k -minrate "
                            "10000k -maxrate 10000k -bufsize 5000k).";

CheckResult cbrOf(const std::optional<HRDInfo>& hrd, const std::vector<double>& kbpsOfSeconds = {})
{
    VideoStreamInfo video = hdVideo();
    video.hrd = hrd;
    video.bitratePerSecondKbps = kbpsOfSeconds;
    Rows rows;
    checkCBR(video, rows);
    EXPECT_EQ(rows.size(), 1U);
    return rows.front();
}

CheckResult cbr(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("cbr", "Constant bitrate", verdict, measured, "CBR encoding", fix);
}

const char* const shortFix =
    "Export with CBR rate control. In ffmpeg: -b:v N -minrate N -maxrate N -bufsize N "
    "-x264-params nal-hrd=cbr. In Adobe Media Encoder, set Bitrate Encoding to CBR.";
const char* const longFix =
    "Export with CBR rate control. In ffmpeg: -b:v N -minrate N -maxrate N -bufsize N "
    "-x264-params nal-hrd=cbr. In Adobe Media Encoder, set Bitrate Encoding to CBR. Without HRD "
    "parameters the file carries no CBR claim for a QC tool to read, even when the rate is steady.";

BitrateLadderRule ladder()
{
    BitrateLadderStep hd;
    hd.name = u"1080p"_s;
    hd.minLines = 1080;
    hd.sdrMbps = 8;
    hd.sdrHighMbps = 12;
    hd.hdrMbps = 10;
    BitrateLadderStep small;
    small.name = u"720p"_s;
    small.minLines = 720;
    small.sdrMbps = 5;
    small.sdrHighMbps = 7.5;
    return {{hd, small}};
}

Rows ladderRows(const MediaInfo& media, const BitrateLadderRule& rule = ladder())
{
    Profile profile = bareProfile();
    profile.recommendedBitrate = rule;
    return rowsOf(checkRecommendedBitrate, profile, media);
}

MediaInfo at(std::optional<double> kbps)
{
    MediaInfo media = hdSpot();
    media.video->bitrateKbps = kbps;
    return media;
}

CheckResult recommended(Verdict verdict, const char* measured, const char* expected,
                        const char* fix = nullptr)
{
    return row("recommended-bitrate", "Bitrate for resolution", verdict, measured, expected, fix);
}

} // namespace

TEST(RateChecks, AnAllowedRatePassesUnderTheRulesName)
{
    EXPECT_THAT(rateRows(rates({23.98, 25}), 25),
                ElementsAre(frameRate(Verdict::pass, "25 fps", "23.98, 25 fps")));
    EXPECT_THAT(rateRows(rates({23.98, 24}), 24000.0 / 1001),
                ElementsAre(frameRate(Verdict::pass, "23.98 fps", "23.98, 24 fps")));
    EXPECT_THAT(rateRows(rates({25, 50}, {{25}}), 25),
                ElementsAre(frameRate(Verdict::pass, "25 fps", "25, 50 fps")));
}

TEST(RateChecks, AnAllowedRateThatIsNotPreferredIsAccepted)
{
    const auto accepted = frameRate(Verdict::pass, "50 fps (accepted)", "25, 50 fps");
    EXPECT_THAT(rateRows(rates({25, 50}, {{25}}), 50), ElementsAre(accepted));
    EXPECT_THAT(rateRows(rates({25, 50}, std::vector<double>{}), 50), ElementsAre(accepted));
}

TEST(RateChecks, AnotherRateFailsAndProposesThePreferredOrTheFirst)
{
    EXPECT_THAT(
        rateRows(rates({25, 50}, {{50}}), 30),
        ElementsAre(frameRate(Verdict::fail, "30.000 fps", "25, 50 fps",
                              "Re-export at 50 fps from the original master. Convert the frame "
                              "rate in the NLE, never in the delivery file.")));
    for (const auto& preferred :
         {std::optional<std::vector<double>>(), std::optional(std::vector<double>{})})
        EXPECT_THAT(rateRows(rates({23.98, 50}, preferred), 29.97),
                    ElementsAre(frameRate(Verdict::fail, "29.970 fps", "23.98, 50 fps",
                                          "Re-export at 23.98 fps from the original master. "
                                          "Convert the frame rate in the NLE, never in the "
                                          "delivery file.")));
}

TEST(RateChecks, ARateMatchesStrictlyUnderTwoHundredthsAway)
{
    EXPECT_EQ(rateRows(rates({25}), 25.019).front().verdict, Verdict::pass);
    EXPECT_EQ(rateRows(rates({25}), 25.02).front().verdict, Verdict::fail);
    EXPECT_EQ(rateRows(rates({25}), 24.98).front().verdict, Verdict::fail);
}

TEST(RateChecks, AnEmptyListOfRatesLeavesOnlyTheConstantRateRow)
{
    FrameRateRule rule = rates({});
    EXPECT_THAT(rateRows(rule, 25), IsEmpty());
    rule.constantRequired = true;
    EXPECT_THAT(rateRows(rule, 25), ElementsAre(row("cfr", "Constant frame rate", Verdict::pass,
                                                    "constant", "constant frame rate")));
}

TEST(RateChecks, AVariableRateFailsInTheProbersWords)
{
    const char* const fix =
        "Re-encode with a forced constant rate (in ffmpeg: -fps_mode cfr -r <rate>). Screen "
        "recordings and phone footage are the usual culprits.";
    FrameRateRule rule = rates({});
    rule.constantRequired = true;
    EXPECT_THAT(rateRows(rule, 25, true, u"gaps of 33 to 50 ms"_s),
                ElementsAre(row("cfr", "Constant frame rate", Verdict::fail, "gaps of 33 to 50 ms",
                                "constant frame rate", fix)));
    EXPECT_THAT(rateRows(rule, 25, true),
                ElementsAre(row("cfr", "Constant frame rate", Verdict::fail,
                                "variable frame rate detected", "constant frame rate", fix)));
}

TEST(RateChecks, RepeatedFramesAreAskedForByEitherRule)
{
    Profile profile = bareProfile();
    profile.frameRate = rates({25});
    EXPECT_THAT(rowsOf(checkCadence, profile, hdSpot()), IsEmpty());
    profile.frameRate->telecineForbidden = true;
    EXPECT_THAT(
        rowsOf(checkCadence, profile, hdSpot()),
        ElementsAre(row("duplicate-frames", "Duplicate frames", Verdict::info,
                        "signal pass skipped", "no duplicate frames, no telecine cadence")));
    profile.frameRate->telecineForbidden = false;
    profile.frameRate->duplicateFramesForbidden = true;
    EXPECT_THAT(rowsOf(checkCadence, profile, hdSpot()),
                ElementsAre(row("duplicate-frames", "Duplicate frames", Verdict::info,
                                "signal pass skipped", "no duplicate frames")));
}

TEST(RateChecks, APlatformThatForbidsRepeatedFramesFailsTheFile)
{
    Profile profile = bareProfile();
    profile.frameRate = rates({});
    profile.frameRate->duplicateFramesForbidden = true;
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    media.signal->cadence = FrameCadence{};
    media.signal->cadence->duplicatePeriod = 5;
    media.signal->cadence->duplicateCause = DuplicateCause::conversion;
    EXPECT_EQ(rowsOf(checkCadence, profile, media).front().verdict, Verdict::fail);
}

TEST(RateChecks, APlatformWithLevelLimitsFailsTheFile)
{
    Profile profile = bareProfile();
    profile.video = VideoRule{};
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    media.signal->levels = PictureLevels{};
    media.signal->levels->yRejectRuns = {{0, 5, 0.1}};
    EXPECT_THAT(rowsOf(checkLevels, profile, media), IsEmpty());
    profile.video->levels = LevelsRule{u"EBU R 103"_s, 5, 1, 4};
    const Rows rows = rowsOf(checkLevels, profile, media);
    ASSERT_THAT(idsOf(rows), ElementsAre(u"video-levels"_s));
    EXPECT_EQ(rows.front().verdict, Verdict::fail);
}

TEST(RateChecks, TheBitrateFloorAllowsTwoPercent)
{
    EXPECT_THAT(bitrateRows({h264(10000, {})}, 9800),
                ElementsAre(bitrate(Verdict::pass, "9.8 Mbps", "≥ 10 Mbps")));
    EXPECT_THAT(bitrateRows({h264(10000, {})}, 9790),
                ElementsAre(bitrate(Verdict::fail, "9.8 Mbps", "≥ 10 Mbps", below10)));
}

TEST(RateChecks, TheBitrateCeilingAllowsNothing)
{
    EXPECT_THAT(bitrateRows({h264(10000, 15000)}, 15000),
                ElementsAre(bitrate(Verdict::pass, "15 Mbps", "10 Mbps–15 Mbps")));
    EXPECT_THAT(bitrateRows({h264(10000, 15000)}, 15001),
                ElementsAre(bitrate(Verdict::fail, "15 Mbps", "10 Mbps–15 Mbps",
                                    "Re-export at or below 15 Mbps.")));
}

TEST(RateChecks, TheMeasuredBitrateLosesItsFractionFirst)
{
    EXPECT_EQ(bitrateRows({h264(1000, {})}, 12049.9).front().measured, u"12 Mbps"_s);
}

TEST(RateChecks, AnOddFloorHalvesToAWholeBuffer)
{
    EXPECT_EQ(*bitrateRows({h264(1001, {})}, 100).front().fix,
              u"Re-export at 1 Mbps or higher (in ffmpeg: -b:v 1001k -minrate 1001k -maxrate 1001k "
              u"-bufsize 500k)."_s);
}

TEST(RateChecks, AnUnmeasuredBitrateWarnsAndEndsTheCheck)
{
    EXPECT_THAT(bitrateRows({h264(10000, 15000, true)}, {}),
                ElementsAre(bitrate(Verdict::warn, "could not be measured", "≥ 10 Mbps")));
}

TEST(RateChecks, ACeilingAloneIsNotChecked)
{
    EXPECT_THAT(bitrateRows({h264({}, 15000)}, 99000), IsEmpty());
}

TEST(RateChecks, ConstantBitrateIsCheckedWithAndWithoutAFloor)
{
    EXPECT_THAT(idsOf(bitrateRows({h264(10000, {}, true)}, 12000)),
                ElementsAre(u"bitrate"_s, u"cbr"_s));
    EXPECT_THAT(idsOf(bitrateRows({h264({}, {}, true)}, {})), ElementsAre(u"cbr"_s));
}

TEST(RateChecks, TheFirstOfTwoOptionsForACodecSetsTheBitrate)
{
    EXPECT_THAT(idsOf(bitrateRows({h264(10000, {}), h264(50000, {}, true)}, 12000)),
                ElementsAre(u"bitrate"_s));
    EXPECT_EQ(bitrateRows({h264(10000, {}), h264(50000, {}, true)}, 12000).front().verdict,
              Verdict::pass);
}

TEST(RateChecks, AnotherCodecOrNoPictureHasNoBitrateRow)
{
    CodecOption hevc = h264(10000, {}, true);
    hevc.codec = u"hevc"_s;
    EXPECT_THAT(bitrateRows({hevc}, 5000), IsEmpty());

    Profile profile = bareProfile();
    profile.video = VideoRule{};
    profile.video->codecs = {h264(10000, {}, true)};
    MediaInfo media = hdSpot();
    media.video.reset();
    EXPECT_THAT(rowsOf(checkBitrate, profile, media), IsEmpty());
}

TEST(RateChecks, ADeclaredConstantBitratePasses)
{
    EXPECT_EQ(cbrOf(HRDInfo{true, true, 15000}),
              cbr(Verdict::pass, "CBR declared in the bitstream at 15.0 Mbps"));
    EXPECT_EQ(cbrOf(HRDInfo{true, true, {}}), cbr(Verdict::pass, "CBR declared in the bitstream"));
}

TEST(RateChecks, ADeclaredVariableBitrateFails)
{
    EXPECT_EQ(cbrOf(HRDInfo{true, false, 15000}, {1, 1, 1, 1, 1}),
              cbr(Verdict::fail, "the bitstream declares VBR (HRD cbr_flag = 0)", shortFix));
}

TEST(RateChecks, FewerThanFourSecondsAreTooShortToMeasure)
{
    EXPECT_EQ(cbrOf({}, {5000, 5000, 5000}),
              cbr(Verdict::warn, "not declared in the bitstream; clip is too short to measure",
                  shortFix));
}

TEST(RateChecks, TheFirstSecondIsNotMeasured)
{
    EXPECT_EQ(cbrOf({}, {90000, 5000, 5100, 4900}),
              cbr(Verdict::warn,
                  "not declared in the bitstream; measures steady (4.9–5.1 Mbps per second, "
                  "mean 5.0)",
                  longFix));
}

TEST(RateChecks, AFifthOfDeviationIsVariable)
{
    // Mean 10, deviations of 2 each way: exactly 0.2.
    EXPECT_EQ(cbrOf(HRDInfo{false, true, {}}, {0, 8000, 12000, 8000, 12000}),
              cbr(Verdict::warn,
                  "not declared in the bitstream; measures as VBR (8.0–12.0 Mbps per second, "
                  "mean 10.0)",
                  longFix));
    EXPECT_EQ(cbrOf(HRDInfo{true, {}, {}}, {0, 8100, 11900, 8100, 11900}),
              cbr(Verdict::warn,
                  "not declared in the bitstream; measures steady (8.1–11.9 Mbps per second, "
                  "mean 10.0)",
                  longFix));
}

TEST(RateChecks, AllZeroSecondsAreSteady)
{
    EXPECT_EQ(cbrOf({}, {0, 0, 0, 0}),
              cbr(Verdict::warn,
                  "not declared in the bitstream; measures steady (0.0–0.0 Mbps per second, "
                  "mean 0.0)",
                  longFix));
}

TEST(RateChecks, TheRecommendationAllowsTwoPercent)
{
    EXPECT_THAT(ladderRows(at(7840)),
                ElementsAre(recommended(Verdict::pass, "7.8 Mbps", "≥ 8 Mbps for 1080p")));
    EXPECT_THAT(
        ladderRows(at(7839)),
        ElementsAre(recommended(Verdict::warn, "7.8 Mbps", "≥ 8 Mbps for 1080p",
                                "Re-export at 8 Mbps or higher. The platform re-encodes every "
                                "upload and can only keep the detail it is given.")));
}

TEST(RateChecks, LessThanHalfTheRecommendationFails)
{
    EXPECT_EQ(ladderRows(at(3920)).front().verdict, Verdict::warn);
    EXPECT_THAT(ladderRows(at(3900)),
                ElementsAre(recommended(
                    Verdict::fail, "3.9 Mbps (under half the recommendation)", "≥ 8 Mbps for 1080p",
                    "Re-export at 8 Mbps or higher from the master. At this rate the re-encode "
                    "will look soft.")));
}

TEST(RateChecks, AnUnmeasuredBitrateWarnsBesideTheRecommendation)
{
    EXPECT_THAT(ladderRows(at({})), ElementsAre(recommended(Verdict::warn, "could not be measured",
                                                            "≥ 8 Mbps for 1080p")));
}

TEST(RateChecks, AVerticalPictureTakesTheStepOfItsShortSide)
{
    MediaInfo media = at(20000);
    std::swap(media.video->width, media.video->height);
    EXPECT_EQ(ladderRows(media).front().expected, u"≥ 8 Mbps for 1080p"_s);
}

TEST(RateChecks, ASmallPictureHasNoRecommendation)
{
    MediaInfo media = at(20000);
    media.video->width = 640;
    media.video->height = 360;
    EXPECT_THAT(ladderRows(media),
                ElementsAre(recommended(Verdict::info, "640x360",
                                        "no published recommendation below 720 lines")));
    EXPECT_THAT(ladderRows(media, BitrateLadderRule{}),
                ElementsAre(recommended(Verdict::info, "640x360",
                                        "no published recommendation below 0 lines")));
}

TEST(RateChecks, AHighFrameRateBeginsAboveForty)
{
    MediaInfo media = at(20000);
    media.video->nominalFrameRate = 40;
    EXPECT_EQ(ladderRows(media).front().expected, u"≥ 8 Mbps for 1080p"_s);
    media.video->nominalFrameRate = 60;
    EXPECT_EQ(ladderRows(media).front().expected, u"≥ 12 Mbps for 1080p, high frame rate"_s);
    media.video->height = 720;
    EXPECT_EQ(ladderRows(media).front().expected, u"≥ 7.50 Mbps for 720p, high frame rate"_s);
}

TEST(RateChecks, AnHdrPictureFallsBackToTheSdrRateAndKeepsItsLabel)
{
    MediaInfo media = at(20000);
    media.video->colorTransfer = u"smpte2084"_s;
    EXPECT_EQ(ladderRows(media).front().expected, u"≥ 10 Mbps for 1080p HDR"_s);
    media.video->colorTransfer = u"arib-std-b67"_s;
    media.video->nominalFrameRate = 60;
    EXPECT_EQ(ladderRows(media).front().expected, u"≥ 12 Mbps for 1080p HDR, high frame rate"_s);
}

TEST(RateChecks, WithoutPictureThereAreNoRateRows)
{
    Profile profile = bareProfile();
    profile.frameRate = FrameRateRule{{25}, {}, true, true, true};
    profile.recommendedBitrate = ladder();
    MediaInfo media = hdSpot();
    media.video.reset();
    for (const auto check : {checkFrameRate, checkCadence, checkRecommendedBitrate})
        EXPECT_THAT(rowsOf(check, profile, media), IsEmpty());
}

TEST(RateChecks, TheFixNamesARateNextToTheFilesOwn)
{
    const auto targetOf = [](const FrameRateRule& rule, double rate) {
        const auto fix = rateRows(rule, rate).at(0).fix.value();
        return fix.section(u' ', 2, 3);
    };
    EXPECT_EQ(targetOf(rates({23.98, 25, 29.97}), 30), u"29.97 fps"_s);
    EXPECT_EQ(targetOf(rates({23.98, 29.97}, {{23.98}}), 30), u"29.97 fps"_s);
    EXPECT_EQ(targetOf(rates({25, 23.98, 24}), 24.04), u"24 fps"_s) << "the nearer of two";
    EXPECT_EQ(targetOf(rates({25, 50}), 30), u"25 fps"_s);
    EXPECT_EQ(targetOf(rates({25, 50}, {{50}}), 30), u"50 fps"_s);
    EXPECT_EQ(targetOf(rates({50, 25}), 25.25), u"25 fps"_s);
    EXPECT_EQ(targetOf(rates({50, 25}), 25.26), u"50 fps"_s);
}

} // namespace vantroque::Checker
