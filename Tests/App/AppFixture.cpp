#include "App/AppFixture.h"

#include "Support/Media.h"
#include "VantroqueApp/SingleInstance.h"

#include <QLocalSocket>

#include <algorithm>

namespace vantroque {

namespace fs = std::filesystem;
using namespace Media;

AppTest::AppTest()
{
    for (const char* folder : {"data", "config", "tmp", "run"})
        fs::create_directory(m_home / folder);
    fs::permissions(m_home / "run", fs::perms::owner_all);
}

AppTest::~AppTest() = default;

Program AppTest::start(const std::vector<Path>& files, ProgramOptions options) const
{
    std::vector<std::string> command{VANTROQUE_WINDOW};
    for (const Path& file : files)
        command.push_back(file.native());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        options.environment.try_emplace("QT_QPA_PLATFORM", "offscreen");
    return Program(command, options);
}

Program AppTest::open(const std::vector<Path>& files, ProgramOptions options) const
{
    const auto answers = [] {
        QLocalSocket socket;
        socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
        socket.connectToServer(SingleInstance::name());
        return socket.waitForConnected();
    };
    Program window = start(files, std::move(options));
    EXPECT_TRUE(comesTrue(answers));
    return window;
}

AppTest::Path AppTest::file(const std::string& name, const Path& clip) const
{
    return m_home.write(name, contents(clip));
}

AppTest::Path AppTest::longFile() const
{
    static const std::string seconds = "300";
    return file("long.mp4",
                make({.name = "long.mp4",
                      .arguments = Clips::picture("320x180", "25", seconds) + Clips::tone(seconds)
                                   + Clips::x264() + std::vector<std::string>{"-c:a", "aac"}}));
}

std::vector<WorkspaceFile> AppTest::stored()
{
    const auto workspace = WorkspaceStore::load();
    return workspace ? workspace->files : std::vector<WorkspaceFile>();
}

std::vector<std::string> AppTest::storedNames()
{
    std::vector<std::string> names;
    for (const WorkspaceFile& file : stored())
        names.push_back(file.url().path().filename().native());
    return names;
}

bool AppTest::soonStored(const std::vector<std::string>& names)
{
    return comesTrue([&] { return storedNames() == names; });
}

bool AppTest::soonAnalysed(std::size_t count)
{
    return comesTrue([&] {
        const auto files = stored();
        return static_cast<std::size_t>(std::ranges::count_if(
                   files, [](const WorkspaceFile& file) { return file.report != nullptr; }))
               == count;
    });
}

std::vector<AppTest::Path> AppTest::scratch() const
{
    std::vector<Path> found;
    for (const auto& entry : fs::directory_iterator(m_home / "tmp"))
        if (entry.path().filename().native().starts_with("vantroque-"))
            found.push_back(entry.path());
    return found;
}

bool AppTest::soonDecodes(const Path& file) const
{
    const auto decodes = [&] {
        const auto processes = processesNaming(file.native());
        return std::ranges::any_of(
            processes, [](pid_t process) { return processFile(process, "comm") == "ffmpeg\n"; });
    };
    const auto writesFrames = [&] {
        std::error_code error; // a frame that was read is removed
        for (const Path& folder : scratch())
            for (fs::recursive_directory_iterator entry(folder, error), end; entry != end;
                 entry.increment(error))
                if (entry->path().extension() == ".png")
                    return true;
        return false;
    };
    return comesTrue([&] { return decodes() && writesFrames(); });
}

testing::AssertionResult AppTest::leftNothing(const Path& file) const
{
    // The kernel tells the supervisor of the end, so that the tools end after the program.
    if (!comesTrue([&] { return processesNaming(file.native()).empty(); }))
        return testing::AssertionFailure() << "a tool is left";
    if (const auto left = scratch(); !left.empty())
        return testing::AssertionFailure() << "left: " << left.front();
    return testing::AssertionSuccess();
}

} // namespace vantroque
