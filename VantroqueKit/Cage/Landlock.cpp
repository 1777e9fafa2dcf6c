#include "Cage/Landlock.h"

#include "Base/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vantroque::Landlock {

namespace {

// The interface of <linux/landlock.h>, of which the system's copy may be older than the kernel.
constexpr long createRuleset = 444;
constexpr long addRule = 445;
constexpr long restrictSelf = 446;
constexpr unsigned askForVersion = 1;
constexpr int pathBeneath = 1;

enum Right : std::uint64_t {
    execute = 1U << 0U,
    writeFile = 1U << 1U,
    readFile = 1U << 2U,
    readDir = 1U << 3U,
    removeFile = 1U << 5U,
    makeRegular = 1U << 8U,
    upToVersion1 = (1U << 13U) - 1,
    refer = 1U << 13U,         // version 2
    truncate = 1U << 14U,      // version 3
    deviceControl = 1U << 15U, // version 5
};
constexpr std::uint64_t bindAndConnect = 3;    // version 4
constexpr std::uint64_t socketsAndSignals = 3; // version 6

struct Handled {
    std::uint64_t files = 0;
    std::uint64_t network = 0;
    std::uint64_t scoped = 0;
};

struct [[gnu::packed]] Rule {
    std::uint64_t rights = 0;
    std::int32_t path = -1;
};

Handled handledBy(int version)
{
    Handled handled{.files = upToVersion1};
    if (version >= 2)
        handled.files |= refer;
    if (version >= 3)
        handled.files |= truncate;
    if (version >= 4)
        handled.network = bindAndConnect;
    if (version >= 5)
        handled.files |= deviceControl;
    if (version >= 6)
        handled.scoped = socketsAndSignals;
    return handled;
}

/// An older kernel refuses a record that is longer than the one it knows.
std::size_t sizeFor(int version)
{
    return version >= 6   ? sizeof(Handled)
           : version >= 4 ? 2 * sizeof(std::uint64_t)
                          : sizeof(std::uint64_t);
}

class Ruleset {
public:
    explicit Ruleset(int version)
        : m_handled(handledBy(version)),
          m_rules(static_cast<int>(::syscall(createRuleset, &m_handled, sizeFor(version), 0U)))
    {
    }

    bool isThere() const { return m_rules.isOpen(); }
    /// Rights of these files; and of these folders with all in them, if they are folders.
    void allow(std::span<const std::string> paths, std::uint64_t ofFile,
               std::uint64_t ofFolder) const
    {
        for (const std::string& path : paths)
            allow(path, ofFile, ofFolder);
    }
    bool enforce() const { return ::syscall(restrictSelf, m_rules.get(), 0U) == 0; }

private:
    void allow(const std::string& path, std::uint64_t ofFile, std::uint64_t ofFolder) const
    {
        const FileDescriptor place(::open(path.c_str(), O_PATH | O_CLOEXEC));
        struct stat status {};
        if (!place.isOpen() || ::fstat(place.get(), &status) != 0)
            return;
        const std::uint64_t rights = S_ISDIR(status.st_mode) ? ofFolder : ofFile;
        const Rule rule{rights & m_handled.files, place.get()};
        ::syscall(addRule, m_rules.get(), pathBeneath, &rule, 0U);
    }

    Handled m_handled;
    FileDescriptor m_rules;
};

/// What every program needs that links to libraries.
const std::vector<std::string>& libraries()
{
    static const std::vector<std::string> folders{"/usr/lib", "/usr/lib64", "/usr/local/lib",
                                                  "/lib", "/lib64"};
    return folders;
}

/// The loader's lists, and what tells how many threads there may be.
const std::vector<std::string>& systemFiles()
{
    static const std::vector<std::string> files{
        "/etc/ld.so.cache", "/etc/ld.so.preload", "/sys/devices/system/cpu",
        "/proc/cpuinfo",    "/proc/stat",         "/proc/meminfo"};
    return files;
}

} // namespace

std::uint32_t confine(const Cage::Rights& rights, int mostAbi)
{
    const auto known = static_cast<int>(::syscall(createRuleset, nullptr, 0, askForVersion));
    const int version = std::min({known, mostAbi, Cage::newestAbi});
    if (version < 1)
        return 0;
    const Ruleset rules(version);
    if (!rules.isThere())
        return 0;
    rules.allow(libraries(), 0, execute | readFile);
    rules.allow(systemFiles(), readFile, readFile | readDir);
    rules.allow(std::vector<std::string>{"/dev/null"}, readFile | writeFile | truncate, 0);
    rules.allow(rights.programs, execute | readFile, execute | readFile);
    // Who opens a folder as a film is told that it is one, and reads no file in it.
    rules.allow(rights.reads, readFile, readDir);
    rules.allow(rights.writes, 0,
                readFile | writeFile | readDir | makeRegular | removeFile | truncate);
    if (!rules.enforce())
        return 0;
    std::uint32_t held = Cage::files;
    if (version >= 4)
        held |= Cage::network;
    if (version >= 6)
        held |= Cage::signals;
    return held;
}

} // namespace vantroque::Landlock
