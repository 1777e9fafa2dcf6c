#include "Tools/ProcessTable.h"

#include "Base/FileDescriptor.h"
#include "Base/Text.h"
#include "Support/TestFolder.h"

#include <QList>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vantroque {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

bool comesTrue(const std::function<bool()>& condition)
{
    const auto deadline = Clock::now() + patience;
    while (!condition()) {
        if (Clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

QByteArray processFile(pid_t process, const std::string& name)
{
    const fs::path path = "/proc/" + QByteArray::number(process).toStdString() + '/' + name;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    QByteArray bytes;
    std::array<char, 65536> part{};
    // Fails when the process ends meanwhile.
    for (ssize_t count = 0; (count = ::read(file.get(), part.data(), part.size())) > 0;)
        bytes.append(part.data(), count);
    return bytes;
}

bool isRunning(pid_t process)
{
    const QByteArray stat = processFile(process, "stat");
    // The name in parentheses may hold anything, and the state follows it.
    const QByteArray state = stat.mid(stat.lastIndexOf(')') + 2, 1);
    return !state.isEmpty() && state != "Z" && state != "X";
}

std::vector<pid_t> processesNaming(const std::string& text)
{
    std::vector<pid_t> found;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const pid_t process = Text::utf8(entry->path().filename().native()).toInt();
        if (process > 0 && process != ::getpid() && isRunning(process)
            && processFile(process, "cmdline").contains(text.c_str()))
            found.push_back(process);
    }
    return found;
}

std::vector<pid_t> processesListedIn(const fs::path& file)
{
    if (!comesTrue([&] { return fs::exists(file); }))
        return {};
    std::vector<pid_t> processes;
    for (const QByteArray& line : contents(file).simplified().split(' '))
        processes.push_back(line.toInt());
    return processes;
}

bool hasChildren()
{
    if (::waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD)
        return false;
    // ThreadSanitizer keeps a child of its own that tells it the names of functions.
    std::error_code error;
    if (!fs::exists("/proc/thread-self/children", error))
        return true; // a kernel that does not list them
    for (fs::directory_iterator task("/proc/self/task", error), end; !error && task != end;
         task.increment(error)) {
        const QByteArray listed =
            processFile(::getpid(), "task/" + task->path().filename().native() + "/children");
        for (const QByteArray& child : listed.simplified().split(' '))
            if (!child.isEmpty() && !processFile(child.toInt(), "comm").startsWith("llvm-symbol"))
                return true;
    }
    return false;
}

ForkedChild::ForkedChild(const std::function<void()>& work) : m_process(::fork())
{
    if (m_process != 0)
        return;
    work();
    ::_exit(0);
}

void ForkedChild::kill(int signal)
{
    if (m_process <= 0)
        return;
    ::kill(m_process, signal);
    while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
}

} // namespace vantroque
