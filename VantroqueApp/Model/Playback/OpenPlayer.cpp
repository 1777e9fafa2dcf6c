#include "VantroqueApp/Model/Playback/OpenPlayer.h"

#include <utility>

namespace vantroque {

OpenPlayer::OpenPlayer(FileList& files, const PlayerSurroundings& surroundings)
    : m_files(files), m_surroundings(surroundings)
{
    connect(&files, &FileList::selectionChanged, this, &OpenPlayer::dropIfAnother);
    connect(&files, &FileList::entryChanged, this, &OpenPlayer::refreshPlayerReport);
    connect(&files, &FileList::captionsAdded, this, [this](const FileUrl& captions) {
        if (m_player)
            m_player->captions().loadCaptions(captions);
    });
    // What was deleted last is what comes back first, and that are files now.
    connect(&files, &FileList::removed, this, [this] {
        m_removed.clear();
        if (m_player)
            m_player->notebook().setRemoved({});
    });
}

OpenPlayer::~OpenPlayer() = default;

void OpenPlayer::syncPlayer()
{
    const FileAnalysis* entry = m_files.selected();
    auto file = entry != nullptr ? PlayedFile::of(*entry) : std::nullopt;
    if (!file)
        return drop();
    const auto& report = std::get<FileAnalysis::Done>(entry->status).report;
    if (m_player && m_player->file().url == entry->url) {
        m_player->setReport(report);
        return m_player->setMedia(entry->media);
    }
    drop();
    m_player = std::make_unique<PlayerController>(*std::move(file), report, m_surroundings);
    m_player->setMedia(entry->media);
    giveDraftBack();
    Q_EMIT playerChanged();
}

void OpenPlayer::rest()
{
    if (m_player)
        m_player->shuttle().stop();
}

void OpenPlayer::dropIfAnother()
{
    const FileAnalysis* entry = m_files.selected();
    if (m_player && (entry == nullptr || !(m_player->file().url == entry->url)))
        drop();
}

void OpenPlayer::refreshPlayerReport(const QUuid& id)
{
    if (m_player && id == m_files.selectedAnalysisID())
        syncPlayer();
}

void OpenPlayer::drop()
{
    if (!m_player)
        return;
    setVideoFocused(false);
    keepDraft();
    Q_EMIT playerAboutToGo();
    m_player.reset();
    Q_EMIT playerChanged();
}

void OpenPlayer::keepDraft()
{
    const Notebook& notebook = m_player->notebook();
    if (notebook.hasDraft())
        m_drafts[m_player->file().url.path()] = {.draft = notebook.draft(),
                                                 .frame = m_player->playhead().frame()};
    if (!notebook.removed().empty())
        m_removed[m_player->file().url.path()] = notebook.removed();
}

/// With the frame that it is about.
void OpenPlayer::giveDraftBack()
{
    if (auto removed = m_removed.extract(m_player->file().url.path()))
        m_player->notebook().setRemoved(std::move(removed.mapped()));
    auto kept = m_drafts.extract(m_player->file().url.path());
    if (!kept)
        return;
    m_player->notebook().setDraft(std::move(kept.mapped().draft));
    m_player->seek(kept.mapped().frame);
}

void OpenPlayer::setVideoFocused(bool focused)
{
    if (std::exchange(m_videoFocused, focused) != focused)
        Q_EMIT videoFocusedChanged();
}

} // namespace vantroque
