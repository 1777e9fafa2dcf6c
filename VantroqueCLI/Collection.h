#pragma once

#include "Base/FileDescriptor.h"
#include "Base/ScratchFolder.h"
#include "VantroqueCLI/Parts.h"

#include <QStringList>

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vantroque {

/// Results from many parts, each file's once. One that was analysed counts more than one that could
/// not be: those come last, when nobody has analysed them. Names are kept in memory, reports are
/// not.
class Collection {
public:
    /// `take` gets each result that counts.
    explicit Collection(Parts::Take take) : m_take(std::move(take)) {}

    /// Fails as `take` does, or for want of room for scratch.
    Result<void> add(const std::string& part);
    /// To be called after the last part.
    Result<void> finish();

    bool has(const std::string& name) const { return m_seen.contains(name); }
    /// In no order.
    template<typename Take>
    void eachName(Take take) const
    {
        for (const auto& [name, seen] : m_seen)
            take(name);
    }
    std::size_t fileCount() const { return m_seen.size(); }
    /// Of the files that were analysed.
    const std::map<Verdict, qint64>& verdicts() const { return m_verdicts; }
    qint64 failedCount() const { return m_failedCount; }
    ExitStatus status() const { return m_status; }

    /// Names of files that several results are of.
    const std::vector<std::string>& twice() const { return m_twice; }
    const QStringList& unreadable() const { return m_unreadable; }
    const QStringList& torn() const { return m_torn; }
    /// How many files which version of the program has checked.
    const std::map<QString, qint64>& versions() const { return m_versions; }

private:
    struct Seen {
        bool isAnalysed = false;
        bool isTwice = false;
    };

    Result<void> add(const WrittenResult& result);
    Result<void> keepForLater(const WrittenResult& result);
    Result<void> tell(const WrittenResult& result);

    const Parts::Take m_take;
    std::unordered_map<std::string, Seen> m_seen; ///< By name.
    std::vector<std::string> m_twice;
    std::map<Verdict, qint64> m_verdicts;
    std::map<QString, qint64> m_versions;
    qint64 m_failedCount = 0;
    ExitStatus m_status = ExitStatus::passed;
    QStringList m_unreadable;
    QStringList m_torn;
    std::optional<ScratchFolder> m_scratch;
    FileDescriptor m_failed; ///< Lines on files that could not be analysed.
};

} // namespace vantroque
