#include "Support/Program.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace vantroque {

namespace {

constexpr std::chrono::seconds patience{60};
constexpr unsigned nobody = 65534;

std::vector<std::string> environmentWith(const ProgramOptions& options)
{
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const auto mark = text.find('=');
        variables[text.substr(0, mark)] = text.substr(mark + 1);
    }
    for (const auto& [name, value] : options.environment)
        if (value)
            variables[name] = *value;
        else
            variables.erase(name);
    std::vector<std::string> entries;
    for (const auto& [name, value] : variables)
        entries.push_back(name + '=' + value);
    return entries;
}

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> list;
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

/// Both ends of a new terminal: the test's and the program's.
std::pair<int, int> openTerminal()
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<char, 64> name{};
    if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0
        || ::ptsname_r(master, name.data(), name.size()) != 0)
        throw std::runtime_error("no terminal for the test");
    return {master, ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC)};
}

QByteArray readAll(int descriptor)
{
    QByteArray all;
    std::array<char, 65536> chunk{};
    for (ssize_t count = 0; (count = ::read(descriptor, chunk.data(), chunk.size())) > 0;)
        all.append(chunk.data(), count);
    return all;
}

QByteArray readFromStart(int descriptor)
{
    if (descriptor < 0 || ::lseek(descriptor, 0, SEEK_SET) < 0)
        return {};
    return readAll(descriptor);
}

/// The signal that would end the program is ignored, so that it sees an error like any other.
void limitFiles(std::uint64_t bytes)
{
    const rlimit limit{bytes, bytes};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::signal(SIGXFSZ, SIG_IGN);
}

bool dropPrivileges()
{
    return ::geteuid() != 0
           || (::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 && ::setuid(nobody) == 0);
}

void closeIfOpen(int descriptor)
{
    if (descriptor >= 0)
        ::close(descriptor);
}

} // namespace

Program::Program(const std::vector<std::string>& command, const ProgramOptions& options)
    : m_onTerminal(options.onTerminal)
{
    int childOut = -1;
    int childErr = -1;
    if (m_onTerminal) {
        std::tie(m_out, childOut) = openTerminal();
        childErr = childOut;
    } else {
        childOut = options.standardOutput
                       ? ::open(options.standardOutput->c_str(), O_WRONLY | O_CLOEXEC)
                       : m_out = ::memfd_create("out", MFD_CLOEXEC);
        childErr = m_err = ::memfd_create("err", MFD_CLOEXEC);
    }
    const int null = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    auto words = command;
    auto entries = environmentWith(options);
    const auto argv = pointers(words);
    const auto envp = pointers(entries);
    m_id = ::fork();
    if (m_id == 0) {
        ::dup2(null, STDIN_FILENO);
        ::dup2(childOut, STDOUT_FILENO);
        ::dup2(childErr, STDERR_FILENO);
        if (options.maxFileBytes)
            limitFiles(*options.maxFileBytes);
        if (!options.unprivileged || dropPrivileges())
            ::execvpe(argv[0], argv.data(), envp.data());
        ::_exit(127);
    }
    ::close(null);
    if (m_onTerminal || options.standardOutput)
        closeIfOpen(childOut);
    if (m_id < 0)
        throw std::runtime_error("no process for the test");
}

Program::Program(Program&& other) noexcept
    : m_id(std::exchange(other.m_id, -1)),
      m_out(std::exchange(other.m_out, -1)),
      m_err(std::exchange(other.m_err, -1)),
      m_onTerminal(other.m_onTerminal)
{
}

Program::~Program()
{
    if (m_id > 0) {
        ::kill(m_id, SIGKILL);
        ::waitpid(m_id, nullptr, 0);
    }
    closeIfOpen(m_out);
    closeIfOpen(m_err);
}

void Program::signal(int number) const
{
    ::kill(m_id, number);
}

ProgramRun Program::wait()
{
    ProgramRun run;
    if (m_onTerminal) // Ends when the program's side closes.
        run.out = readAll(m_out);
    int status = 0;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (::waitpid(m_id, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline)
            ::kill(m_id, SIGKILL);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    m_id = -1;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    if (!m_onTerminal)
        run.out = readFromStart(m_out);
    run.err = readFromStart(m_err);
    return run;
}

ProgramRun runProgram(const std::vector<std::string>& command, const ProgramOptions& options)
{
    return Program(command, options).wait();
}

} // namespace vantroque
