#include "Signal/SignalAnalyzer.h"

#include "Probe/Probed.h"
#include "Signal/CleanRun.h"
#include "Signal/FailingCalls.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

#include <csignal>
#include <mutex>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
namespace fs = std::filesystem;
using Outcome = Result<SignalInfo, FFToolError>;
using Stage = AnalysisProgress::Stage;

constexpr int frameBytes = 192 * 108 * 3;

/// Four seconds of picture without sound.
MediaInfo film()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/films/film.mov");
    media.durationSeconds = 4;
    media.video = VideoStreamInfo{};
    media.video->width = 64;
    media.video->height = 64;
    media.video->pixFmt = u"yuv420p"_s;
    media.video->nominalFrameRate = 25;
    return media;
}

/// A second of stereo without picture.
MediaInfo sound()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/sounds/sound.m4a");
    media.durationSeconds = 1;
    media.audio = AudioStreamInfo{};
    media.audio->codec = u"aac"_s;
    media.audio->sampleRate = 48'000;
    media.audio->channels = 2;
    return media;
}

/// Thirty seconds of picture, for tools that work in real time.
fs::path longClip()
{
    return Media::make(
        {"long.mkv", Clips::picture("64x64", "25", "30") + Clips::tone("30")
                         + std::vector<std::string>{"-c:v", "ffv1", "-c:a", "pcm_s16le"}});
}

/// How many tenths of a second of sound were measured.
std::size_t soundRead(const SignalInfo& info)
{
    return info.channelSeries ? info.channelSeries->rms.at(0).size() : 0;
}

class SignalPass : public testing::Test {
protected:
    const TestFolder m_folder;
    const FakeTools m_tools;
    const CleanRun m_cleanRun;

    /// An ffmpeg that writes so much, says these lines and ends with this status.
    void ffmpegWrites(int dumpBytes, const QByteArray& log, int status) const
    {
        m_tools.put("ffmpeg", "head -c " + QByteArray::number(dumpBytes)
                                  + " /dev/zero\ncat >&2 <<'END'\n" + log + "\nEND\nexit "
                                  + QByteArray::number(status));
    }

    static Outcome pass(const MediaInfo& media, const SignalAnalyzer::Options& options = {},
                        AnalysisProgress* progress = nullptr)
    {
        return SignalAnalyzer::analyze(media.url, media, options, progress);
    }
    static Outcome pass(const fs::path& file, const SignalAnalyzer::Options& options = {},
                        AnalysisProgress* progress = nullptr)
    {
        return pass(probed(file), options, progress);
    }
    static SignalInfo value(const Outcome& outcome)
    {
        if (!outcome)
            throw std::runtime_error(outcome.error().description().toStdString());
        return *outcome;
    }
};

// Whether a run counts.

const QByteArray filterLines =
    "Stream mapping:\n"
    "[Parsed_cropdetect_0 @ 0x1] x1:0 x2:63 y1:8 y2:55 w:64 h:48 x:0 y:8 "
    "pts:1 t:0.04 crop=64:48:0:8";

const QByteArray window = "[Parsed_ametadata_3 @ 0x1] lavfi.astats.1.RMS_level=-26\n";
const QByteArray summary = "[Parsed_ebur128_4 @ 0x1] Summary:\n\n  Integrated loudness:\n"
                           "    I:         -23.5 LUFS\n    Threshold: -33.5 LUFS";

TEST_F(SignalPass, AFailedRunWithWholeFramesAndFilterLinesIsMeasured)
{
    ffmpegWrites(100 * frameBytes, filterLines, 1);
    const SignalInfo info = value(pass(film()));
    EXPECT_EQ(info.activePicture, (CropRect{64, 48, 0, 8}));
    ASSERT_TRUE(info.levels);
    EXPECT_DOUBLE_EQ(info.levels->sampleRate, 25.0 / 6);
}

TEST_F(SignalPass, AFailedRunWithWholeFramesAndNoFilterLineFails)
{
    ffmpegWrites(100 * frameBytes, "Conversion failed!", 1);
    EXPECT_FALSE(pass(film()));
}

TEST_F(SignalPass, ASuccessfulRunThatEndsInTheMiddleOfAFrameFails)
{
    ffmpegWrites(3 * frameBytes + 1, filterLines, 0);
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, 0);
}

TEST_F(SignalPass, ASuccessfulRunThatWritesNoFrameFails)
{
    ffmpegWrites(0, filterLines + '\n' + summary, 0);
    EXPECT_FALSE(pass(film()));
}

TEST_F(SignalPass, SoundAloneWithItsLoudnessIsMeasured)
{
    for (const int status : {0, 1}) {
        ffmpegWrites(0, "Stream mapping:\n" + window + summary, status);
        EXPECT_EQ(value(pass(sound())).integratedLKFS, -23.5) << status;
    }
}

TEST_F(SignalPass, SoundAloneWithoutLoudnessFails)
{
    ffmpegWrites(0, "Stream mapping:\n[Parsed_astats_2 @ 0x1] Channel: 1", 0);
    EXPECT_FALSE(pass(sound()));
}

TEST_F(SignalPass, LoudnessAheadOfTheDecodeIsNone)
{
    ffmpegWrites(0, summary + "\nStream mapping:\n[Parsed_astats_2 @ 0x1] Channel: 1", 0);
    EXPECT_FALSE(pass(sound()));
}

TEST_F(SignalPass, TheErrorCarriesToolStatusAndLog)
{
    ffmpegWrites(0, "film.mov: Caf\xE9 is no codec", 69);
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::failed);
    EXPECT_EQ(outcome.error().tool, u"ffmpeg"_s);
    EXPECT_EQ(outcome.error().status, 69);
    EXPECT_EQ(outcome.error().stderr, u"film.mov: Caf\uFFFD is no codec\n"_s);
}

TEST_F(SignalPass, AFileWithNeitherPictureNorSoundFails)
{
    const auto file = Media::make("text.mkv", {"subtitles"}, [](const fs::path& target) {
        const TestFolder folder;
        const auto text = folder.write("text.srt", "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
        Media::ffmpeg({"-i", text.native(), target.native()});
    });
    const auto outcome = pass(file);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::failed);
}

TEST_F(SignalPass, TheNameOfAFileWithNothingToMeasureDoesNotMakeItMeasured)
{
    const auto file = m_folder.write("Parsed_.srt", "1\n00:00:00,000 --> 00:00:01,000\nHello\n");
    const auto outcome = pass(file);
    EXPECT_FALSE(outcome);
}

// The tool itself.

TEST_F(SignalPass, AMissingToolFailsAheadOfEverything)
{
    if (fs::exists("/usr/local/bin/ffmpeg") || fs::exists("/opt/homebrew/bin/ffmpeg"))
        GTEST_SKIP() << "ffmpeg is where it is always found";
    const ScopedVariable path("PATH", m_folder.path());
    AnalysisProgress progress;
    const auto outcome = pass(film(), {}, &progress);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::notFound);
    EXPECT_EQ(outcome.error().tool, u"ffmpeg"_s);
    EXPECT_EQ(progress.snapshot().stage, Stage::queued);
}

TEST_F(SignalPass, AToolThatCannotBeStartedFailsInTheSystemsWords)
{
    // Without an interpreter of that name there is nothing to start.
    m_folder.writeScript("ffmpeg", "#!/nowhere/sh\n");
    const ScopedVariable tools("VANTROQUE_FFMPEG_DIR", m_folder.path());
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::launchFailed);
    EXPECT_EQ(outcome.error().status, ENOENT);
}

TEST_F(SignalPass, AToolKilledBetweenFramesFailsSinceTheRestIsMissing)
{
    m_tools.put("ffmpeg", "head -c " + QByteArray::number(5 * frameBytes) + " /dev/zero\necho '"
                              + filterLines + "' >&2\nkill -9 $$");
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, 128 + SIGKILL);
}

TEST_F(SignalPass, AToolThatTakesTooLongIsStopped)
{
    m_tools.put("ffmpeg", "exec sleep 60");
    const auto outcome = pass(film(), {.timeout = 0.2});
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::timedOut);
    EXPECT_EQ(outcome.error().seconds, 0.2);
}

TEST_F(SignalPass, AToolKilledInsideAFrameFailsWithItsSignal)
{
    m_tools.put("ffmpeg", "head -c " + QByteArray::number(5 * frameBytes - 7) + " /dev/zero\necho '"
                              + filterLines + "' >&2\nkill -9 $$");
    const auto outcome = pass(film());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().status, 128 + SIGKILL);
}

/// Ends the tool, whose process id is in the file, once the decode has shown that it runs.
class KilledMidway : public SignalPass, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(By, KilledMidway, testing::Values(SIGKILL, SIGTERM, SIGSEGV));

TEST_P(KilledMidway, ADecodeEndsAtOnce)
{
    const fs::path list = m_folder / "pid";
    const QByteArray name = QByteArray::fromStdString(list.native());
    m_tools.put("ffmpeg", "echo $$ >'" + name + ".new'; mv '" + name + ".new' '" + name
                              + "'\nexec ffmpeg -re \"$@\"");
    const MediaInfo media = probed(longClip());
    std::once_flag once;
    AnalysisProgress progress([&](const AnalysisProgress::Snapshot& snapshot) {
        if (snapshot.mediaSeconds > 0)
            std::call_once(once, [&] {
                const pid_t tool = processesListedIn(list).at(0);
                ASSERT_GT(tool, 0);
                ::kill(tool, GetParam());
            });
    });
    const auto outcome = pass(media, {.previewWidth = 64}, &progress);
    ASSERT_FALSE(outcome) << "the rest of the film is missing";
    // ffmpeg ends in order when it is asked to.
    EXPECT_EQ(outcome.error().status, GetParam() == SIGTERM ? 255 : 128 + GetParam());
    EXPECT_FALSE(isRunning(processesListedIn(list).at(0)));
}

TEST_F(SignalPass, PicturesWithoutALumaPlaneAreDecodedOnceMoreWithoutTheirBits)
{
    const QByteArray log = QByteArray::fromStdString((m_folder / "log").native());
    m_tools.put("ffmpeg",
                "printf '%s ' \"$@\" >>'" + log + "'; echo >>'" + log
                    + "'\ncase \"$*\" in *bitsout*)\n"
                      "echo 'could not choose their formats: Parsed_extractplanes_7' >&2; exit 1\n"
                      "esac\nhead -c "
                    + QByteArray::number(frameBytes) + " /dev/zero\necho '" + filterLines
                    + "' >&2");
    MediaInfo media = film();
    media.video->bitDepth = 10;
    EXPECT_EQ(value(pass(media)).activePicture, (CropRect{64, 48, 0, 8}));
    const auto calls = contents(m_folder / "log").split('\n');
    ASSERT_EQ(calls.size(), 5) << "two of the decode, two of the extra look, and the end";
    EXPECT_TRUE(calls[0].contains("[bitsout]"));
    EXPECT_FALSE(calls[1].contains("[bitsout]"));
}

TEST_F(SignalPass, AnotherFailureIsNotTriedAgain)
{
    m_tools.put("ffmpeg", "echo call >>'" + QByteArray::fromStdString((m_folder / "log").native())
                              + "'; exit 1");
    MediaInfo media = film();
    media.video->bitDepth = 10;
    EXPECT_FALSE(pass(media));
    EXPECT_EQ(contents(m_folder / "log"), "call\n");
}

// The place for side files.

TEST_F(SignalPass, WithoutAFifoTheDecodeRunsWithoutPreview)
{
    AnalysisProgress progress;
    whileFailing(makingFifos, [&] {
        const SignalInfo info = value(pass(Clips::plain(), {.previewWidth = 960}, &progress));
        EXPECT_EQ(info.cadence->frameCountSeen, 25);
    });
    EXPECT_EQ(progress.snapshot().preview, nullptr);
    EXPECT_THAT(progress.snapshot().frames, SizeIs(5));
}

TEST_F(SignalPass, WithoutAScratchFolderWhatNeedsNoneIsMeasured)
{
    const MediaInfo media = probed(Clips::tenBit());
    AnalysisProgress progress;
    whileFailing(makingFolders, [&] {
        const SignalInfo info =
            value(pass(media, {.includeDetail = true, .previewWidth = 960}, &progress));
        EXPECT_EQ(info.cadence->frameCountSeen, 25);
        EXPECT_TRUE(info.levels);
        EXPECT_EQ(info.detail->samplesMeasured, 0);
    });
    EXPECT_EQ(progress.snapshot().preview, nullptr);
}

TEST_F(SignalPass, AToolThatNeverOpensThePreviewHoldsNothingUp)
{
    ffmpegWrites(frameBytes, filterLines, 0);
    AnalysisProgress progress;
    EXPECT_TRUE(pass(film(), {.previewWidth = 960}, &progress));
    EXPECT_EQ(progress.snapshot().preview, nullptr);
}

// What is shown meanwhile.

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
    EXPECT_GT(last.fraction, 0.1);
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

// What is asked for beside the measurements.

/// Pixels, from the header of a PNG file.
int widthOfPng(const fs::path& file)
{
    return contents(file).mid(16, 4).toHex().toInt(nullptr, 16);
}

TEST_F(SignalPass, WritesTheFramesForTextIntoTheirFolder)
{
    const fs::path folder = m_folder.path() / "not" / "yet" / "there";
    SignalAnalyzer::TextFrameRequest request;
    request.directory = folder;
    request.maxWidth = 160;
    value(pass(Clips::plain(), {.textFrames = request}));
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().native());
    EXPECT_THAT(names, testing::UnorderedElementsAre("00001.png", "00002.png", "00003.png"))
        << "every twelfth of 25";
    EXPECT_EQ(widthOfPng(request.path(3)), 160);
}

TEST_F(SignalPass, FramesForTextAreNeverEnlarged)
{
    SignalAnalyzer::TextFrameRequest request;
    request.directory = m_folder.path() / "frames";
    value(pass(Clips::plain(), {.textFrames = request}));
    EXPECT_EQ(widthOfPng(request.path(1)), 320);
}

TEST_F(SignalPass, AFilmWhoseTextFramesCannotBeWrittenIsNotPassedOffAsMeasured)
{
    SignalAnalyzer::TextFrameRequest request;
    request.directory = m_folder.write("file", "") / "frames";
    const auto outcome = pass(longClip(), {.textFrames = request});
    if (outcome)
        EXPECT_EQ(soundRead(*outcome), 300U);
    else
        EXPECT_EQ(outcome.error().kind, FFToolError::Kind::failed);
}

TEST_F(SignalPass, MeasuresTheDetailThatIsAskedFor)
{
    const SignalInfo info = value(pass(Clips::plain(), {.includeDetail = true}));
    ASSERT_TRUE(info.detail->halfResPsnrDb);
    ASSERT_TRUE(info.detail->quarterResPsnrDb);
    EXPECT_EQ(info.detail->samplesMeasured, 3) << "every twelfth of 25";
    EXPECT_GT(*info.detail->halfResPsnrDb, *info.detail->quarterResPsnrDb);
    EXPECT_THAT(info.detail->segments, Not(IsEmpty()));
}

TEST_F(SignalPass, OtherwiseMeasuresNoDetail)
{
    const SignalInfo info = value(pass(Clips::plain()));
    EXPECT_EQ(info.detail, DetailEstimate{});
}

TEST_F(SignalPass, LooksPastACoverThatStandsAheadOfTheFilm)
{
    const fs::path clip = Clips::plain();
    EXPECT_EQ(value(pass(Clips::coverAhead(clip))), value(pass(clip)));
}

TEST_F(SignalPass, SoundAloneIsMeasured)
{
    const SignalInfo info = value(pass(Clips::wav()));
    EXPECT_NEAR(*info.integratedLKFS, -23, 0.2) << "mono at -20 dBFS on two channels";
    EXPECT_THAT(*info.channelLevels, SizeIs(2));
    EXPECT_EQ(info.levels, std::nullopt);
    EXPECT_EQ(info.cadence, std::nullopt);
}

TEST_F(SignalPass, PictureAloneIsMeasured)
{
    const SignalInfo info = value(pass(Clips::transportStream()));
    EXPECT_EQ(info.cadence->frameCountSeen, 25);
    EXPECT_EQ(info.integratedLKFS, std::nullopt);
    EXPECT_EQ(info.audioIslands, std::nullopt);
    EXPECT_EQ(info.channelLevels, std::nullopt);
}

} // namespace
} // namespace vantroque
