#include "Base/Cancellation.h"
#include "Analysis/TextOnTheRoad.h"
#include "Tools/ProcessTable.h"

#include <future>

// An analysis that is called off while one of its tools runs.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::IsEmpty;
namespace fs = std::filesystem;

/// The real tools, of which one call, counted over both, goes on for ever.
class OneCallHangs {
public:
    explicit OneCallHangs(int call = -1)
    {
        const QByteArray folder = QByteArray::fromStdString(m_folder.path().native());
        for (const QByteArray tool : {"ffprobe", "ffmpeg"})
            m_tools.put(tool.toStdString(), "n=0; until mkdir '" + folder
                                                + "'/$n 2>/dev/null; do n=$((n+1)); done\n"
                                                  "[ $n -eq "
                                                + QByteArray::number(call) + " ] || exec " + tool
                                                + " \"$@\"\n"
                                                  "trap '' TERM; mkdir '"
                                                + folder + "/hangs'; sleep 1000 & wait; wait");
    }

    int calls() const { return static_cast<int>(m_folder.names().size()); }
    bool hangs() const { return fs::exists(m_folder / "hangs"); }
    /// What is left of the tools.
    std::vector<pid_t> left() const { return processesNaming(m_tools.folder().native()); }

private:
    TestFolder m_folder;
    FakeTools m_tools;
};

/// All that an analysis may do: the deep probes, the decode, the slate, the text and its edges.
Result<Analyzer::Analysis> analyse(Readers& readers)
{
    return Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()),
                             {withSlate(2), withPlacement(0.9, 0.95)},
                             {.recognizers = &readers.pool});
}

class Cancelling : public testing::Test {
protected:
    std::vector<std::string> scratch() const
    {
        auto names = m_temporary.names();
        std::erase_if(names, [](const auto& name) { return !name.starts_with("vantroque-"); });
        return names;
    }

    const TestFolder m_temporary;
    const ScopedVariable m_place{"TMPDIR", m_temporary.path()};
    Readers m_readers;
};

TEST_F(Cancelling, AtWhateverToolEndsItAndLeavesNothing)
{
    const int calls = [this] {
        const OneCallHangs none;
        EXPECT_TRUE(analyse(m_readers));
        return none.calls();
    }();
    ASSERT_GT(calls, 5);
    for (int call = 0; call < calls; ++call) {
        SCOPED_TRACE(call);
        const OneCallHangs tools(call);
        std::stop_source stop;
        auto analysis = std::async(std::launch::async, [&] {
            const Cancellation::Scope scope(stop.get_token());
            return analyse(m_readers);
        });
        ASSERT_TRUE(comesTrue([&] { return tools.hangs(); }));
        stop.request_stop();
        const auto outcome = analysis.get();
        EXPECT_FALSE(outcome) << "nothing is told of half a file";
        EXPECT_THAT(tools.left(), IsEmpty());
        EXPECT_FALSE(hasChildren());
        EXPECT_THAT(scratch(), IsEmpty());
    }
}

TEST_F(Cancelling, WhileTextIsReadReadsNoFurtherFrame)
{
    std::stop_source stop;
    std::atomic<int> read = 0;
    RecognizerPool pool(FakeRecognizer::answering([&](const QImage&, auto, auto) {
        stop.request_stop();
        ++read;
        return FakeRecognizer::Lines();
    }));
    const Cancellation::Scope scope(stop.get_token());
    EXPECT_FALSE(Analyzer::analyze(FileUrl::fromPath(BoxClips::titled()), placement,
                                   {.recognizers = &pool}));
    EXPECT_EQ(read, 1);
    EXPECT_THAT(scratch(), IsEmpty());
}

TEST_F(Cancelling, AFurtherMeasurementLeavesTheRecordAsItWas)
{
    MediaInfo media = measured();
    const MediaInfo before = media;
    const Cancellation::Scope scope([] {
        std::stop_source stopped;
        stopped.request_stop();
        return stopped.get_token();
    }());
    EXPECT_FALSE(Analyzer::rescore(media, placement, &m_readers.pool));
    EXPECT_EQ(media, before);
}

} // namespace
} // namespace vantroque
