// What is remembered between runs, and what leaves the program.

#include "Base/Files.h"
#include "Base/Text.h"
#include "Check/TextRenderer.h"
#include "Review/ReviewStore.h"
#include "VantroqueApp/Model/AppModel.h"

#include <filesystem>

namespace vantroque {

using namespace Qt::StringLiterals;

Workspace AppModel::workspace() const
{
    Workspace workspace;
    for (const FileAnalysis& entry : m_analyses) {
        const auto* done = std::get_if<FileAnalysis::Done>(&entry.status);
        WorkspaceFile file = WorkspaceFile::of(entry.url);
        file.fingerprint = entry.fingerprint;
        file.report = done != nullptr ? done->report : nullptr;
        file.media = entry.media;
        if (entry.id == m_selectedAnalysisID)
            workspace.select(entry.url);
        workspace.files.push_back(std::move(file));
    }
    workspace.savedAt = QDateTime::currentDateTimeUtc();
    return workspace;
}

void AppModel::saveWorkspaceNow()
{
    if (!isRestoring()) // else the stored one is still right
        m_saver.saveNow();
    m_defaults.waitUntilWritten();
}

void AppModel::startRestoring()
{
    std::error_code error;
    if (!std::filesystem::exists(WorkspaceStore::path(), error))
        return;
    m_stored = std::async(std::launch::async, [this] {
        auto stored = WorkspaceStore::load();
        m_mailbox.post([this] { finishRestoring(); });
        return stored;
    });
}

void AppModel::finishRestoring()
{
    if (!isRestoring())
        return;
    const auto stored = m_stored.get();
    if (stored && !stored->files.empty())
        restore(*stored);
    Q_EMIT listChanged();
    if (m_selectedAnalysisID)
        Q_EMIT selectionChanged();
}

void AppModel::restore(const Workspace& stored)
{
    const auto selected = stored.selectedUrl();
    for (const WorkspaceFile& file : stored.files) {
        FileAnalysis entry{.id = QUuid::createUuid(), .url = file.url()};
        entry.media = file.media;
        entry.fingerprint = file.fingerprint;
        // Scored for a choice of profiles that may be another by now.
        if (file.report)
            entry.status = FileAnalysis::Done{file.report, 0};
        if (!m_selectedAnalysisID && selected == entry.url)
            m_selectedAnalysisID = entry.id;
        m_analyses.push_back(std::move(entry));
    }
    if (!m_selectedAnalysisID)
        m_selectedAnalysisID = m_analyses.front().id;
    refreshSignOffs();
    rescoreAll();
    pump();
    verifyRestoredFiles();
}

void AppModel::verifyRestoredFiles()
{
    for (const FileAnalysis& entry : m_analyses)
        if (entry.is<FileAnalysis::Done>() || entry.hasCurrentMedia())
            m_verifier.run([this, id = entry.id, url = entry.url] {
                std::error_code error;
                const bool exists = std::filesystem::exists(url.path(), error);
                std::optional<QString> fingerprint;
                if (exists)
                    if (auto computed = ReviewStore::fingerprint(url))
                        fingerprint = *std::move(computed);
                m_mailbox.post(
                    [this, id, exists, fingerprint] { takeVerified(id, exists, fingerprint); });
            });
}

void AppModel::takeVerified(const QUuid& id, bool exists, const std::optional<QString>& fingerprint)
{
    FileAnalysis* entry = find(id);
    if (entry == nullptr || !(entry->is<FileAnalysis::Done>() || entry->canBeScored()))
        return;
    if (!exists) {
        entry->status = FileAnalysis::Missing{};
        Q_EMIT entryChanged(id);
    } else if (entry->fingerprint && fingerprint && entry->fingerprint != fingerprint) {
        entry->fingerprint = fingerprint;
        queueAgain(*entry);
    } else if (!entry->fingerprint) {
        entry->fingerprint = fingerprint;
    }
    m_saver.schedule();
}

// Markers.

void AppModel::saveReport()
{
    std::vector<std::shared_ptr<const FileReport>> reports;
    for (const FileAnalysis& entry : m_analyses)
        if (const auto* done = std::get_if<FileAnalysis::Done>(&entry.status))
            reports.push_back(done->report);
    if (reports.empty())
        return;
    const auto target = m_desktop.chooseSaveFile(u"Vantroque Report.txt"_s);
    if (!target)
        return;
    m_files.run([this, reports = std::move(reports), target = *target] {
        const QString text =
            Text::joined(reports, TextRenderer::separator(),
                         [](const auto& report) { return TextRenderer::render(*report, false); });
        if (!Files::writeAtomically(target.path(), text.toUtf8()))
            return;
        // All of them, so that nobody takes it for the one that is shown.
        m_mailbox.post(
            [this, message = u"Saved %1 report%2 to %3"_s.arg(
                       QString::number(reports.size()), Text::plural(std::ssize(reports)),
                       target.fileName())] { setExportMessage(message); });
    });
}

void AppModel::exportMarkers(MarkerExport::Format format)
{
    const FileAnalysis* entry = selected();
    if (entry == nullptr || entry->report() == nullptr || !entry->media)
        return setExportMessage(u"Analyse a file first."_s);
    const auto media = entry->media;
    // A new choice of profiles may not be scored yet.
    const bool isScored =
        isCurrent(*entry) || Analyzer::needsAdditionalSignalPass(*media, *m_enabledProfiles);
    const FileReport report =
        isScored ? *entry->report() : Analyzer::report(*media, *m_enabledProfiles);
    const auto review = entry->fingerprint ? ReviewStore::load(*entry->fingerprint) : std::nullopt;
    const auto markers =
        MarkerExport::markers({.review = review ? &*review : nullptr, .report = &report},
                              media->video ? media->video->nominalFrameRate : 0);
    if (markers.empty())
        return setExportMessage(u"This file has no notes or findings yet."_s);
    const auto target =
        m_desktop.chooseSaveFile(entry->url.stem() + MarkerExport::fileSuffix(format) + u'.'
                                 + MarkerExport::fileExtension(format));
    if (!target)
        return;
    // The context may ask ffprobe, so it is made in the background.
    m_files.run([=, this] {
        const QString text = MarkerExport::write(markers, format, MarkerExport::context(*media));
        const auto written = Files::writeAtomically(target->path(), text.toUtf8());
        m_mailbox.post([this, message = written ? u"Saved %1 marker%2 to %3"_s.arg(
                                            QString::number(markers.size()),
                                            Text::plural(std::ssize(markers)), target->fileName())
                                                : u"Could not write the markers: "_s
                                                      + written.error().description] {
            setExportMessage(message);
        });
    });
}

} // namespace vantroque
