#include "Export/Csv.h"

// The columns and what a record puts into them.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using MeasurementCSV::line;
using testing::ElementsAre;
using testing::StartsWith;

MediaInfo sound()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/jingle.wav");
    media.containerKind = u"wav"_s;
    media.durationSeconds = 12.345;
    media.audio = AudioStreamInfo();
    return media;
}

MediaInfo film()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/spot.mov");
    media.containerKind = u"mov"_s;
    media.durationSeconds = 30.03;
    media.video = VideoStreamInfo();
    media.video->codec = u"prores"_s;
    media.video->width = 1920;
    media.video->height = 1080;
    media.video->nominalFrameRate = 30'000.0 / 1001;
    media.video->bitDepth = 10;
    media.video->colorRange = u"tv"_s;
    media.video->colorSpace = u"bt709"_s;
    return media;
}

PictureLevels levels()
{
    PictureLevels levels;
    levels.yMinPercent = -1.25;
    levels.yMaxPercent = 104.75;
    levels.matrixAssumed = true;
    levels.yRejectRuns = {{1, 2.5, 0.012}, {4, 4.25, 0.02}};
    levels.rgbRejectRuns = {{7, 10, 0.34567}};
    levels.strictRuns = {{0, 0.125, 0.9}};
    return levels;
}

FrameCadence cadence()
{
    FrameCadence cadence;
    cadence.duplicateFrames = {5};
    cadence.duplicateCount = 149;
    cadence.duplicatePeriod = 5;
    cadence.repeatedFieldsTop = 30;
    cadence.repeatedFieldsBottom = 15;
    cadence.repeatedFieldsNeither = 75;
    cadence.flashFrames = {{10, 3.5}, {20, 12.5}, {30, 4}};
    cadence.interiorBlackRuns = {{3, 4}, {8, 9}};
    return cadence;
}

StereoPhase phase()
{
    StereoPhase phase;
    phase.meanCorrelation = -0.12345;
    phase.minWindowCorrelation = -0.9876;
    phase.outOfPhaseRuns = {{2, 3.5}, {6, 7}};
    phase.dualMono = false;
    return phase;
}

DetailEstimate detail()
{
    DetailEstimate detail;
    detail.halfResPsnrDb = 38.126;
    detail.quarterResPsnrDb = 33.5;
    detail.lumaBitsInUse = 8;
    return detail;
}

MediaInfo measuredFilm()
{
    MediaInfo media = film();
    media.signal = SignalInfo();
    SignalInfo& signal = *media.signal;
    signal.levels = levels();
    signal.cadence = cadence();
    signal.phase = phase();
    signal.channelLevels = {{{-20.04, -3.0, 16}, {-99, -99, {}}, {-22, -5, 24}, {{}, {}, {}}}};
    signal.detail = detail();
    signal.integratedLKFS = -23.06;
    signal.truePeakDb = -1.44;
    return media;
}

std::map<std::string, std::string> table(const MediaInfo& media)
{
    return Csv::byName(line(media, {}, {}));
}

TEST(MeasurementTable, HasTheseColumns)
{
    EXPECT_EQ(MeasurementCSV::headerLine(),
              u"file,container,codec,width,height,fps,seconds,bit_depth,color_range,color_space,"
              "matrix_assumed,y_min_pct,y_max_pct,reject_y_sec,reject_rgb_sec,reject_worst_frac,"
              "strict_sec,dup_count,dup_period,repeated_field_ratio,flash_count,flash_max_ratio,"
              "interior_black_runs,phase_mean,phase_min_window,phase_negative_sec,dual_mono,"
              "ch1_rms_db,ch2_rms_db,dead_channels,psnr_half_db,psnr_quarter_db,luma_bits_in_use,"
              "audio_bits_in_use,block_mean,blur_mean,loudness_lkfs,true_peak_dbtp"_s);
    EXPECT_EQ(MeasurementCSV::header().size(), 38);
    EXPECT_EQ(MeasurementCSV::header().join(u','), MeasurementCSV::headerLine());
}

TEST(MeasurementTable, AMeasuredFilmFillsThem)
{
    EXPECT_EQ(line(measuredFilm(), 1.23456, 4.5),
              u"spot.mov,mov,prores,1920,1080,29.970,30.03,10,tv,bt709,"
              "1,-1.3,104.8,1.75,3.00,0.3457,0.13,149,5,0.375,3,12.5,2,"
              "-0.123,-0.988,2.50,0,-20.0,-99.0,1 3,38.13,33.50,8,24,1.235,4.500,-23.1,-1.4"_s);
}

TEST(MeasurementTable, EveryLineHasAFieldForEachColumn)
{
    for (const MediaInfo& media : {MediaInfo(), sound(), film(), measuredFilm()})
        EXPECT_EQ(line(media, {}, {}).count(u','), 37);
}

TEST(MeasurementTable, SoundAloneHasALengthAndNoPicture)
{
    EXPECT_EQ(line(sound(), {}, {}), u"jingle.wav,wav,,,,,12.35"_s + QString(31, u','));
}

TEST(MeasurementTable, APictureThatTellsLittleLeavesFieldsEmpty)
{
    MediaInfo media = film();
    media.video->bitDepth.reset();
    media.video->colorRange.reset();
    media.video->colorSpace.reset();
    EXPECT_EQ(line(media, {}, {}),
              u"spot.mov,mov,prores,1920,1080,29.970,30.03"_s + QString(31, u','));
}

TEST(MeasurementTable, AnAbsentRecordEmptiesItsColumnsOnly)
{
    const QString whole = line(measuredFilm(), 1, 1);
    const auto emptied = [&](const std::function<void(SignalInfo&)>& remove) {
        MediaInfo media = measuredFilm();
        remove(*media.signal);
        std::vector<std::string> names;
        auto without = Csv::byName(line(media, 1, 1));
        for (const auto& [name, value] : Csv::byName(whole)) {
            if (without[name] == value)
                continue;
            EXPECT_EQ(without[name], "") << name;
            names.push_back(name);
        }
        return names;
    };
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.levels.reset(); }),
                ElementsAre("matrix_assumed", "reject_rgb_sec", "reject_worst_frac", "reject_y_sec",
                            "strict_sec", "y_max_pct", "y_min_pct"));
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.cadence.reset(); }),
                ElementsAre("dup_count", "dup_period", "flash_count", "flash_max_ratio",
                            "interior_black_runs", "repeated_field_ratio"));
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.phase.reset(); }),
                ElementsAre("dual_mono", "phase_mean", "phase_min_window", "phase_negative_sec"));
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.channelLevels.reset(); }),
                ElementsAre("audio_bits_in_use", "ch1_rms_db", "ch2_rms_db", "dead_channels"));
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.detail.reset(); }),
                ElementsAre("luma_bits_in_use", "psnr_half_db", "psnr_quarter_db"));
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.integratedLKFS.reset(); }),
                ElementsAre("loudness_lkfs"));
    EXPECT_THAT(emptied([](SignalInfo& signal) { signal.truePeakDb.reset(); }),
                ElementsAre("true_peak_dbtp"));
}

TEST(MeasurementTable, NamesAreGuardedAgainstFormulasAndQuotedAsInTheTableOfMarkers)
{
    for (const auto& [name, field] :
         std::vector<std::pair<std::string, std::string>>{{"=SUM(A1)", "'=SUM(A1)"},
                                                          {"+1.wav", "'+1.wav"},
                                                          {"-1.wav", "'-1.wav"},
                                                          {"@x.wav", "'@x.wav"},
                                                          {"=a,b", "\"'=a,b\""},
                                                          {"a,b.wav", "\"a,b.wav\""},
                                                          {"\"so\".wav", "\"\"\"so\"\".wav\""},
                                                          {"it's.wav", "\"it's.wav\""},
                                                          {"a=b.wav", "a=b.wav"}}) {
        MediaInfo media = sound();
        media.url = FileUrl::fromPath("/spots/" + name);
        EXPECT_EQ(line(media, {}, {}).toStdString(),
                  field + ",wav,,,,,12.35" + std::string(31, ','));
    }
}

TEST(MeasurementTable, ALineFeedInANameBreaksNoRow)
{
    for (const char* const name : {"a\nb.wav", "a\r\nb.wav", "a\tb.wav", "\na b.wav\r"}) {
        MediaInfo media = sound();
        media.url = FileUrl::fromPath(std::string("/spots/") + name);
        EXPECT_EQ(table(media)["file"], "a b.wav");
        EXPECT_FALSE(line(media, {}, {}).contains(u'\n'));
    }
}

TEST(MeasurementTable, ANumberBelowZeroIsNoFormula)
{
    EXPECT_EQ(table(measuredFilm())["y_min_pct"], "-1.3");
    EXPECT_EQ(table(measuredFilm())["loudness_lkfs"], "-23.1");
}

TEST(MeasurementTable, BlockAndBlurStandAloneAsWell)
{
    EXPECT_THAT(Csv::filled(line(sound(), 1.0006, {})),
                ElementsAre("file", "container", "seconds", "block_mean"));
    EXPECT_EQ(Csv::byName(line(sound(), 1.0006, {}))["block_mean"], "1.001");
    EXPECT_EQ(Csv::byName(line(sound(), {}, 0.0))["blur_mean"], "0.000");
}

TEST(MeasurementTable, NothingFoundIsZeroAndNotEmpty)
{
    MediaInfo media = film();
    media.signal = SignalInfo();
    media.signal->levels = PictureLevels();
    media.signal->cadence = FrameCadence();
    media.signal->phase = StereoPhase();
    const auto fields = table(media);
    for (const auto& [name, value] :
         std::map<std::string, std::string>{{"matrix_assumed", "0"},
                                            {"y_min_pct", "0.0"},
                                            {"reject_y_sec", "0.00"},
                                            {"reject_rgb_sec", "0.00"},
                                            {"reject_worst_frac", "0.0000"},
                                            {"strict_sec", "0.00"},
                                            {"dup_count", "0"},
                                            {"dup_period", ""},
                                            {"repeated_field_ratio", "0.000"},
                                            {"flash_count", "0"},
                                            {"flash_max_ratio", ""},
                                            {"interior_black_runs", "0"},
                                            {"phase_mean", "0.000"},
                                            {"phase_negative_sec", "0.00"},
                                            {"dual_mono", "0"}})
        EXPECT_EQ(fields.at(name), value) << name;
}

TEST(MeasurementTable, TheWorstOfBothListsOfRejectsCounts)
{
    MediaInfo media = measuredFilm();
    media.signal->levels->yRejectRuns[0].worstFraction = 0.5;
    EXPECT_EQ(table(media)["reject_worst_frac"], "0.5000");
    media.signal->levels->strictRuns[0].worstFraction = 1;
    EXPECT_EQ(table(media)["reject_worst_frac"], "0.5000");
}

TEST(MeasurementTable, RepeatedFieldsAreAShareOfAll)
{
    MediaInfo media = measuredFilm();
    FrameCadence& seen = *media.signal->cadence;
    seen.repeatedFieldsNeither = 0;
    EXPECT_EQ(table(media)["repeated_field_ratio"], "1.000");
    seen.repeatedFieldsTop = seen.repeatedFieldsBottom = 0;
    EXPECT_EQ(table(media)["repeated_field_ratio"], "0.000");
    seen.repeatedFieldsNeither = 1;
    EXPECT_EQ(table(media)["repeated_field_ratio"], "0.000");
}

TEST(MeasurementTable, DualMonoIsAFlag)
{
    MediaInfo media = measuredFilm();
    EXPECT_EQ(table(media)["dual_mono"], "0");
    media.signal->phase->dualMono = true;
    EXPECT_EQ(table(media)["dual_mono"], "1");
}

TEST(MeasurementTable, OneChannelHasNoSecond)
{
    MediaInfo media = measuredFilm();
    media.signal->channelLevels = {{{-18.25, -3.0, {}}}};
    const auto fields = table(media);
    EXPECT_EQ(fields.at("ch1_rms_db"), "-18.3");
    EXPECT_EQ(fields.at("ch2_rms_db"), "");
    EXPECT_EQ(fields.at("dead_channels"), "");
    EXPECT_EQ(fields.at("audio_bits_in_use"), "");
}

TEST(MeasurementTable, DeadChannelsCountFromZero)
{
    MediaInfo media = measuredFilm();
    media.signal->channelLevels = {{{-99, {}, {}}, {-20, {}, {}}, {-70, {}, {}}}};
    EXPECT_EQ(table(media)["dead_channels"], "0 2");
}

TEST(MeasurementTable, ANameWithACommaIsQuoted)
{
    MediaInfo media = sound();
    media.url = FileUrl::fromPath("/spots/one, two.wav");
    EXPECT_THAT(line(media, {}, {}).toStdString(), StartsWith("\"one, two.wav\",wav,,"));
    EXPECT_EQ(table(media)["file"], "one, two.wav");
}

TEST(MeasurementTable, QuotesInANameAreDoubled)
{
    MediaInfo media = sound();
    media.url = FileUrl::fromPath("/spots/the \"big\" one.wav");
    EXPECT_THAT(line(media, {}, {}).toStdString(), StartsWith("\"the \"\"big\"\" one.wav\",wav,,"));
    media.url = FileUrl::fromPath("/spots/\",\".wav");
    EXPECT_THAT(line(media, {}, {}).toStdString(), StartsWith("\"\"\",\"\".wav\",wav,,"));
}

TEST(MeasurementTable, APlainNameIsNotQuoted)
{
    MediaInfo media = sound();
    media.url = FileUrl::fromPath("/a,b/its = a; plain name.wav");
    EXPECT_THAT(line(media, {}, {}).toStdString(), StartsWith("its = a; plain name.wav,wav,,"));
}

} // namespace
} // namespace vantroque
