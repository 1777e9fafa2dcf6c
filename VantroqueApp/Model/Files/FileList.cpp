#include "VantroqueApp/Model/Files/FileList.h"

#include "Base/FilmTypes.h"
#include "Captions/CaptionLoader.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Unique while the program runs, which is all that an entry needs. QUuid::createUuid would ask the
/// system for each, and thousands may be added at once.
QUuid newId()
{
    std::array<quint32, 4> words{};
    QRandomGenerator::global()->fillRange(words.data(), std::ssize(words));
    return QUuid::fromRfc4122(QByteArrayView(reinterpret_cast<const char*>(words.data()),
                                             static_cast<qsizetype>(sizeof words)));
}

} // namespace

const FileAnalysis* FileList::analysis(const QUuid& id) const
{
    const auto place = m_places.find(id);
    return place == m_places.end() ? nullptr : &m_analyses[*place];
}

void FileList::reindex()
{
    m_places.clear();
    m_places.reserve(std::ssize(m_analyses));
    for (std::size_t i = 0; i < m_analyses.size(); ++i)
        m_places.insert(m_analyses[i].id, i);
}

void FileList::change(const QUuid& id, const Change& change)
{
    const auto place = m_places.find(id);
    if (place == m_places.end())
        return;
    change(m_analyses[*place]);
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

void FileList::queueSelectedAgain()
{
    std::vector<QUuid> ids;
    for (const FileAnalysis* entry : allSelected())
        if (!entry->is<FileAnalysis::Queued>() && !entry->is<FileAnalysis::Running>())
            ids.push_back(entry->id);
    for (const QUuid& id : ids)
        queueAgain(id);
}

std::vector<SkippedFile> FileList::add(const std::vector<FileUrl>& urls)
{
    if (const auto captions = std::ranges::find_if(urls, CaptionLoader::isSidecar);
        captions != urls.end())
        Q_EMIT captionsAdded(*captions);
    Q_EMIT aboutToAddOrClear();
    const FileSelection before = m_selection;
    auto skipped = append(urls);
    keepLead();
    Q_EMIT listChanged();
    tellSelection(before);
    Q_EMIT queued();
    Q_EMIT contentChanged();
    return skipped;
}

/// A folder may hold thousands of files, so the list is gone through once for all of them.
std::vector<SkippedFile> FileList::append(const std::vector<FileUrl>& urls)
{
    std::unordered_map<std::string_view, FileAnalysis*> known;
    known.reserve(m_analyses.size() + urls.size());
    for (FileAnalysis& entry : m_analyses)
        known.emplace(entry.url.path().native(), &entry);
    const auto captions = std::ranges::find_if(urls, CaptionLoader::isSidecar);
    std::vector<SkippedFile> skipped;
    std::vector<FileAnalysis> added;
    added.reserve(urls.size()); // each stays where it is
    for (const FileUrl& url : urls) {
        if (!FilmTypes::isFilm(url)) {
            if (captions == urls.end() || url != *captions)
                skipped.push_back({url.fileName(), u"is not a video file"_s});
            continue;
        }
        FileAnalysis*& entry = known[url.path().native()];
        if (entry != nullptr) {
            if (entry->is<FileAnalysis::Queued>() || entry->is<FileAnalysis::Running>())
                continue;
            m_selection.ids.erase(entry->id);
            if (entry->id == m_selection.lead)
                m_selection.lead.reset();
            entry->id = {}; // it goes
        }
        entry = &added.emplace_back(FileAnalysis{.id = newId(), .url = url});
    }
    std::erase_if(m_analyses, [](const FileAnalysis& entry) { return entry.id.isNull(); });
    m_analyses.insert(m_analyses.end(), std::make_move_iterator(added.begin()),
                      std::make_move_iterator(added.end()));
    reindex();
    return skipped;
}

/// Something is selected as long as there is anything.
void FileList::keepLead()
{
    if (m_selection.lead || m_analyses.empty())
        return;
    m_selection.lead = m_selection.ids.empty() ? m_analyses.front().id : *m_selection.ids.begin();
    m_selection.ids.insert(*m_selection.lead);
}

void FileList::restore(std::vector<FileAnalysis> entries, const std::optional<QUuid>& selected)
{
    std::ranges::move(entries, std::back_inserter(m_analyses));
    reindex();
    const auto before = std::exchange(m_selection, FileSelection::of(selected));
    Q_EMIT listChanged();
    tellSelection(before);
}

void FileList::remove(const FileIds& ids)
{
    if (std::ranges::any_of(m_analyses, [&](const auto& entry) { return ids.contains(entry.id); }))
        takeOut(ids);
}

void FileList::clearAll()
{
    Q_EMIT aboutToAddOrClear();
    FileIds all;
    for (const FileAnalysis& entry : m_analyses)
        all.insert(entry.id);
    takeOut(all);
}

/// When none of the selected ones is left, what follows the one that led is selected.
void FileList::takeOut(const FileIds& ids)
{
    const FileSelection before = m_selection;
    const FileAnalysis* lead = before.lead ? analysis(*before.lead) : nullptr;
    const auto place = lead != nullptr ? lead - m_analyses.data() : 0;
    const auto after = place
                       - std::count_if(m_analyses.begin(), m_analyses.begin() + place,
                                       [&](const auto& entry) { return ids.contains(entry.id); });
    auto removal = FileRemoval::takeOut(m_analyses, ids, before);
    reindex();
    if (!removal.entries.empty())
        m_removal = std::move(removal);
    std::erase_if(m_selection.ids, [&](const QUuid& id) { return ids.contains(id); });
    if (m_selection.lead && ids.contains(*m_selection.lead)) {
        m_selection.lead.reset();
        if (m_selection.ids.empty() && !m_analyses.empty()) {
            const auto next = std::min(std::ssize(m_analyses) - 1, after);
            m_selection = FileSelection::of(m_analyses[static_cast<std::size_t>(next)].id);
        }
        keepLead();
    }
    Q_EMIT listChanged();
    tellSelection(before);
    Q_EMIT removed();
    Q_EMIT contentChanged();
}

void FileList::bringBack()
{
    if (!m_removal)
        return;
    const FileSelection before = m_selection;
    const FileRemoval removal = *std::move(m_removal);
    m_removal.reset();
    removal.putBack(m_analyses);
    reindex();
    m_selection = removal.selection;
    std::erase_if(m_selection.ids, [this](const QUuid& id) { return !m_places.contains(id); });
    if (m_selection.lead && !m_places.contains(*m_selection.lead))
        m_selection.lead.reset();
    keepLead();
    Q_EMIT listChanged();
    tellSelection(before);
    Q_EMIT broughtBack();
    Q_EMIT contentChanged();
}

void FileList::select(FileSelection selection)
{
    const auto before = std::exchange(m_selection, std::move(selection));
    tellSelection(before);
    if (m_selection != before)
        Q_EMIT contentChanged();
}

void FileList::tellSelection(const FileSelection& before)
{
    if (m_selection != before)
        Q_EMIT selectionChanged();
}

std::vector<const FileAnalysis*> FileList::allSelected() const
{
    std::vector<const FileAnalysis*> selected;
    for (const FileAnalysis& entry : m_analyses)
        if (m_selection.ids.contains(entry.id))
            selected.push_back(&entry);
    return selected;
}

const FileAnalysis* FileList::selected() const
{
    return m_selection.ids.size() == 1 ? analysis(*m_selection.ids.begin()) : nullptr;
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
    std::array<std::vector<QUuid>, 3> ranks;
    for (const FileAnalysis& entry : m_analyses)
        ranks.at(entry.id == m_selection.lead   ? 0
                 : m_visible.contains(entry.id) ? 1
                                                : 2)
            .push_back(entry.id);
    std::vector<QUuid> ids;
    ids.reserve(m_analyses.size());
    for (const auto& rank : ranks)
        ids.insert(ids.end(), rank.begin(), rank.end());
    return ids;
}

} // namespace vantroque
