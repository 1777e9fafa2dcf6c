#include "VantroqueApp/Model/Files/FileRemoval.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace vantroque {

namespace {

void waitAgain(FileAnalysis& file, FileSelection& selection)
{
    const QUuid before = std::exchange(file.id, QUuid::createUuid());
    file.status = FileAnalysis::Queued{};
    file.media = nullptr;
    if (selection.ids.erase(before) > 0)
        selection.ids.insert(file.id);
    if (selection.lead == before)
        selection.lead = file.id;
}

} // namespace

FileRemoval FileRemoval::takeOut(std::vector<FileAnalysis>& files, const FileIds& ids,
                                 FileSelection selection)
{
    FileRemoval removal{.entries = {}, .selection = std::move(selection)};
    std::vector<FileAnalysis> kept;
    for (std::size_t place = 0; place < files.size(); ++place) {
        FileAnalysis& file = files[place];
        if (!ids.contains(file.id)) {
            kept.push_back(std::move(file));
            continue;
        }
        if (file.is<FileAnalysis::Running>())
            waitAgain(file, removal.selection);
        removal.entries.push_back({place, std::move(file)});
    }
    files = std::move(kept);
    return removal;
}

void FileRemoval::putBack(std::vector<FileAnalysis>& files) const
{
    std::unordered_set<std::string_view> known;
    for (const FileAnalysis& file : files)
        known.insert(file.url.path().native());
    std::vector<const Entry*> gone;
    for (const Entry& entry : entries)
        if (!known.contains(entry.file.url.path().native()))
            gone.push_back(&entry);
    std::vector<FileAnalysis> all;
    all.reserve(files.size() + gone.size());
    auto next = files.begin();
    for (const Entry* entry : gone) {
        while (all.size() < entry->place && next != files.end())
            all.push_back(std::move(*next++));
        all.push_back(entry->file);
    }
    std::move(next, files.end(), std::back_inserter(all));
    files = std::move(all);
}

} // namespace vantroque
