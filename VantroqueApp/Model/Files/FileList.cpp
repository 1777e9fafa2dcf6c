#include "VantroqueApp/Model/Files/FileList.h"

#include "Captions/CaptionLoader.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

bool isVideo(const FileUrl& url)
{
    static const std::set<QString> extensions{u"mp4"_s, u"mov"_s,  u"m4v"_s, u"mxf"_s, u"webm"_s,
                                              u"mpg"_s, u"mpeg"_s, u"avi"_s, u"mkv"_s};
    return extensions.contains(url.extension().toLower());
}

} // namespace

const FileAnalysis* FileList::analysis(const QUuid& id) const
{
    const auto found = std::ranges::find(m_analyses, id, &FileAnalysis::id);
    return found == m_analyses.end() ? nullptr : &*found;
}

void FileList::change(const QUuid& id, const Change& change)
{
    const auto found = std::ranges::find(m_analyses, id, &FileAnalysis::id);
    if (found == m_analyses.end())
        return;
    change(*found);
    Q_EMIT entryChanged(id);
}

void FileList::queueAgain(const QUuid& id)
{
    change(id, [](FileAnalysis& entry) {
        entry.status = FileAnalysis::Queued{};
        entry.media = nullptr;
    });
    Q_EMIT queued();
}

void FileList::add(const std::vector<FileUrl>& urls)
{
    if (const auto captions = std::ranges::find_if(urls, CaptionLoader::isSidecar);
        captions != urls.end())
        Q_EMIT captionsAdded(*captions);
    Q_EMIT aboutToAddOrClear();
    const auto before = m_selectedAnalysisID;
    append(urls);
    if (!m_selectedAnalysisID && !m_analyses.empty())
        m_selectedAnalysisID = m_analyses.front().id;
    Q_EMIT listChanged();
    tellSelection(before);
    Q_EMIT queued();
    Q_EMIT contentChanged();
}

/// A folder may hold thousands of files, so the list is gone through once for all of them.
void FileList::append(const std::vector<FileUrl>& urls)
{
    std::unordered_map<std::string_view, FileAnalysis*> known;
    for (FileAnalysis& entry : m_analyses)
        known.emplace(entry.url.path().native(), &entry);
    std::vector<FileAnalysis> added;
    added.reserve(urls.size()); // each stays where it is
    for (const FileUrl& url : urls) {
        if (!isVideo(url))
            continue;
        FileAnalysis*& entry = known[url.path().native()];
        if (entry != nullptr) {
            if (entry->is<FileAnalysis::Queued>() || entry->is<FileAnalysis::Running>())
                continue;
            if (entry->id == m_selectedAnalysisID)
                m_selectedAnalysisID.reset();
            entry->id = {}; // it goes
        }
        entry = &added.emplace_back(FileAnalysis{.id = QUuid::createUuid(), .url = url});
    }
    std::erase_if(m_analyses, [](const FileAnalysis& entry) { return entry.id.isNull(); });
    std::ranges::move(added, std::back_inserter(m_analyses));
}

void FileList::restore(std::vector<FileAnalysis> entries, const std::optional<QUuid>& selected)
{
    std::ranges::move(entries, std::back_inserter(m_analyses));
    const auto before = std::exchange(m_selectedAnalysisID, selected);
    Q_EMIT listChanged();
    tellSelection(before);
}

void FileList::remove(QUuid id)
{
    const FileAnalysis* entry = analysis(id);
    if (entry == nullptr)
        return;
    const auto before = m_selectedAnalysisID;
    const auto index = entry - m_analyses.data();
    m_analyses.erase(m_analyses.begin() + index);
    if (before == id) {
        const auto next = std::min(std::ssize(m_analyses) - 1, index);
        m_selectedAnalysisID =
            next < 0 ? std::nullopt : std::optional(m_analyses[static_cast<std::size_t>(next)].id);
    }
    Q_EMIT listChanged();
    tellSelection(before);
    Q_EMIT removed();
    Q_EMIT contentChanged();
}

void FileList::clearAll()
{
    Q_EMIT aboutToAddOrClear();
    const auto before = std::exchange(m_selectedAnalysisID, std::nullopt);
    m_analyses.clear();
    Q_EMIT listChanged();
    tellSelection(before);
    Q_EMIT removed();
    Q_EMIT contentChanged();
}

void FileList::select(const std::optional<QUuid>& id)
{
    const auto before = std::exchange(m_selectedAnalysisID, id);
    tellSelection(before);
    if (m_selectedAnalysisID != before)
        Q_EMIT contentChanged();
}

void FileList::tellSelection(const std::optional<QUuid>& before)
{
    if (m_selectedAnalysisID != before)
        Q_EMIT selectionChanged();
}

const FileAnalysis* FileList::selected() const
{
    return m_selectedAnalysisID ? analysis(*m_selectedAnalysisID) : nullptr;
}

const FileReport* FileList::selectedReport() const
{
    const FileAnalysis* entry = selected();
    return entry != nullptr ? entry->report() : nullptr;
}

const MediaInfo* FileList::selectedMedia() const
{
    const FileAnalysis* entry = selected();
    return entry != nullptr ? entry->media.get() : nullptr;
}

std::vector<QUuid> FileList::inOrderOfUrgency() const
{
    std::vector<QUuid> ids;
    for (const FileAnalysis& entry : m_analyses)
        ids.push_back(entry.id);
    std::ranges::stable_sort(ids, {}, [this](const QUuid& id) {
        return id == m_selectedAnalysisID ? 0 : m_visible.contains(id) ? 1 : 2;
    });
    return ids;
}

} // namespace vantroque
