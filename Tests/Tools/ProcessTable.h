#pragma once

#include <QByteArray>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

/// What runs on this machine, and waiting for it to change. The limits are generous, since a loaded
/// machine is slow; nothing waits longer than it must.
namespace vantroque {

constexpr std::chrono::seconds patience{20};

/// Whether the condition comes true in time.
bool comesTrue(const std::function<bool()>& condition);

/// A file of the system about the process, such as "cmdline"; empty when the process is gone.
QByteArray processFile(pid_t process, const std::string& name);

/// Whether the process lives; a zombie does not.
bool isRunning(pid_t process);

/// The living processes, but for this one, one of whose arguments holds the text.
std::vector<pid_t> processesNaming(const std::string& text);

/// The numbers in a file, one a line, once it is there; it must come into being whole.
std::vector<pid_t> processesListedIn(const std::filesystem::path& file);

/// Whether this process has a child, living or zombie.
bool hasChildren();

/// A child process that does only this; it and nothing else is killed in the end.
class ForkedChild {
public:
    explicit ForkedChild(const std::function<void()>& work);
    ~ForkedChild() { kill(); }
    ForkedChild(const ForkedChild&) = delete;
    ForkedChild& operator=(const ForkedChild&) = delete;

    /// Sends the signal and waits for the end.
    void kill(int signal = 9);

private:
    pid_t m_process;
};

} // namespace vantroque
