#pragma once

#include <QByteArray>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vantroque {

/// What a program printed, and how it ended.
struct ProgramRun {
    int status = 0; ///< Exit status, or 128 + the signal.
    QByteArray out;
    QByteArray err;
};

struct ProgramOptions {
    /// Changes to the test's own environment; nothing takes a variable out.
    std::map<std::string, std::optional<std::string>> environment = {};
    /// Opened for standard output in place of keeping it.
    std::optional<std::filesystem::path> standardOutput = {};
    /// No file may grow beyond it, as on a full disk.
    std::optional<std::uint64_t> maxFileBytes = {};
    bool unprivileged = false; ///< As a user whom permissions bind, also when the test is root.
    bool onTerminal = false;   ///< Both outputs are a terminal, and all comes back in `out`.
};

/// A child process of the test. Independent of the code under test.
class Program {
public:
    explicit Program(const std::vector<std::string>& command, const ProgramOptions& options = {});
    ~Program();
    Program(Program&& other) noexcept;
    Program& operator=(Program&&) = delete;

    pid_t id() const { return m_id; }
    void signal(int number) const;
    /// Waits for the end. A program that takes longer than a minute is killed.
    ProgramRun wait();

private:
    pid_t m_id = -1;
    int m_out = -1;
    int m_err = -1;
    bool m_onTerminal = false;
};

ProgramRun runProgram(const std::vector<std::string>& command, const ProgramOptions& options = {});

} // namespace vantroque
