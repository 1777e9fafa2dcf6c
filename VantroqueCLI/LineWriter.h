#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"
#include "VantroqueCLI/ExitStatus.h"
#include "VantroqueCLI/OutputTarget.h"

#include <QByteArray>

#include <mutex>
#include <string>
#include <unordered_set>

namespace vantroque {

/// Where the results of a call go line by line. Each is out in one piece, and on the disk, before
/// the next: whatever ends the program, at most the last line is torn. A file is locked while this
/// value lives.
class LineWriter {
public:
    explicit LineWriter(OutputTarget target) : m_target(std::move(target)) {}

    /// Fails when a file is there with something in it, unless it `overwrites`.
    Result<void> begin(bool overwrites);

    /// What stood in a file.
    struct Standing {
        std::unordered_set<std::string> names; ///< Bytes of the names of its files.
        ExitStatus status = ExitStatus::passed;
        bool wasTorn = false; ///< A torn last line was cut off.
    };
    /// Goes on with a file, or begins it. Fails, and leaves it as it is, when anything else than
    /// results stands in it, or somebody else writes it.
    Result<Standing> resume();

    /// A line with its end, when it has begun. Any thread.
    Result<void> add(const QByteArray& line);

private:
    Result<void> open();
    Result<Standing> readStanding() const;

    const OutputTarget m_target;
    FileDescriptor m_file;
    std::mutex m_mutex; ///< One line at a time.
};

} // namespace vantroque
