#include "Tools/SupervisedProcess.h"

#include "Base/ResourceFolder.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>

namespace vantroque {

using namespace SuperviseProtocol;
using Clock = std::chrono::steady_clock;

namespace {

/// The tools are asked so often that their own exit must be seen at once, and so rarely fail to
/// answer that a coarse look at the clock serves.
constexpr std::chrono::microseconds pollStep{50'000};

std::string supervisorPath()
{
    return (ResourceFolder::executableFolder() / "../libexec/vantroque/vantroque-supervise")
        .native();
}

/// The environment without what changes ffmpeg's output or makes it write report files.
std::vector<char*> toolEnvironment()
{
    static constexpr std::array<std::string_view, 4> unwanted{
        "AV_LOG_FORCE_COLOR=", "AV_LOG_FORCE_NOCOLOR=", "AV_LOG_FORCE_256COLOR=", "FFREPORT="};
    std::vector<char*> kept;
    for (char** entry = environ; *entry != nullptr; ++entry)
        if (std::ranges::none_of(unwanted, [&](std::string_view name) {
                return std::string_view(*entry).starts_with(name);
            }))
            kept.push_back(*entry);
    kept.push_back(nullptr);
    return kept;
}

/// Wiring of the supervisor's descriptors; all others are closed in it.
class FileActions {
public:
    FileActions(int standardOutput, int standardError, int report)
    {
        ::posix_spawn_file_actions_init(&m_actions);
        ::posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&m_actions, standardOutput, STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&m_actions, standardError, STDERR_FILENO);
        ::posix_spawn_file_actions_adddup2(&m_actions, report, reportDescriptor);
        ::posix_spawn_file_actions_addclosefrom_np(&m_actions, reportDescriptor + 1);
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// Own process group, default signal actions, and the signals meant for the supervisor blocked
/// until it is ready to take them.
class Attributes {
public:
    Attributes()
    {
        ::posix_spawnattr_init(&m_attributes);
        sigset_t blocked;
        sigset_t all;
        ::sigemptyset(&blocked);
        for (const int number : {terminateSignal, killSignal, orphanedSignal, SIGCHLD})
            ::sigaddset(&blocked, number);
        ::sigfillset(&all);
        ::posix_spawnattr_setsigmask(&m_attributes, &blocked);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK
                                                      | POSIX_SPAWN_SETSIGDEF);
    }
    ~Attributes() { ::posix_spawnattr_destroy(&m_attributes); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

/// What it takes to run the tool. One that somebody brought along may be a script, and has its
/// libraries beside it or where package managers put them.
std::vector<std::string> programs(const std::filesystem::path& executable)
{
    if (executable.parent_path() == "/usr/bin")
        return {executable.native()};
    std::error_code ignored;
    const auto folder = std::filesystem::weakly_canonical(executable, ignored).parent_path();
    return {executable.parent_path().native(),
            folder.native(),
            (folder.parent_path() / "lib").native(),
            "/usr",
            "/bin",
            "/opt",
            "/nix"};
}

/// The words of the cage, as the supervisor reads them.
void addCage(std::vector<std::string>& command, const std::filesystem::path& executable,
             const Cage::Rights& cage)
{
    command.emplace_back(cagedWord);
    const auto add = [&](const char* word, const std::vector<std::string>& paths) {
        for (const std::string& path : paths)
            command.insert(command.end(), {word, path});
    };
    add(programWord, programs(executable));
    add(programWord, cage.programs);
    add(readWord, cage.reads);
    add(writeWord, cage.writes);
}

void reap(pid_t process)
{
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

void Pipe::widen() const
{
    // Well below what the kernel grants one user in all, also for many runs at once.
    constexpr int capacity = 256 * 1024;
    static_cast<void>(::fcntl(readEnd.get(), F_SETPIPE_SZ, capacity));
}

Result<Pipe, int> Pipe::make()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return tl::unexpected(errno);
    std::array<FileDescriptor, 2> low{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    std::array<FileDescriptor, 2> high;
    for (std::size_t i = 0; i < low.size(); ++i) {
        high[i] = FileDescriptor(
            ::fcntl(low[i].get(), F_DUPFD_CLOEXEC, SuperviseProtocol::reportDescriptor + 1));
        if (!high[i].isOpen())
            return tl::unexpected(errno);
    }
    return Pipe{std::move(high[0]), std::move(high[1])};
}

Result<SupervisedProcess, int> SupervisedProcess::start(const std::filesystem::path& executable,
                                                        const std::vector<std::string>& arguments,
                                                        const FileDescriptor& standardOutput,
                                                        const FileDescriptor& standardError,
                                                        std::uint64_t memoryLimit,
                                                        const std::optional<Cage::Rights>& cage)
{
    Pipe report = TRY(Pipe::make());
    const auto number = [](auto value) { return QByteArray::number(value).toStdString(); };
    std::vector<std::string> command{supervisorPath(), number(::getpid()),
                                     number(quint64{memoryLimit})};
    if (cage)
        addCage(command, executable, *cage);
    command.insert(command.end(), {toolWord, executable.native()});
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& argument : command)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    pid_t supervisor = -1;
    const FileActions actions(standardOutput.get(), standardError.get(), report.writeEnd.get());
    const Attributes attributes;
    const int problem = ::posix_spawn(&supervisor, pointers[0], actions.get(), attributes.get(),
                                      pointers.data(), toolEnvironment().data());
    if (problem != 0)
        return tl::unexpected(problem);
    return SupervisedProcess(supervisor, std::move(report.readEnd));
}

SupervisedProcess::~SupervisedProcess()
{
    if (m_supervisor < 0)
        return;
    kill();
    reap(m_supervisor);
}

std::optional<Report> SupervisedProcess::waitUntil(Clock::time_point deadline)
{
    while (Clock::now() < deadline) {
        pollfd ready{m_report.get(), POLLIN, 0};
        const auto step = std::min<Clock::duration>(pollStep, deadline - Clock::now());
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(step);
        if (::poll(&ready, 1, static_cast<int>(wait.count())) <= 0)
            continue;
        // The supervisor writes each report atomically; without the last, it was killed itself.
        Report report;
        if (::read(m_report.get(), &report, sizeof report) < 0 && errno == EINTR)
            continue;
        if (report.outcome != Outcome::caged)
            return report;
        m_held = static_cast<std::uint32_t>(report.value);
    }
    return std::nullopt;
}

void SupervisedProcess::terminate() const
{
    ::kill(m_supervisor, terminateSignal);
}

void SupervisedProcess::kill() const
{
    ::kill(m_supervisor, killSignal);
}

} // namespace vantroque
