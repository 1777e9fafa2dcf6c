#include "VantroqueApp/Model/Compare/OpenComparison.h"

#include <algorithm>

namespace vantroque {

namespace {

CompareController::Source sourceOf(const FileAnalysis& entry)
{
    return {.file = *PlayedFile::of(entry), .name = entry.report()->fileName};
}

} // namespace

OpenComparison::OpenComparison(const FileList& files, Comparison& comparison,
                               const PlayerSurroundings& surroundings)
    : m_files(files), m_comparison(comparison), m_surroundings(surroundings)
{
    connect(&comparison, &Comparison::changed, this, &OpenComparison::sync);
    connect(&files, &FileList::entryChanged, this, &OpenComparison::join);
}

OpenComparison::~OpenComparison() = default;

void OpenComparison::sync()
{
    if (m_comparison.comparing() == (m_controller != nullptr))
        return;
    if (m_controller) {
        Q_EMIT aboutToGo();
        m_controller.reset();
    } else {
        open();
    }
    Q_EMIT changed();
}

std::vector<const FileAnalysis*> OpenComparison::chosen() const
{
    std::vector<const FileAnalysis*> all;
    for (const FileAnalysis& entry : m_files.analyses())
        if (Comparison::isComparable(entry))
            all.push_back(&entry);
    std::vector<const FileAnalysis*> selected = all;
    std::erase_if(selected,
                  [&](const auto* entry) { return !m_files.selection().ids.contains(entry->id); });
    return selected.size() >= 2 ? selected : all;
}

void OpenComparison::open()
{
    m_known.clear();
    for (const FileAnalysis& entry : m_files.analyses())
        if (Comparison::isComparable(entry))
            m_known.insert(entry.id);
    std::vector<CompareController::Source> sources;
    const auto entries = chosen();
    for (std::size_t i = 0; i < std::min(entries.size(), mostFiles); ++i)
        sources.push_back(sourceOf(*entries[i]));
    m_leftOut = entries.size() - sources.size();
    m_controller = std::make_unique<CompareController>(sources, m_surroundings);
}

void OpenComparison::join(const QUuid& id)
{
    const FileAnalysis* entry = m_files.analysis(id);
    if (!m_controller || entry == nullptr || !Comparison::isComparable(*entry)
        || !m_known.insert(id).second)
        return;
    if (m_controller->tiles().size() < mostFiles)
        return m_controller->add(sourceOf(*entry));
    ++m_leftOut;
    Q_EMIT changed();
}

} // namespace vantroque
