#include "VantroqueApp/Model/Files/Comparison.h"

#include <utility>

namespace vantroque {

Comparison::Comparison(const FileList& files) : m_files(files)
{
    connect(&files, &FileList::removed, this, [this] {
        if (comparableSources().size() < 2)
            setComparing(false);
    });
}

std::vector<Comparison::ComparableSource> Comparison::comparableSources() const
{
    std::vector<ComparableSource> sources;
    for (const FileAnalysis& entry : m_files.analyses())
        if (const FileReport* report = entry.report();
            report != nullptr && report->video && report->video->width >= 1)
            sources.push_back({entry.url, report->fileName, *report->video});
    return sources;
}

void Comparison::setComparing(bool comparing)
{
    if (std::exchange(m_comparing, comparing) != comparing)
        Q_EMIT changed();
}

} // namespace vantroque
