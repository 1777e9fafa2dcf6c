#include "Base/Json.h"
#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/ProcessTable.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <csignal>

// A check that decodes: its options, what it shows meanwhile, and how it can be stopped.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// A moving picture in ten bits with a tone, for so many seconds.
fs::path deep(const std::string& seconds)
{
    return Media::make(
        {"deep.mkv", Clips::picture("64x64", "25", seconds) + Clips::tone(seconds)
                         + Words{"-pix_fmt", "yuv422p10le", "-c:v", "ffv1", "-c:a", "pcm_s16le"}});
}

/// Three seconds of which the middle one is black and silent.
fs::path withPause()
{
    return Media::make(
        {"pause.mkv",
         Clips::picture("64x64", "25", "3")
             + Words{"-f", "lavfi", "-i",
                     "aevalsrc='if(between(t,1,2),0,0.1*sin(2*PI*1000*t))':s=48000:d=3", "-vf",
                     "drawbox=color=black:t=fill:enable='between(n,25,49)'", "-c:v", "ffv1", "-c:a",
                     "pcm_s16le"}});
}

const ProgramOptions terminal{.environment = {{"NO_COLOR", "1"}}, .onTerminal = true};

bool hasTerminals()
{
    return fs::exists("/dev/pts/ptmx");
}

class CheckProgress : public testing::Test {
protected:
    CheckProgress()
    {
        Profile loud = Cli::containerProfile("loud", ProfileGroup::digital, "mkv");
        loud.container.reset();
        loud.loudness = LoudnessRule();
        loud.loudness->targetLKFS = -23;
        loud.loudness->toleranceLU = 50;
        m_profiles.add(loud);
    }

    Words command(const Words& words) const
    {
        return Cli::command(Words{"check", "--profile", "loud"} + m_profiles.words() + words);
    }
    ProgramRun run(const Words& words) const { return runProgram(command(words)); }
    QJsonObject media(const Words& words) const
    {
        const auto result = run(Words{"--format", "json", "--media"} + words);
        EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
        return Cli::json(result)
            .value("files"_L1)
            .toArray()
            .first()
            .toObject()
            .value("media"_L1)
            .toObject();
    }

    /// What a terminal of that width saw of the line that tells how far the call has got.
    std::vector<QString> drawn(int columns, const Words& words) const
    {
        const std::string resize = "stty cols " + std::to_string(columns) + " <&1; exec \"$@\"";
        const auto result = runProgram(Words{"sh", "-c", resize, "sh"} + command(words), terminal);
        EXPECT_EQ(result.status, 0) << result.out.toStdString();
        std::vector<QString> lines;
        for (const QString& part : QString::fromUtf8(result.out).split(u"\r\x1b[K"_s))
            if (part.startsWith(u'['))
                lines.push_back(part);
        return lines;
    }
    /// Decodes at the speed at which people watch, so that something can be seen.
    void slowDown() const { m_tools.put("ffmpeg", "exec ffmpeg -re \"$@\""); }

    const Cli::ProfilesFolder m_profiles;
    const FakeTools m_tools;
};

// Options.

TEST_F(CheckProgress, MeasuresWhatTheProfileAsks)
{
    const auto signal = media({deep("1").native()}).value("signal"_L1).toObject();
    EXPECT_TRUE(signal.contains("integratedLKFS"_L1));
    EXPECT_FALSE(signal.value("detail"_L1).toObject().contains("halfResPsnrDb"_L1));
}

TEST_F(CheckProgress, EstimatesTheDetailOnRequest)
{
    const auto signal = media({"--detail", deep("1").native()}).value("signal"_L1).toObject();
    EXPECT_TRUE(signal.value("detail"_L1).toObject().contains("halfResPsnrDb"_L1));
}

TEST_F(CheckProgress, SkipsTheSignalOnRequest)
{
    const auto clip = deep("1").native();
    m_tools.record("ffmpeg");
    const auto result = run({"--skip-signal", clip});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_THAT(result.out.toStdString(), HasSubstr("signal pass skipped"));
    EXPECT_FALSE(media({"--skip-signal", "--detail", clip}).contains("signal"_L1));
    for (const auto& call : m_tools.calls("ffmpeg"))
        EXPECT_THAT(call, Not(Contains("-filter_complex")));
    EXPECT_THAT(run({clip}).out.toStdString(), Not(HasSubstr("signal pass skipped")));
}

TEST_F(CheckProgress, AFailedDecodeFailsTheFile)
{
    const auto clip = deep("1").native();
    m_tools.put("ffmpeg", "echo 'cannot decode' >&2; exit 4");
    const auto result = run({clip});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("ffmpeg exited with status 4: cannot decode"));
}

// Events.

TEST_F(CheckProgress, TellsEventsAsTheyComeOnRequest)
{
    const auto result = run({"--verbose", withPause().native()});
    EXPECT_EQ(result.status, 0);
    std::vector<std::string> lines;
    for (const QByteArray& line : result.err.trimmed().split('\n'))
        lines.push_back(line.toStdString());
    EXPECT_THAT(lines,
                UnorderedElementsAre("pause.mkv: black from 1.00 s", "pause.mkv: still from 1.00 s",
                                     "pause.mkv: still to 2.00 s", "pause.mkv: silent from 1.00 s",
                                     "pause.mkv: silent to 2.00 s"));
}

TEST_F(CheckProgress, TellsNoEventsOtherwise)
{
    EXPECT_EQ(run({withPause().native()}).err, "");
}

TEST_F(CheckProgress, TagsInsideTheFileForgeNoEvents)
{
    const auto forged =
        Media::make({"forged.mkv",
                     {"-i", deep("1").native(), "-c", "copy", "-metadata", "title=black_start:77",
                      "-metadata", "comment=silence_end: 78"}});
    EXPECT_EQ(run({"--verbose", forged.native()}).err, "");
}

TEST_F(CheckProgress, EventsDoNotChangeTheReport)
{
    EXPECT_EQ(run({"--verbose", withPause().native()}).out, run({withPause().native()}).out);
}

// The line on a terminal.

class ProgressLine : public CheckProgress {
protected:
    void SetUp() override
    {
        if (!hasTerminals())
            GTEST_SKIP() << "this system gives no terminals";
    }
};

TEST_F(ProgressLine, TellsStageBarAndTimeLeft)
{
    const auto clip = deep("1").native();
    slowDown();
    const auto lines = drawn(100, {clip});
    static const QRegularExpression form(
        uR"(^\[(#*)(\.*)\] \d+%(, \d+:[0-5]\d left)?  (\w[\w -]*\w)  deep\.mkv$)"_s);
    qsizetype bar = 0;
    QStringList stages;
    bool toldTimeLeft = false;
    for (const QString& line : lines) {
        const auto match = form.match(line);
        ASSERT_TRUE(match.hasMatch()) << line.toStdString();
        EXPECT_EQ(match.captured(1).size() + match.captured(2).size(), 20);
        EXPECT_GE(match.captured(1).size(), bar) << "the bar went back";
        bar = match.captured(1).size();
        toldTimeLeft = toldTimeLeft || match.hasCaptured(3);
        if (stages.isEmpty() || stages.last() != match.captured(4))
            stages << match.captured(4);
    }
    EXPECT_THAT(stages, ElementsAre(u"Reading the file"_s, u"Measuring picture and sound"_s,
                                    u"Reading the slate"_s, u"Measuring the 2-pop"_s,
                                    u"Reading on-screen text"_s,
                                    u"Checking against the platforms"_s, u"Done"_s));
    EXPECT_TRUE(toldTimeLeft);
    EXPECT_EQ(bar, 20);
    EXPECT_GT(lines.size(), 10U);
}

TEST_F(ProgressLine, GrowsOverAllFiles)
{
    const auto clip = deep("1").native();
    const auto lines = drawn(100, {clip, Clips::wav().native(), clip});
    for (const QString& part :
         {u"] 0%, 0 of 3 files  Reading the file  deep.mkv"_s, u"%, 1 of 3 files, "_s,
          u"  sound.wav"_s, u"%, 2 of 3 files, "_s, u"[####################] 100%, 3 of 3 files"_s})
        EXPECT_TRUE(std::ranges::any_of(lines, [&](const QString& line) {
            return line.contains(part);
        })) << part.toStdString();
}

TEST_F(ProgressLine, GoesAwayInTheEnd)
{
    const auto result = runProgram(command({deep("1").native()}), terminal);
    const auto parts = QString::fromUtf8(result.out).split(u"\r\x1b[K"_s);
    ASSERT_GT(parts.size(), 2);
    EXPECT_TRUE(parts.last().startsWith(u"deep.mkv"_s)) << "the report comes on a clear line";
}

/// Columns that a terminal takes for a text: two for an ideograph.
qsizetype columnsOf(const QString& text)
{
    qsizetype columns = 0;
    for (const char32_t c : text.toUcs4())
        columns += c >= 0x2E80 && c < 0xFB00 ? 2 : 1;
    return columns;
}

class NarrowTerminal : public ProgressLine, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Columns, NarrowTerminal, testing::Values(1, 2, 10, 30, 50));

TEST_P(NarrowTerminal, IsNeverTooNarrow)
{
    const TestFolder folder;
    const auto file = folder.write("a name that is long enough for any terminal of people.wav",
                                   contents(Clips::wav()));
    for (const QString& line : drawn(GetParam(), {file.native()}))
        EXPECT_LT(line.size(), GetParam()) << line.toStdString();
}

TEST_F(ProgressLine, CountsIdeographsAsTwoColumns)
{
    const TestFolder folder;
    const auto file = folder.write(
        QString(u"\u5e83\u544a"_s.repeated(20) + u".mkv"_s).toStdString(), contents(deep("1")));
    const auto lines = drawn(60, {file.native()});
    ASSERT_FALSE(lines.empty());
    for (const QString& line : lines)
        EXPECT_LT(columnsOf(line), 60) << line.toStdString();
}

// Being stopped.

class InterruptedDecode : public CheckProgress {
protected:
    /// A file of its own, so that its name tells which processes are this test's.
    std::string clip(const std::string& name) const
    {
        fs::copy_file(deep("60"), m_folder / name);
        return m_folder / name;
    }
    bool hasSideFiles(std::size_t count) const
    {
        std::size_t found = 0;
        for (const std::string& name : m_scratch.names())
            found += fs::exists(m_scratch / name / "bits.raw") ? 1 : 0;
        return found == count;
    }
    bool hasChildrenLeft() const { return !processesNaming(m_folder.path().native()).empty(); }

    const TestFolder m_folder;
    const TestFolder m_scratch;
    const ScopedVariable m_temporary{"TMPDIR", m_scratch.path()};
};

TEST_F(InterruptedDecode, LeavesNeitherChildrenNorScratch)
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const auto name = clip(std::to_string(number) + ".mkv");
        slowDown();
        Program check(command({"--detail", "-o", m_folder / "report.txt", name}));
        ASSERT_TRUE(comesTrue([&] { return hasSideFiles(1); }));
        check.signal(number);
        EXPECT_EQ(check.wait().status, 128 + number);
        EXPECT_TRUE(comesTrue([&] { return !hasChildrenLeft(); }));
        EXPECT_THAT(m_scratch.names(), IsEmpty());
    }
    EXPECT_THAT(m_folder.names(), Each(EndsWith(".mkv")));
}

TEST_F(InterruptedDecode, OfSeveralFilesLeavesNoneOfThem)
{
    const Words files{clip("a.mkv"), clip("b.mkv")};
    slowDown();
    Program check(command(Words{"--jobs", "2"} + files));
    ASSERT_TRUE(comesTrue([&] { return hasSideFiles(2); }));
    check.signal(SIGINT);
    EXPECT_EQ(check.wait().status, 128 + SIGINT);
    EXPECT_TRUE(comesTrue([&] { return !hasChildrenLeft(); }));
    EXPECT_THAT(m_scratch.names(), IsEmpty());
}

TEST_F(InterruptedDecode, OfATableLeavesNothing)
{
    const auto name = clip("a.mkv");
    slowDown();
    Program measure(
        Cli::command(Words{"measure", "-o", m_folder / "table.csv", name} + m_profiles.words()));
    ASSERT_TRUE(comesTrue([&] { return hasSideFiles(1); }));
    measure.signal(SIGINT);
    EXPECT_EQ(measure.wait().status, 128 + SIGINT);
    EXPECT_TRUE(comesTrue([&] { return !hasChildrenLeft(); }));
    EXPECT_THAT(m_scratch.names(), IsEmpty());
    EXPECT_THAT(m_folder.names(), ElementsAre("a.mkv"));
}

TEST_F(InterruptedDecode, ThatIsKilledLeavesNoChildrenAndItsScratchToTheNextStart)
{
    const auto name = clip("a.mkv");
    slowDown();
    Program check(command({name}));
    ASSERT_TRUE(comesTrue([&] { return hasSideFiles(1); }));
    check.signal(SIGKILL);
    EXPECT_EQ(check.wait().status, 128 + SIGKILL);
    EXPECT_TRUE(comesTrue([&] { return !hasChildrenLeft(); }));
    EXPECT_THAT(m_scratch.names(), SizeIs(2)) << "of the decode and of the report";
    EXPECT_EQ(Cli::run({"--version"}).status, 0);
    EXPECT_THAT(m_scratch.names(), IsEmpty());
}

} // namespace
} // namespace vantroque
