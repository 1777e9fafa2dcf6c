#include "VantroqueApp/Model/AppModel.h"

#include "Profiles/ProfileSelection.h"
#include "Profiles/ProfileStore.h"
#include "Tools/FFTool.h"

#include <algorithm>
#include <iterator>
#include <malloc.h>
#include <string_view>
#include <unordered_map>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

bool isVideo(const FileUrl& url)
{
    static const std::set<QString> extensions{u"mp4"_s, u"mov"_s,  u"m4v"_s, u"mxf"_s, u"webm"_s,
                                              u"mpg"_s, u"mpeg"_s, u"avi"_s, u"mkv"_s};
    return extensions.contains(url.extension().toLower());
}

/// A new choice of platforms lets go of some hundred thousand small blocks. Left to itself, the C
/// library keeps those as they are until some larger block is freed, and then joins all of them,
/// which takes it the time of three frames.
void joinFreedBlocksAtOnce()
{
    ::mallopt(M_MXFAST, 0);
}

} // namespace

AppModel::AppModel(UserDefaults& defaults, Desktop& desktop, AnalysisEngine engine,
                   Result<std::vector<Profile>> profiles)
    : m_defaults(defaults),
      m_desktop(desktop),
      m_engine(std::move(engine)),
      m_appearance(Appearance::load(defaults)),
      m_saver([this] { return workspace(); })
{
    joinFreedBlocksAtOnce();
    if (!profiles)
        m_profilesError = profiles.error().description;
    else if (profiles->empty())
        m_profilesError = ProfileStore::noneFoundText();
    else
        m_profiles = *std::move(profiles);
    takeChoice(ProfileSelectionStore(m_defaults).load(m_profiles));
    m_toolMissing = !FFTool::find("ffprobe") || !FFTool::find("ffmpeg");
    startRestoring();
}

AppModel::~AppModel()
{
    callOffAll();
}

// Profiles.

void AppModel::takeChoice(const std::set<QString>& ids)
{
    m_enabledProfileIDs = ids;
    auto enabled = std::make_shared<std::vector<Profile>>();
    for (const Profile& profile : m_profiles)
        if (ids.contains(profile.id))
            enabled->push_back(profile);
    m_enabledProfiles = std::move(enabled);
    ++m_choice;
}

void AppModel::setEnabledProfileIDs(const std::set<QString>& ids)
{
    if (ids == m_enabledProfileIDs)
        return;
    takeChoice(ids);
    ProfileSelectionStore(m_defaults).save(ids, m_profiles);
    Q_EMIT enabledProfilesChanged();
    rescoreAll();
}

void AppModel::toggle(const QString& profileID)
{
    std::set<QString> ids = m_enabledProfileIDs;
    if (ids.erase(profileID) == 0)
        ids.insert(profileID);
    setEnabledProfileIDs(ids);
}

// The list.

const FileAnalysis* AppModel::analysis(const QUuid& id) const
{
    const auto found = std::ranges::find(m_analyses, id, &FileAnalysis::id);
    return found == m_analyses.end() ? nullptr : &*found;
}

FileAnalysis* AppModel::find(const QUuid& id)
{
    return const_cast<FileAnalysis*>(analysis(id)); // of a list that is not const
}

const AnalysisProgress::Snapshot* AppModel::progress(const QUuid& id) const
{
    const auto found = m_progress.find(id);
    return found == m_progress.end() ? nullptr : found->second.get();
}

bool AppModel::isCurrent(const FileAnalysis& entry) const
{
    const auto* done = std::get_if<FileAnalysis::Done>(&entry.status);
    return done != nullptr && done->choice == m_choice;
}

bool AppModel::couldNotRescore(const FileAnalysis& entry) const
{
    return entry.is<FileAnalysis::Done>() && !isCurrent(entry) && entry.failedChoice == m_choice;
}

// List and selection are changed first and told afterwards, since who is told may change them
// again.

void AppModel::selectionMayHaveChanged(const std::optional<QUuid>& before)
{
    if (m_selectedAnalysisID == before)
        return;
    Q_EMIT selectionChanged();
    m_saver.schedule();
}

void AppModel::add(const std::vector<FileUrl>& urls)
{
    finishRestoring(); // what comes now comes last
    const auto before = m_selectedAnalysisID;
    append(urls);
    if (!m_selectedAnalysisID && !m_analyses.empty())
        m_selectedAnalysisID = m_analyses.front().id;
    Q_EMIT listChanged();
    selectionMayHaveChanged(before);
    pump();
    m_saver.schedule();
}

/// A folder may hold thousands of files, so the list is gone through once for all of them.
void AppModel::append(const std::vector<FileUrl>& urls)
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
            m_rescoring.erase(entry->id);
            callOff(entry->id);
            entry->id = {}; // it goes
        }
        entry = &added.emplace_back(FileAnalysis{.id = QUuid::createUuid(), .url = url});
    }
    std::erase_if(m_analyses, [](const FileAnalysis& entry) { return entry.id.isNull(); });
    std::ranges::move(added, std::back_inserter(m_analyses));
}

void AppModel::remove(QUuid id)
{
    const FileAnalysis* entry = find(id);
    if (entry == nullptr)
        return;
    const auto before = m_selectedAnalysisID;
    const auto index = entry - m_analyses.data();
    m_analyses.erase(m_analyses.begin() + index);
    m_rescoring.erase(id);
    callOff(id);
    if (before == id) {
        const auto next = std::min(std::ssize(m_analyses) - 1, index);
        m_selectedAnalysisID =
            next < 0 ? std::nullopt : std::optional(m_analyses[static_cast<std::size_t>(next)].id);
    }
    Q_EMIT listChanged();
    selectionMayHaveChanged(before);
    if (comparableSources().size() < 2)
        setComparing(false);
    m_saver.schedule();
}

void AppModel::clearAll()
{
    finishRestoring();
    const auto before = std::exchange(m_selectedAnalysisID, std::nullopt);
    m_analyses.clear();
    m_rescoring.clear();
    callOffAll();
    Q_EMIT listChanged();
    selectionMayHaveChanged(before);
    setComparing(false);
    m_saver.schedule();
}

// Selection and comparison.

void AppModel::select(const std::optional<QUuid>& id)
{
    selectionMayHaveChanged(std::exchange(m_selectedAnalysisID, id));
}

const FileAnalysis* AppModel::selected() const
{
    return m_selectedAnalysisID ? analysis(*m_selectedAnalysisID) : nullptr;
}

const FileReport* AppModel::selectedReport() const
{
    const FileAnalysis* entry = selected();
    return entry != nullptr ? entry->report() : nullptr;
}

const MediaInfo* AppModel::selectedMedia() const
{
    const FileAnalysis* entry = selected();
    return entry != nullptr ? entry->media.get() : nullptr;
}

std::vector<AppModel::ComparableSource> AppModel::comparableSources() const
{
    std::vector<ComparableSource> sources;
    for (const FileAnalysis& entry : m_analyses)
        if (const FileReport* report = entry.report();
            report != nullptr && report->video && report->video->width >= 1)
            sources.push_back({entry.url, report->fileName, *report->video});
    return sources;
}

void AppModel::setComparing(bool comparing)
{
    if (std::exchange(m_comparing, comparing) != comparing)
        Q_EMIT comparingChanged();
}

// The rest.

void AppModel::setAppearance(AppearanceMode mode)
{
    Appearance::save(mode, m_defaults);
    if (std::exchange(m_appearance, mode) != mode)
        Q_EMIT appearanceChanged();
}

void AppModel::setExportMessage(const std::optional<QString>& message)
{
    m_exportMessage = message;
    Q_EMIT exportMessageChanged();
}

} // namespace vantroque
