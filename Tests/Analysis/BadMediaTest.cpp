#include "Analysis/Analyzer.h"
#include "Base/Json.h"
#include "Check/Builders.h"
#include "Signal/CleanRun.h"
#include "Signal/FailingCalls.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

#include <QRegularExpression>

#include <bit>
#include <cmath>
#include <csignal>
#include <limits>
#include <mutex>
#include <stdexcept>

// Damaged and odd files on the whole road: each ends soon with what could be measured or with the
// tool's words, its figures are sane, and nothing is left behind.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::AllOf;
using testing::AnyOf;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;
using testing::SizeIs;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;
using Analyzer::Analysis;

/// A profile that asks for every measurement.
Profile curious()
{
    Profile profile = bareProfile();
    profile.loudness = LoudnessRule{};
    profile.loudness->targetLKFS = -23;
    profile.loudness->toleranceLU = 1;
    profile.content = ContentRule{};
    profile.content->slate = SlatePolicy::optional;
    profile.content->slateSeconds = 2;
    profile.content->slateBlackSeconds = 1;
    profile.content->letterboxForbidden = true;
    profile.content->headTailBlackForbidden = true;
    profile.video = VideoRule{};
    profile.video->levels = LevelsRule{};
    profile.frameRate = FrameRateRule{};
    profile.frameRate->duplicateFramesForbidden = true;
    profile.frameRate->telecineForbidden = true;
    return profile;
}

void expectAllWithin(const QJsonValue& value, double limit, const std::string& path)
{
    if (value.isDouble()) {
        EXPECT_LE(std::abs(value.toDouble()), limit) << path;
    }
    for (const QJsonValue& each : value.toArray())
        expectAllWithin(each, limit, path + "[]");
    const QJsonObject object = value.toObject();
    for (auto each = object.begin(); each != object.end(); ++each)
        expectAllWithin(*each, limit, path + '.' + each.key().toStdString());
}

void expectOrdered(const std::optional<std::vector<TimeSpan>>& spans)
{
    for (const TimeSpan& span : spans.value_or(std::vector<TimeSpan>())) {
        EXPECT_GE(span.start, 0);
        EXPECT_LE(span.start, span.end);
    }
}

void expectSane(const SignalInfo& signal)
{
    constexpr double slack = 1e-6;
    constexpr double loudestFloat = 771; // 20 log10 of the largest number of single precision
    for (const auto& decibels : {signal.integratedLKFS, signal.truePeakDb})
        EXPECT_THAT(decibels.value_or(0), AllOf(Ge(-99.0), Le(loudestFloat)));
    EXPECT_GE(signal.loudnessRangeLU.value_or(0), 0);
    EXPECT_GE(signal.longestSilenceSeconds.value_or(0), 0);
    EXPECT_GE(signal.headSilenceSeconds.value_or(0), 0);
    EXPECT_THAT(signal.interlacedRatio.value_or(0), AllOf(Ge(0.0), Le(1.0)));
    expectOrdered(signal.blackRuns);
    expectOrdered(signal.audioIslands);
    if (const auto& levels = signal.levels) {
        EXPECT_GE(levels->yMinPercent, -16 / 2.19 - slack);
        EXPECT_LE(levels->yMaxPercent, 239 / 2.19 + slack);
        EXPECT_LE(levels->yMinPercent, levels->yMaxPercent);
    }
    if (const auto& phase = signal.phase) {
        EXPECT_THAT(phase->minWindowCorrelation, AllOf(Ge(-1.0), Le(phase->meanCorrelation)));
    }
}

/// What is stored and shown holds no infinity, and no figure is beyond all reason.
void expectSane(const Analysis& analysis)
{
    if (analysis.media.signal)
        expectSane(*analysis.media.signal);
    const auto media = Json::write(analysis.media);
    const auto report = Json::write(analysis.report);
    ASSERT_TRUE(media) << media.error().description.toStdString();
    ASSERT_TRUE(report) << report.error().description.toStdString();
    constexpr double beyondReason = 1e13;
    expectAllWithin(*Json::parse(*media), beyondReason, "media");
    expectAllWithin(*Json::parse(*report), beyondReason, "report");
    static const QRegularExpression noNumber(
        uR"((?<![A-Za-z])-?(nan|inf|NaN|Infinity)(?![A-Za-z]))"_s);
    EXPECT_FALSE(QString::fromUtf8(*report).contains(noNumber)) << report->toStdString();
}

class BadMedia : public testing::Test {
protected:
    const TestFolder m_folder;
    const FakeTools m_tools;
    const CleanRun m_cleanRun;

    static Result<Analysis> analyzed(const fs::path& file,
                                     const Analyzer::Options& options = {.includeDetail = true})
    {
        const auto start = std::chrono::steady_clock::now();
        AnalysisProgress progress({}, {.wantsPreview = true});
        auto analysis = Analyzer::analyze(FileUrl::fromPath(file), {curious()}, options, &progress);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
        if (analysis)
            expectSane(*analysis);
        else
            EXPECT_FALSE(analysis.error().description.isEmpty());
        return analysis;
    }
    static MediaInfo mediaOf(const fs::path& file)
    {
        auto analysis = analyzed(file);
        if (!analysis)
            throw std::runtime_error(analysis.error().description.toStdString());
        return analysis->media;
    }
    static SignalInfo signalOf(const fs::path& file) { return mediaOf(file).signal.value(); }
    static std::string problemOf(const fs::path& file)
    {
        const auto analysis = analyzed(file);
        return analysis ? "none" : analysis.error().description.toStdString();
    }
};

/// In the words of a tool, or since nothing is left of the header.
testing::Matcher<std::string> isRefused()
{
    return AnyOf(HasSubstr(" exited with status "), "There is no picture and no sound in it.");
}

/// How many windows of sound were read, ten a second at 48 kHz.
std::size_t soundRead(const SignalInfo& signal)
{
    return signal.channelSeries ? signal.channelSeries->rms.at(0).size() : 0;
}

// Damage.

fs::path sound(const std::string& extension)
{
    const bool isLossless = extension == "mkv";
    return Media::make(
        {"sound-film." + extension,
         Clips::picture("320x180", "25", "4") + Clips::tone("4")
             + (isLossless ? Words{"-c:v", "ffv1", "-c:a", "pcm_s16le"}
                           : Words{"-c:v", "mpeg2video", "-g", "5", "-b:v", "2M", "-c:a", "mp2"})
             + (extension == "mp4" ? Words{"-movflags", "+faststart"} : Words{})});
}

class Damaged : public BadMedia, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(In, Damaged, testing::Values("mp4", "mkv", "ts", "mpg"));

TEST_P(Damaged, AFileCutInHalfIsMeasuredSoFar)
{
    const fs::path whole = sound(GetParam());
    const QByteArray bytes = contents(whole);
    const SignalInfo signal =
        signalOf(m_folder.write("cut." + std::string(GetParam()), bytes.left(bytes.size() / 2)));
    EXPECT_THAT(soundRead(signal), AllOf(Ge(10U), Le(30U))) << "of 40";
    EXPECT_NEAR(*signal.integratedLKFS, -23, 0.5);
    EXPECT_THAT(signal.levels->yMaxPercent, AllOf(Ge(80.0), Le(110.0)));
}

TEST_P(Damaged, AFileWithOnlyItsHeadIsMeasuredOrRefused)
{
    const QByteArray bytes = contents(sound(GetParam()));
    for (const qsizetype length : {100, 1'000, 4'000, 20'000}) {
        const auto analysis =
            analyzed(m_folder.write("head." + std::string(GetParam()), bytes.left(length)));
        if (analysis)
            EXPECT_LE(soundRead(*analysis->media.signal), 15U) << length;
        else
            EXPECT_THAT(analysis.error().description.toStdString(), isRefused()) << length;
    }
}

TEST_P(Damaged, AFileWithASpoiltByteInEveryThousandIsMeasured)
{
    QByteArray bytes = contents(sound(GetParam()));
    // The header is spared, so that there is something to measure.
    for (qsizetype i = 8'000; i < bytes.size(); i += 1'000)
        bytes[i] = static_cast<char>(~bytes[i]);
    const SignalInfo signal = signalOf(m_folder.write("spoilt." + std::string(GetParam()), bytes));
    EXPECT_THAT(soundRead(signal), AllOf(Ge(20U), Le(60U))) << "of 40";
    EXPECT_TRUE(signal.levels);
}

TEST_P(Damaged, AFileWithSpoiltBytesFromItsStartIsMeasuredOrRefused)
{
    for (const qsizetype first : {0, 37, 500, 777}) {
        QByteArray bytes = contents(sound(GetParam()));
        for (qsizetype i = first; i < bytes.size(); i += 1'000)
            bytes[i] = static_cast<char>(~bytes[i]);
        const std::string problem =
            problemOf(m_folder.write("spoilt." + std::string(GetParam()), bytes));
        if (problem != "none") {
            EXPECT_THAT(problem, isRefused()) << first;
        }
    }
}

// Wrong claims in the header.

void putNumber(QByteArray& bytes, qsizetype at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<char>(value >> (24 - 8 * i) & 0xFFU);
}

/// An MP4 file whose atoms of that type claim another duration, in their own units.
QByteArray claiming(QByteArray bytes, const char* type, std::uint32_t duration)
{
    const qsizetype offset = QByteArray(type) == "tkhd" ? 24 : 20;
    for (qsizetype at = bytes.indexOf(type); at >= 0; at = bytes.indexOf(type, at + 4))
        putNumber(bytes, at + offset, duration);
    return bytes;
}

class WrongDuration : public BadMedia, public testing::WithParamInterface<std::uint32_t> {};

INSTANTIATE_TEST_SUITE_P(Of, WrongDuration,
                         testing::Values(0U, 1U, 36'000'000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U,
                                         0xFFFFFFFFU));

TEST_P(WrongDuration, AFilmIsMeasuredAllTheSame)
{
    const QByteArray whole = contents(Clips::plain());
    const std::string problem = "with the duration in ";
    QByteArray everywhere = whole;
    for (const char* type : {"mvhd", "tkhd", "mdhd"}) {
        everywhere = claiming(everywhere, type, GetParam());
        const SignalInfo signal =
            signalOf(m_folder.write("claim.mp4", claiming(whole, type, GetParam())));
        EXPECT_NEAR(*signal.integratedLKFS, -23, 0.5) << problem << type;
        EXPECT_EQ(signal.activePicture, (CropRect{320, 180, 0, 0})) << problem << type;
    }
    const MediaInfo media = mediaOf(m_folder.write("claim.mp4", everywhere));
    EXPECT_EQ(media.video->frameCount, 25);
    EXPECT_EQ(media.signal->cadence->frameCountSeen, 25);
    EXPECT_NEAR(*media.signal->integratedLKFS, -23, 0.5);
    EXPECT_GE(media.durationSeconds, 0);
}

TEST_F(BadMedia, ADeepFilmOfTenHoursInTheHeaderKeepsItsBars)
{
    const fs::path clip = Media::make(
        {"bars.mp4", Words{"-f", "lavfi", "-i", "testsrc2=s=320x140:d=1:r=25,pad=320:180:0:20"}
                         + Clips::x264("yuv420p10le")});
    QByteArray bytes = contents(clip);
    for (const char* type : {"mvhd", "tkhd"})
        bytes = claiming(bytes, type, 36'000'000);
    EXPECT_EQ(signalOf(m_folder.write("claim.mp4", bytes)).activePicture,
              (CropRect{320, 140, 0, 20}));
}

// Sizes and rates.

fs::path lossless(const std::string& name, const std::string& size, const std::string& rate,
                  const std::string& frames, const std::string& format = "yuv420p")
{
    return Media::make(
        {name + ".mkv", Words{"-f", "lavfi", "-i", "testsrc2=s=" + size + ":r=" + rate, "-frames:v",
                              frames, "-c:v", "ffv1", "-pix_fmt", format}});
}

TEST_F(BadMedia, APictureOfOnePixelIsMeasured)
{
    const fs::path clip = Media::make(
        {"pixel.mkv",
         {"-f", "lavfi", "-i", "color=white:s=2x2:r=25:d=1,crop=1:1:exact=1,format=yuv444p", "-c:v",
          "ffv1"}});
    const MediaInfo media = mediaOf(clip);
    EXPECT_EQ(media.video->width, 1);
    EXPECT_EQ(media.signal->cadence->frameCountSeen, 25);
    EXPECT_NEAR(media.signal->levels->yMaxPercent, 100, 1);
}

TEST_F(BadMedia, AnEnormousPictureIsMeasured)
{
    const fs::path clip = Media::make({"enormous.mkv",
                                       {"-f", "lavfi", "-i", "color=gray:s=8192x8192:r=25",
                                        "-frames:v", "2", "-c:v", "ffv1", "-pix_fmt", "yuv420p"}});
    const auto analysis = analyzed(clip, {});
    ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
    EXPECT_EQ(analysis->media.signal->cadence->frameCountSeen, 2);
    EXPECT_NEAR(analysis->media.signal->levels->yMaxPercent, (126 - 16) / 2.19, 1);
}

TEST_F(BadMedia, AVeryWideAndAVeryHighPictureAreMeasured)
{
    for (const char* size : {"4096x2", "2x4096"})
        EXPECT_EQ(signalOf(lossless(std::string("long-") + size, size, "25", "5"))
                      .cadence->frameCountSeen,
                  5)
            << size;
}

TEST_F(BadMedia, ASingleFrameIsMeasured)
{
    for (const char* format : {"yuv420p", "yuv420p10le"}) {
        const SignalInfo signal =
            signalOf(lossless(std::string("single-") + format, "320x180", "25", "1", format));
        EXPECT_EQ(signal.cadence->frameCountSeen, 1);
        EXPECT_EQ(signal.cadence->duplicateCount, 0);
        EXPECT_TRUE(signal.levels);
    }
}

TEST_F(BadMedia, AFrameEveryTwoSecondsIsMeasured)
{
    const MediaInfo media = mediaOf(lossless("slow", "320x180", "1/2", "10"));
    EXPECT_DOUBLE_EQ(media.video->nominalFrameRate, 0.5);
    EXPECT_EQ(media.signal->cadence->frameCountSeen, 10);
    EXPECT_DOUBLE_EQ(media.signal->levels->sampleRate, 0.5);
}

TEST_F(BadMedia, TwoHundredAndFortyFramesASecondAreMeasured)
{
    const MediaInfo media = mediaOf(lossless("fast", "320x180", "240", "240"));
    EXPECT_DOUBLE_EQ(media.video->nominalFrameRate, 240);
    EXPECT_EQ(media.signal->cadence->frameCountSeen, 240);
    EXPECT_DOUBLE_EQ(media.signal->levels->sampleRate, 4);
}

// Streams.

TEST_F(BadMedia, SoundWithoutPictureIsMeasured)
{
    const MediaInfo media = mediaOf(Clips::wav());
    EXPECT_FALSE(media.video);
    EXPECT_FALSE(media.signal->levels);
    EXPECT_NEAR(*media.signal->integratedLKFS, -23, 0.2);
}

TEST_F(BadMedia, PictureWithoutSoundIsMeasured)
{
    const MediaInfo media = mediaOf(Clips::transportStream());
    EXPECT_FALSE(media.audio);
    EXPECT_FALSE(media.signal->integratedLKFS);
    EXPECT_FALSE(media.signal->audioIslands);
    EXPECT_EQ(media.signal->cadence->frameCountSeen, 25);
}

fs::path ofTwoSizes(const std::string& extension)
{
    const auto part = [&](const char* size) {
        return Media::make({std::string("part-") + size + "." + extension,
                            Clips::picture(size, "25", "1")
                                + (extension == "ts" ? Words{"-c:v", "mpeg2video", "-b:v", "1M"}
                                                     : Clips::x264())});
    };
    const fs::path first = part("320x180");
    const fs::path second = part("192x144");
    return Media::make(
        "two-sizes." + extension, {first.native(), second.native()}, [&](const fs::path& target) {
            const TestFolder folder;
            fs::copy_file(folder.write("both", contents(first) + contents(second)), target);
        });
}

class TwoSizes : public BadMedia, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(In, TwoSizes, testing::Values("ts", "h264"));

TEST_P(TwoSizes, APictureThatChangesItsSizeIsMeasuredToTheEnd)
{
    for (const bool withDetail : {false, true}) {
        AnalysisProgress progress;
        const auto analysis =
            Analyzer::analyze(FileUrl::fromPath(ofTwoSizes(GetParam())), {curious()},
                              {.includeDetail = withDetail}, &progress);
        ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
        expectSane(*analysis);
        EXPECT_GE(progress.snapshot().frames.size(), 8U)
            << "four a second; with detail: " << withDetail;
    }
}

// Sound by hand.

QByteArray little(std::uint32_t value, int bytes)
{
    QByteArray text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> 8 * i & 0xFFU);
    return text;
}

/// A RIFF WAVE file of that format (1 for whole numbers, 3 for floats).
QByteArray wave(int format, std::uint32_t channels, std::uint32_t bytesEach, const QByteArray& data)
{
    const std::uint32_t rate = 48'000;
    const auto size = static_cast<std::uint32_t>(data.size());
    return "RIFF" + little(36 + size, 4) + "WAVEfmt " + little(16, 4)
           + little(static_cast<std::uint32_t>(format), 2) + little(channels, 2) + little(rate, 4)
           + little(rate * channels * bytesEach, 4) + little(channels * bytesEach, 2)
           + little(8 * bytesEach, 2) + "data" + little(size, 4) + data;
}

QByteArray floats(const std::function<float(int)>& sample, int count)
{
    QByteArray data;
    for (int i = 0; i < count; ++i)
        data += little(std::bit_cast<std::uint32_t>(sample(i)), 4);
    return data;
}

TEST_F(BadMedia, MoreChannelsThanAnybodyHasAreRefused)
{
    const auto file =
        m_folder.write("crowd.wav", wave(1, 1'000, 2, QByteArray(2'000 * 480, '\x10')));
    EXPECT_THAT(problemOf(file), HasSubstr(" exited with status "));
}

class ManyChannels : public BadMedia, public testing::WithParamInterface<std::uint32_t> {};

INSTANTIATE_TEST_SUITE_P(Of, ManyChannels, testing::Values(3U, 8U, 10U, 12U, 16U, 24U, 64U));

TEST_P(ManyChannels, SoundIsMeasuredOrRefusedAndNotTakenForSilence)
{
    const auto bytes = static_cast<qsizetype>(2 * GetParam() * 24'000);
    const auto file = m_folder.write("many.wav", wave(1, GetParam(), 2, QByteArray(bytes, '\x10')));
    const auto analysis = analyzed(file);
    if (!analysis) {
        EXPECT_THAT(analysis.error().description.toStdString(),
                    HasSubstr("ffmpeg exited with status 1: "));
        return;
    }
    const auto levels = analysis->media.signal->channelLevels.value_or(std::vector<ChannelLevel>());
    ASSERT_THAT(levels, SizeIs(GetParam()));
    EXPECT_NEAR(*levels.back().peakDb, 20 * std::log10(0x1010 / 32768.0), 0.1);
}

TEST_P(ManyChannels, AFilmsPictureIsMeasuredToTheEnd)
{
    const auto bytes = static_cast<qsizetype>(2 * GetParam() * 4 * 48'000);
    const auto sound =
        m_folder.write("many.wav", wave(1, GetParam(), 2, QByteArray(bytes, '\x10')));
    const fs::path film = m_folder / "many.mov";
    Media::ffmpeg(Clips::picture("64x64", "25", "4")
                  + Words{"-i", sound.native(), "-c:v", "mpeg4", "-c:a", "copy", film.native()});
    AnalysisProgress progress;
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(film), {curious()}, {}, &progress);
    ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
    EXPECT_EQ(analysis->media.audio->channels, GetParam());
    EXPECT_THAT(progress.snapshot().frames, SizeIs(17)) << "every sixth of 100";
    EXPECT_NE(analysis->media.signal->integratedLKFS, -70);
}

TEST_F(BadMedia, SoundWithoutASampleIsMeasuredOrRefused)
{
    const auto analysis = analyzed(m_folder.write("empty.wav", wave(1, 2, 2, {})));
    if (analysis)
        EXPECT_EQ(analysis->media.signal->integratedLKFS, std::nullopt);
    else
        EXPECT_THAT(analysis.error().description.toStdString(), HasSubstr(" exited with status "));
}

TEST_F(BadMedia, OneSampleIsMeasured)
{
    const SignalInfo signal =
        signalOf(m_folder.write("one.wav", wave(1, 2, 2, "\x01\x10\x01\x10")));
    EXPECT_THAT(*signal.channelLevels, SizeIs(2));
    EXPECT_NEAR(*signal.channelLevels->at(0).peakDb, 20 * std::log10(0x1001 / 32768.0), 0.1);
}

TEST_F(BadMedia, SamplesThatAreNoNumbersLeaveOnlyNumbers)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    for (const float odd : {notANumber, -notANumber, infinity, -infinity, 3e38F, 1e-45F}) {
        const auto sample = [&](int i) {
            return i % 1'000 == 7 ? odd : 0.1F * std::sin(static_cast<float>(i) * 0.05F);
        };
        const SignalInfo signal =
            signalOf(m_folder.write("odd.wav", wave(3, 2, 4, floats(sample, 96'000))));
        EXPECT_THAT(soundRead(signal), 10U) << odd;
    }
}

TEST_F(BadMedia, NothingButSamplesThatAreNoNumbersIsMeasured)
{
    const auto sample = [](int) { return std::numeric_limits<float>::quiet_NaN(); };
    EXPECT_EQ(soundRead(signalOf(m_folder.write("odd.wav", wave(3, 2, 4, floats(sample, 96'000))))),
              10U);
}

TEST_F(BadMedia, AFilmWithoutAFrameIsMeasuredOrRefused)
{
    for (const char* extension : {"mkv", "mov", "avi"}) {
        const fs::path clip =
            Media::make({std::string("no-frame.") + extension,
                         Clips::picture("64x64", "25", "1") + Clips::tone("1")
                             + Words{"-frames:v", "0", "-c:v", "mpeg4", "-c:a", "pcm_s16le"}});
        const auto analysis = analyzed(clip);
        if (analysis)
            EXPECT_FALSE(analysis->media.video) << extension;
        else
            EXPECT_THAT(
                analysis.error().description.toStdString(),
                AnyOf(HasSubstr(" exited with status "), "There is no picture and no sound in it."))
                << extension;
    }
}

TEST_F(BadMedia, AnMxfThatEndsInsideTheIndexOfItsFooterIsRefusedInWords)
{
    const fs::path whole =
        Media::make({"whole.mxf", Clips::picture("320x180", "25", "3") + Clips::tone("3")
                                      + Words{"-c:v", "mpeg2video", "-c:a", "pcm_s16le"}});
    const QByteArray bytes = contents(whole);
    EXPECT_THAT(
        problemOf(m_folder.write("cut.mxf", bytes.chopped(500))),
        StartsWith("Its header or footer cannot be read: the file was cut off, or is "
                   "damaged.\nffprobe exited with status 1: error reading header metadata\n"));
    for (const qsizetype lost : {200, 2'000}) {
        const auto analysis = analyzed(m_folder.write("opens.mxf", bytes.chopped(lost)));
        ASSERT_TRUE(analysis) << lost;
        EXPECT_GT(analysis->media.missingBytes.value_or(0), 0) << lost;
    }
}

TEST_F(BadMedia, AFileThatLacksBytesFailsAPlatformThatAsksForNoMeasurement)
{
    Profile size = bareProfile();
    size.file = FileRule{};
    size.file->maxBytes = 1'000'000'000;
    const auto verdict = [&](const fs::path& file) {
        return Analyzer::analyze(FileUrl::fromPath(file), {size})->report.summaryVerdict();
    };
    for (const std::string extension : {"mkv", "mp4", "mov"}) {
        const fs::path whole = Media::make(
            {"early." + extension, Clips::picture("320x180", "25", "4") + Clips::tone("4")
                                       + Words{"-movflags", "+faststart"}});
        const QByteArray bytes = contents(whole);
        EXPECT_EQ(verdict(whole), Verdict::pass) << extension;
        EXPECT_EQ(verdict(m_folder.write("cut." + extension, bytes.chopped(bytes.size() / 2))),
                  Verdict::fail)
            << extension;
    }
}

// Faults around the file.

/// Half a minute of 10-bit picture with sound.
fs::path deepFilm()
{
    return Media::make(
        {"deep.mkv", Clips::picture("64x64", "25", "30") + Clips::tone("30")
                         + Words{"-c:v", "ffv1", "-pix_fmt", "yuv420p10le", "-c:a", "pcm_s16le"}});
}

TEST_F(BadMedia, WhereFilesMayNotGrowAFilmIsMeasuredWholeOrRefused)
{
    m_tools.put("ffmpeg", "trap '' XFSZ; ulimit -f 0; exec ffmpeg \"$@\"");
    const auto analysis = analyzed(deepFilm());
    if (analysis)
        EXPECT_EQ(soundRead(*analysis->media.signal), 300U);
    else
        EXPECT_THAT(analysis.error().description.toStdString(),
                    StartsWith("A file would grow larger than is allowed here.\n"
                               "ffmpeg exited with status "));
}

TEST_F(BadMedia, WhereFilesMayNotGrowAFilmOfEightBitsLosesOnlyItsDetail)
{
    m_tools.put("ffmpeg", "trap '' XFSZ; ulimit -f 0; exec ffmpeg \"$@\"");
    const SignalInfo signal = signalOf(Clips::plain());
    EXPECT_THAT(soundRead(signal), Ge(10U));
    EXPECT_EQ(signal.detail->halfResPsnrDb, std::nullopt);
}

TEST_F(BadMedia, WithoutARoomForScratchFoldersAFilmIsMeasured)
{
    const fs::path film = deepFilm();
    whileFailing(makingFolders, [&] {
        const SignalInfo signal = signalOf(film);
        EXPECT_EQ(soundRead(signal), 300U);
        EXPECT_EQ(signal.cadence->frameCountSeen, 750);
    });
}

TEST_F(BadMedia, AKilledDecodeIsToldInItsWords)
{
    m_tools.put("ffmpeg", "echo 'about to die' >&2; kill -9 $$");
    EXPECT_EQ(problemOf(Clips::plain()), "ffmpeg exited with status 137: about to die\n");
}

TEST_F(BadMedia, AKilledProbeIsToldInItsWords)
{
    m_tools.put("ffprobe", "echo 'about to die' >&2; kill -9 $$");
    EXPECT_EQ(problemOf(Clips::plain()), "ffprobe exited with status 137: about to die\n");
}

TEST_F(BadMedia, AFileThatVanishesBehindTheProbeIsToldInTheToolsWords)
{
    const auto file = m_folder.write("brief.mp4", contents(Clips::plain()));
    m_tools.put("ffmpeg",
                "rm -f '" + QByteArray::fromStdString(file.native()) + "'; exec ffmpeg \"$@\"");
    EXPECT_THAT(problemOf(file), AllOf(StartsWith("ffmpeg exited with status 1: "),
                                       HasSubstr("brief.mp4: No such file or directory")));
}

} // namespace
} // namespace vantroque
