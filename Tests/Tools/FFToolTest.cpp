#include "Tools/FFTool.h"

#include "Base/FileDescriptor.h"
#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"
#include "Tools/ToolContext.h"
#include "Tools/Trouble.h"

#include <QList>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <thread>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Outcome = Result<FFTool::ToolOutput, FFToolError>;

Clock::duration timeOf(const std::function<void()>& work)
{
    const auto start = Clock::now();
    work();
    return Clock::now() - start;
}

std::string problemOf(const Outcome& outcome)
{
    return outcome ? "none" : outcome.error().description().toStdString();
}

FFTool::RunOptions limitedTo(double seconds)
{
    return {.timeout = seconds};
}

class FFToolRun : public testing::Test {
protected:
    /// Runs a shell script named "tool".
    Outcome run(const QByteArray& script, const std::vector<std::string>& arguments = {},
                const FFTool::RunOptions& options = {}) const
    {
        return FFTool::run(m_folder.writeScript("tool", "#!/bin/sh\n" + script + '\n'), arguments,
                           options);
    }
    Outcome run(const QByteArray& script, const FFTool::RunOptions& options) const
    {
        return run(script, {}, options);
    }

    const TestFolder m_folder;
    /// Here the tools are programs of all kinds, that look around and write where they like.
    const ScopedVariable m_cage{"VANTROQUE_CAGE", "off"};
};

FFToolError errorOf(FFToolError::Kind kind)
{
    FFToolError error;
    error.kind = kind;
    error.tool = u"ffmpeg"_s;
    return error;
}

TEST(FFToolError, EachKindHasItsWords)
{
    FFToolError failed = errorOf(FFToolError::Kind::failed);
    failed.status = 183;
    failed.words = u"bad file\n"_s;
    FFToolError timedOut = errorOf(FFToolError::Kind::timedOut);
    timedOut.seconds = 600;
    FFToolError launchFailed = errorOf(FFToolError::Kind::launchFailed);
    launchFailed.status = ENOENT;
    EXPECT_EQ(
        errorOf(FFToolError::Kind::notFound).description(),
        u"ffmpeg not found. Install ffmpeg (brew install ffmpeg) or bundle it with the app."_s);
    EXPECT_EQ(failed.description(), u"ffmpeg exited with status 183: bad file\n"_s);
    EXPECT_EQ(timedOut.description(),
              u"ffmpeg did not finish within 600s and was stopped. The file "
              "may be corrupt or extremely long."_s);
    EXPECT_EQ(launchFailed.description(),
              u"ffmpeg could not be started: No such file or directory"_s);
    EXPECT_EQ(Error(failed).description, failed.description());
}

TEST(FFToolError, ATimeLimitIsCutToWholeSeconds)
{
    FFToolError error = errorOf(FFToolError::Kind::timedOut);
    for (const auto& [seconds, text] : {std::pair(0.9, "0s"), {1.999, "1s"}, {1e6, "1000000s"}}) {
        error.seconds = seconds;
        EXPECT_THAT(error.description().toStdString(),
                    StartsWith(std::string("ffmpeg did not finish within ") + text + ' '));
    }
}

TEST(FFToolError, OnlyTheEndOfALongErrorIsShown)
{
    FFToolError error = errorOf(FFToolError::Kind::failed);
    error.status = 1;
    error.words = QString(9600, u'a') + QString(400, u'b');
    EXPECT_EQ(error.description(), u"ffmpeg exited with status 1: "_s + QString(400, u'b'));
    error.words = QString(400, u'c');
    EXPECT_EQ(error.description(), u"ffmpeg exited with status 1: "_s + QString(400, u'c'));
    const QString clapper = u"\U0001F3AC"_s;
    error.words = u'a' + clapper.repeated(400);
    EXPECT_EQ(error.description(), u"ffmpeg exited with status 1: "_s + clapper.repeated(400));
}

TEST_F(FFToolRun, BothOutputsAndTheStatusComeBack)
{
    const Outcome outcome = run("echo out; echo err >&2");
    ASSERT_TRUE(outcome) << problemOf(outcome);
    EXPECT_EQ(outcome->output, "out\n");
    EXPECT_EQ(outcome->words, "err\n");
    EXPECT_EQ(outcome->status, 0);
}

TEST_F(FFToolRun, ArgumentsArriveAsTheyAre)
{
    const Outcome outcome = run("printf '<%s>' \"$@\"", {"", "a b", "$HOME", "'\"\\", "-y", "x\ny",
                                                         "*", "\xFF", "\xF0\x9F\x8E\xAC"});
    EXPECT_EQ(outcome->output, "<><a b><$HOME><'\"\\><-y><x\ny><*><\xFF><\xF0\x9F\x8E\xAC>");
}

TEST_F(FFToolRun, AToolThatFailsIsReportedWithTheEndOfItsError)
{
    EXPECT_EQ(problemOf(run("echo wrong >&2; exit 3")), "tool exited with status 3: wrong\n");
    EXPECT_EQ(
        problemOf(run("printf '%9600s' | tr ' ' a >&2; printf '%400s' | tr ' ' b >&2; exit 1")),
        "tool exited with status 1: " + std::string(400, 'b'));
}

TEST_F(FFToolRun, AnErrorThatIsNotUtf8IsLeftOut)
{
    EXPECT_EQ(problemOf(run("printf 'bad \\377' >&2; exit 1")), "tool exited with status 1: ");
}

TEST_F(FFToolRun, AFailureMayBeAllowed)
{
    const Outcome outcome =
        run("echo out; printf '\\377' >&2; exit 42", FFTool::RunOptions{.allowFailure = true});
    ASSERT_TRUE(outcome) << problemOf(outcome);
    EXPECT_EQ(outcome->status, 42);
    EXPECT_EQ(outcome->output, "out\n");
    EXPECT_EQ(outcome->words, "\xFF");
}

TEST_F(FFToolRun, DeathByASignalIsAFailure)
{
    EXPECT_EQ(problemOf(run("kill -KILL $$")), "tool exited with status 137: ");
    EXPECT_EQ(problemOf(run("kill -TERM $$")), "tool exited with status 143: ");
    const Outcome allowed =
        run("echo out; kill -SEGV $$", FFTool::RunOptions{.allowFailure = true});
    EXPECT_EQ(allowed->status, 139);
    EXPECT_EQ(allowed->output, "out\n");
}

TEST_F(FFToolRun, AToolThatCannotBeStartedSaysWhy)
{
    const fs::path file = m_folder.write("file", "#!/bin/sh\n");
    const fs::path noProgram = m_folder.writeScript("data", QByteArray("\x01\x02\x03", 3));
    EXPECT_EQ(problemOf(FFTool::run(m_folder / "none", {})),
              "none could not be started: No such file or directory");
    EXPECT_EQ(problemOf(FFTool::run(file, {})), "file could not be started: Permission denied");
    EXPECT_EQ(problemOf(FFTool::run(m_folder.path(), {})),
              m_folder.path().filename().native() + " could not be started: Permission denied");
    EXPECT_EQ(problemOf(FFTool::run(noProgram, {})),
              "data could not be started: Exec format error");
    EXPECT_EQ(problemOf(FFTool::run(file, {}, {.allowFailure = true})),
              "file could not be started: Permission denied");
}

TEST_F(FFToolRun, BinaryOutputIsUnchanged)
{
    QByteArray bytes;
    for (unsigned i = 0; i < 1'000'000; ++i)
        bytes.append(static_cast<char>(i * i >> 3));
    ASSERT_TRUE(bytes.contains('\0'));
    const std::string file = m_folder.write("bytes", bytes).native();
    const Outcome outcome = run("cat \"$1\"; cat \"$1\" >&2", {file});
    EXPECT_TRUE(outcome->output == bytes);
    EXPECT_TRUE(outcome->words == bytes);
}

TEST_F(FFToolRun, MuchErrorOutputAheadOfTheOtherBlocksNothing)
{
    const Outcome outcome = run("head -c 100000000 /dev/zero >&2; echo done");
    ASSERT_TRUE(outcome) << problemOf(outcome);
    EXPECT_EQ(outcome->output, "done\n");
    EXPECT_EQ(outcome->words.size(), 100'000'000);
}

TEST_F(FFToolRun, AToolThatClosesItsOutputsIsStillWaitedFor)
{
    const Outcome outcome =
        run("echo out; exec >&- 2>&-; sleep 0.3; exit 7", FFTool::RunOptions{.allowFailure = true});
    EXPECT_EQ(outcome->status, 7);
    EXPECT_EQ(outcome->output, "out\n");
}

TEST_F(FFToolRun, StandardInputIsEmpty)
{
    EXPECT_EQ(FFTool::run("/bin/readlink", {"/proc/self/fd/0"})->output, "/dev/null\n");
    EXPECT_EQ(run("cat; echo end")->output, "end\n");
}

TEST_F(FFToolRun, NoOtherDescriptorIsInherited)
{
    const FileDescriptor low(::open("/dev/null", O_RDONLY));
    const FileDescriptor high(::fcntl(low.get(), F_DUPFD, 500));
    ASSERT_TRUE(low.isOpen() && high.isOpen());
    // The last one is the listing's own.
    EXPECT_EQ(FFTool::run("/bin/ls", {"/proc/self/fd"})->output, "0\n1\n2\n3\n");
}

TEST_F(FFToolRun, ItWorksWithoutTheStandardDescriptors)
{
    const fs::path tool = m_folder.writeScript("tool", "#!/bin/sh\necho out\necho err >&2\n");
    ForkedChild child([&] {
        for (int descriptor = 0; descriptor < 3; ++descriptor)
            ::close(descriptor);
        const Outcome outcome = FFTool::run(tool, {});
        if (outcome && outcome->output == "out\n" && outcome->words == "err\n")
            m_folder.write("right", "");
    });
    EXPECT_TRUE(comesTrue([&] { return fs::exists(m_folder / "right"); }));
}

TEST_F(FFToolRun, TheToolLeadsItsOwnProcessGroup)
{
    const auto numbers = FFTool::run("/usr/bin/cut", {"-d", " ", "-f", "1,5", "/proc/self/stat"})
                             ->output.simplified()
                             .split(' ');
    ASSERT_EQ(numbers.size(), 2);
    EXPECT_EQ(numbers[0], numbers[1]);
}

TEST_F(FFToolRun, TheToolTakesSignalsAsUsual)
{
    sigset_t blocked;
    sigset_t before;
    ::sigfillset(&blocked);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto pipeBefore = std::signal(SIGPIPE, SIG_IGN);
    const Outcome outcome = FFTool::run("/bin/grep", {"-E", "Sig(Blk|Ign)", "/proc/self/status"});
    std::signal(SIGPIPE, pipeBefore);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    constexpr quint64 usualSignals = 0x7FFF'FFFF; // The rest is the C library's own.
    const auto lines = outcome->output.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 2);
    // But for one: a file that may not grow is an error and no death.
    constexpr quint64 tooLarge = 1U << (SIGXFSZ - 1);
    const auto signalsIn = [](const QByteArray& line) {
        return line.split('\t').last().toULongLong(nullptr, 16) & usualSignals;
    };
    EXPECT_EQ(signalsIn(lines[0]), 0U);
    EXPECT_EQ(signalsIn(lines[1]), tooLarge);
}

TEST_F(FFToolRun, WhatWouldChangeTheOutputOfTheToolsIsTakenFromTheEnvironment)
{
    const ScopedVariable colour("AV_LOG_FORCE_COLOR", "1");
    const ScopedVariable report("FFREPORT", "file=report.txt");
    const ScopedVariable other("FFREPORTER", "kept");
    const auto variables = FFTool::run("/usr/bin/env", {})->output.split('\n');
    EXPECT_THAT(variables, testing::Contains("FFREPORTER=kept"));
    for (const QByteArray& variable : variables)
        EXPECT_FALSE(variable.startsWith("AV_LOG_FORCE_COLOR=")
                     || variable.startsWith("FFREPORT="));
}

TEST_F(FFToolRun, TheWorkingDirectoryIsInherited)
{
    const fs::path before = fs::current_path();
    fs::current_path(m_folder.path());
    EXPECT_EQ(run("pwd -P")->output.trimmed().toStdString(),
              fs::canonical(m_folder.path()).native());
    fs::current_path(before);
}

TEST_F(FFToolRun, AToolThatTakesTooLongIsAskedToTerminate)
{
    Outcome outcome;
    const auto time = timeOf([&] {
        outcome = run("trap 'echo asked >\"$1\"; exit 0' TERM; echo out; sleep 1000 & wait",
                      {(m_folder / "asked").native()}, limitedTo(0.5));
    });
    EXPECT_EQ(problemOf(outcome), "tool did not finish within 0s and was stopped. The file may be "
                                  "corrupt or extremely long.");
    EXPECT_EQ(outcome.error().kind, FFToolError::Kind::timedOut);
    EXPECT_EQ(outcome.error().seconds, 0.5);
    EXPECT_EQ(contents(m_folder / "asked"), "asked\n");
    EXPECT_GE(time, 500ms);
    EXPECT_LT(time, 3s);
}

TEST_F(FFToolRun, AToolThatIgnoresTheTerminateRequestIsKilled)
{
    Outcome outcome;
    const auto time = timeOf([&] {
        outcome = run("trap '' TERM; echo $$ >\"$1\"; while :; do sleep 1; done",
                      {(m_folder / "pid").native()}, limitedTo(1));
    });
    EXPECT_THAT(problemOf(outcome), StartsWith("tool did not finish within 1s and was stopped."));
    EXPECT_GE(time, 4s);
    EXPECT_LT(time, 6s);
    for (const pid_t tool : processesListedIn(m_folder / "pid"))
        EXPECT_FALSE(isRunning(tool));
    EXPECT_FALSE(hasChildren());
}

TEST_F(FFToolRun, AnEndlessTimeLimitIsNone)
{
    for (const double seconds : {1e18, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(run("sleep 0.1; echo out", limitedTo(seconds))->output, "out\n");
}

TEST_F(FFToolRun, ObserversSeeEveryChunkAndEveryLine)
{
    std::string chunks;
    std::vector<std::string> lines;
    FFTool::RunOptions options;
    options.observer.output = [&](std::string_view chunk) { chunks += chunk; };
    options.observer.wordsLine = [&](std::string_view line) { lines.emplace_back(line); };
    const Outcome outcome = run("printf 'a\\0b'; printf 'one\\rtwo\\n\\nth\\303' >&2; sleep 0.1;"
                                "printf 'c'; printf '\\251\\377\\nfour\\ncut' >&2",
                                options);
    EXPECT_EQ(chunks, std::string("a\0bc", 4));
    EXPECT_EQ(outcome->output.toStdString(), chunks);
    EXPECT_THAT(lines, ElementsAre("one", "two", "four"));
    EXPECT_EQ(outcome->words, "one\rtwo\n\nth\xC3\xA9\xFF\nfour\ncut");
}

TEST_F(FFToolRun, ObserversSeeTheOutputWhileTheToolRuns)
{
    FFTool::RunOptions options;
    options.observer.wordsLine = [&](std::string_view line) {
        if (line == "ready")
            m_folder.write("go", "");
    };
    const Outcome outcome =
        run("echo ready >&2; while ! [ -e \"$1\" ]; do sleep 0.05; done; echo went",
            {(m_folder / "go").native()}, options);
    EXPECT_EQ(outcome->output, "went\n");
}

TEST_F(FFToolRun, NoObserverIsCalledAfterTheReturn)
{
    std::atomic<int> calls = 0;
    FFTool::RunOptions options;
    options.observer.output = [&](std::string_view) { ++calls; };
    options.observer.wordsLine = [&](std::string_view) { ++calls; };
    EXPECT_TRUE(run("(while :; do echo x; echo y >&2; done) & sleep 0.2", options));
    const int atReturn = calls;
    EXPECT_GT(atReturn, 0);
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(calls, atReturn);
}

TEST_F(FFToolRun, AToolThatLackedMemoryFailsWhateverItsStatus)
{
    for (const char* status : {"0", "1", "69"}) {
        const Outcome outcome =
            run("echo half; echo 'Error while filtering: Cannot allocate memory' >&2; exit $1",
                {status}, {.allowFailure = true});
        ASSERT_FALSE(outcome) << status;
        EXPECT_TRUE(outcome.error().isShortage());
        EXPECT_EQ(problemOf(outcome),
                  std::string("There was not enough memory to decode this file.\n"
                              "tool exited with status ")
                      + status + ": Error while filtering: Cannot allocate memory\n");
    }
}

TEST_F(FFToolRun, AShortageIsSeenAlsoInOutputThatIsNotKept)
{
    FFTool::RunOptions options{.allowFailure = true};
    options.observer.keepWords = false;
    const Outcome outcome = run("echo '/a.mp4: Too many open files' >&2", options);
    ASSERT_FALSE(outcome);
    EXPECT_THAT(problemOf(outcome), StartsWith("Too many files are open.\n"));
}

TEST_F(FFToolRun, AToolThatCrashesAfterWordsAboutMemoryLackedIt)
{
    for (const char* end : {"kill -ABRT $$", "kill -SEGV $$", "exit 134"}) {
        const Outcome outcome =
            run(QByteArray("echo 'x265 [error]: malloc of size 12345 failed' >&2; ") + end,
                FFTool::RunOptions{.allowFailure = true});
        ASSERT_FALSE(outcome) << end;
        EXPECT_TRUE(outcome.error().isShortage()) << end;
        EXPECT_THAT(problemOf(outcome),
                    StartsWith("There was not enough memory to decode this file.\n"
                               "tool exited with status 1"))
            << end;
        EXPECT_THAT(problemOf(outcome), HasSubstr("malloc of size 12345 failed")) << end;
    }
}

TEST_F(FFToolRun, OtherCrashesAreNoShortage)
{
    for (const char* words : {"invalid slice header", "    title: malloc failed"}) {
        const Outcome outcome = run(QByteArray("echo '") + words + "' >&2; kill -SEGV $$");
        ASSERT_FALSE(outcome);
        EXPECT_FALSE(outcome.error().isShortage()) << words;
        EXPECT_EQ(outcome.error().status, 139);
    }
    EXPECT_TRUE(run("echo 'malloc of size 12345 failed' >&2")) << "nor words alone";
}

TEST_F(FFToolRun, AShortageIsHeardByTheThreadThatListens)
{
    const auto lacking = [&] { return run("echo 'Cannot allocate memory' >&2"); };
    Shortage shortage;
    EXPECT_FALSE(lacking());
    EXPECT_FALSE(shortage.error()) << "before it listens";
    {
        const Shortage::Scope scope(&shortage);
        EXPECT_FALSE(run("exit 1"));
        EXPECT_FALSE(shortage.error()) << "another failure";
        std::jthread([&, context = ToolContext()] {
            const ToolContext::Scope taken(context);
            EXPECT_FALSE(lacking());
        }).join();
    }
    EXPECT_EQ(Shortage::current(), nullptr);
    EXPECT_TRUE(shortage.error());
}

TEST_F(FFToolRun, AToolThatOthersEndedIsHeardAlsoWhereFailureIsAllowed)
{
    for (const auto& [script, isHeard] : std::vector<std::pair<QByteArray, bool>>{
             {"kill -TERM $$", true},
             {"kill -KILL $$", true},
             {"echo 'Exiting normally, received signal 15.' >&2; exit 255", true},
             {"echo 'Operation not permitted' >&2; exit 255", false},
             {"kill -SEGV $$", false},
             {"exit 1", false}}) {
        for (const bool isAllowed : {false, true}) {
            Shortage shortage;
            const Shortage::Scope scope(&shortage);
            const Outcome outcome = run(script, FFTool::RunOptions{.allowFailure = isAllowed});
            EXPECT_EQ(outcome.has_value(), isAllowed);
            EXPECT_EQ(shortage.error().has_value(), isHeard) << script.toStdString();
            if (isHeard) {
                EXPECT_TRUE(Trouble::isOfOthers(shortage.error()->description()));
            }
        }
    }
    EXPECT_FALSE(Trouble::isOfOthers(u"ffprobe exited with status 1: a.mov: status 137: "_s));
}

TEST_F(FFToolRun, OtherFailuresAreNoShortage)
{
    const Outcome outcome = run("echo 'Invalid data found when processing input' >&2; exit 1");
    ASSERT_FALSE(outcome);
    EXPECT_FALSE(outcome.error().isShortage());
}

TEST(FFToolMemory, AProbeMayTakeLessThanADecode)
{
    EXPECT_EQ(FFTool::memoryLimit("/usr/bin/ffprobe"), 2ULL << 30);
    EXPECT_GE(FFTool::memoryLimit("/usr/bin/ffmpeg"), 2ULL << 30);
}

TEST_F(FFToolRun, AToolMayTakeNoMoreMemoryThanThat)
{
    const auto limit = FFTool::memoryLimit("tool") / 1024;
    EXPECT_EQ(run("ulimit -v")->output, QByteArray::number(quint64{limit}) + '\n');
}

TEST_F(FFToolRun, OutputThatIsNotKeptIsSeenAndDropped)
{
    std::size_t size = 0;
    int lines = 0;
    FFTool::RunOptions options;
    options.observer.output = [&](std::string_view chunk) { size += chunk.size(); };
    options.observer.wordsLine = [&](std::string_view) { ++lines; };
    options.observer.keepOutput = false;
    options.observer.keepWords = false;
    const Outcome outcome = run("head -c 5000000 /dev/zero; yes | head -n 1000 >&2", options);
    ASSERT_TRUE(outcome) << problemOf(outcome);
    EXPECT_EQ(size, 5'000'000U);
    EXPECT_EQ(lines, 1000);
    EXPECT_EQ(outcome->output, "");
    EXPECT_EQ(outcome->words, "");
}

TEST_F(FFToolRun, ManyRunsAtOnceKeepApart)
{
    constexpr int count = 200;
    const fs::path tool = m_folder.writeScript(
        "tool", "#!/bin/sh\necho \"out $1\"; echo \"err $1\" >&2; exit \"$2\"\n");
    std::atomic<int> right = 0;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < count; ++i)
            threads.emplace_back([&, i] {
                const QByteArray number = QByteArray::number(i);
                const int status = i % 100;
                const Outcome outcome = FFTool::run(
                    tool, {number.toStdString(), QByteArray::number(status).toStdString()},
                    {.allowFailure = true});
                if (outcome && outcome->output == "out " + number + '\n'
                    && outcome->words == "err " + number + '\n' && outcome->status == status)
                    ++right;
            });
    }
    EXPECT_EQ(right, count);
    EXPECT_FALSE(hasChildren());
    EXPECT_THAT(processesNaming(m_folder.path().native()), testing::IsEmpty());
}

TEST(FFToolDrain, ADescriptorIsReadToItsEnd)
{
    const TestFolder folder;
    const QByteArray bytes(200'000, 'x');
    const FileDescriptor file(::open(folder.write("a", bytes).c_str(), O_RDONLY | O_CLOEXEC));
    QByteArray chunks;
    const auto collect = [&](std::string_view chunk) {
        EXPECT_FALSE(chunk.empty());
        chunks.append(chunk.data(), static_cast<qsizetype>(chunk.size()));
    };
    EXPECT_EQ(FFTool::drain(file.get(), collect), bytes);
    EXPECT_EQ(chunks, bytes);
    EXPECT_EQ(FFTool::drain(file.get(), nullptr), "");
    EXPECT_EQ(FFTool::drain(-1, nullptr), "");
}

TEST(FFToolWithRealTools, FramesComeByteForByte)
{
    const auto outcome =
        FFTool::run(FFTool::find("ffmpeg").value(),
                    {"-v", "error", "-f", "lavfi", "-i", "testsrc=size=64x48:rate=5:duration=1",
                     "-f", "rawvideo", "-pix_fmt", "rgb24", "-"});
    ASSERT_TRUE(outcome) << problemOf(outcome);
    EXPECT_EQ(outcome->output.size(), 64 * 48 * 3 * 5);
    EXPECT_EQ(outcome->words, "");
}

TEST(FFToolWithRealTools, ProgressComesAsPlainLinesWhateverTheEnvironment)
{
    const TestFolder folder;
    const ScopedVariable colour("AV_LOG_FORCE_COLOR", "1");
    const ScopedVariable report("FFREPORT", "file=" + (folder / "report.txt").native());
    std::vector<std::string> lines;
    FFTool::RunOptions options;
    options.observer.wordsLine = [&](std::string_view line) { lines.emplace_back(line); };
    const auto outcome = FFTool::run(
        FFTool::find("ffmpeg").value(),
        {"-hide_banner", "-f", "lavfi", "-i", "testsrc=size=64x48:duration=1", "-f", "null", "-"},
        options);
    ASSERT_TRUE(outcome) << problemOf(outcome);
    EXPECT_THAT(lines, testing::Contains(StartsWith("frame=")));
    EXPECT_THAT(lines, testing::Each(Not(HasSubstr("\x1B"))));
    EXPECT_THAT(folder.names(), testing::IsEmpty());
}

TEST(FFToolWithRealTools, AFailedProbeSaysWhy)
{
    const auto outcome = FFTool::run(FFTool::find("ffprobe").value(), {"-v", "error", "/none.mov"});
    EXPECT_EQ(problemOf(outcome),
              "ffprobe exited with status 1: /none.mov: No such file or directory\n");
}

} // namespace
} // namespace vantroque
