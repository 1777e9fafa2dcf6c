#include "VantroqueCLI/Collection.h"

#include "Base/Files.h"
#include "VantroqueCLI/Output.h"

#include <cerrno>
#include <fcntl.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

const QString scratchFile = u"scratch file of the collection"_s;
constexpr const char* scratchName = "failed.jsonl";

} // namespace

Result<void> Collection::add(const std::string& part)
{
    const auto flaws =
        TRY(Parts::read(part, [this](const WrittenResult& result) { return add(result); }));
    if (flaws.unreadable) {
        m_unreadable.append(*flaws.unreadable);
        m_status = ExitStatus::trouble;
    }
    if (flaws.torn)
        m_torn.append(*flaws.torn);
    return {};
}

Result<void> Collection::add(const WrittenResult& result)
{
    const auto [place, isNew] = m_seen.try_emplace(result.file.name);
    Seen& seen = place->second;
    if (!isNew && !std::exchange(seen.isTwice, true))
        m_twice.push_back(result.file.name);
    if (!result.file.outcome)
        return isNew ? keepForLater(result) : Result<void>();
    if (std::exchange(seen.isAnalysed, true))
        return {};
    ++m_verdicts[CheckedFile::verdict(result.file.outcome->report)];
    return tell(result);
}

Result<void> Collection::keepForLater(const WrittenResult& result)
{
    if (!m_scratch) {
        m_scratch.emplace(TRY(ScratchFolder::make()));
        const auto path = m_scratch->path() / scratchName;
        m_failed = FileDescriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        if (!m_failed.isOpen())
            return failure(scratchFile + u": "_s + Files::systemMessage(errno));
    }
    return Output::writeThrough(m_failed.get(), ResultLine::of(result.object, result.version),
                                scratchFile);
}

Result<void> Collection::finish()
{
    if (!m_scratch)
        return {};
    const auto flaws = TRY(Parts::read(m_scratch->path() / scratchName,
                                       [this](const WrittenResult& result) -> Result<void> {
                                           if (m_seen.at(result.file.name).isAnalysed)
                                               return {};
                                           ++m_failedCount;
                                           return tell(result);
                                       }));
    if (flaws.unreadable)
        return failure(*flaws.unreadable);
    return {};
}

Result<void> Collection::tell(const WrittenResult& result)
{
    m_status = worse(m_status, result.file.status());
    ++m_versions[result.version];
    return m_take(result);
}

} // namespace vantroque
