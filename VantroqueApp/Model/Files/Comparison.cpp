#include "VantroqueApp/Model/Files/Comparison.h"

#include <algorithm>
#include <utility>

namespace vantroque {

Comparison::Comparison(const FileList& files) : m_files(files)
{
    connect(&files, &FileList::removed, this, [this] {
        if (!canCompare())
            setComparing(false);
    });
}

std::vector<Comparison::ComparableSource> Comparison::comparableSources() const
{
    std::vector<ComparableSource> sources;
    for (const FileAnalysis& entry : m_files.analyses())
        if (isComparable(entry))
            sources.push_back({entry.url, entry.report()->fileName, *entry.report()->video});
    return sources;
}

bool Comparison::isComparable(const FileAnalysis& entry)
{
    const FileReport* report = entry.report();
    return report != nullptr && report->video && report->video->width >= 1;
}

bool Comparison::canCompare() const
{
    return std::ranges::count_if(m_files.analyses(), isComparable) >= 2;
}

void Comparison::setComparing(bool comparing)
{
    if (std::exchange(m_comparing, comparing) != comparing)
        Q_EMIT changed();
}

} // namespace vantroque
