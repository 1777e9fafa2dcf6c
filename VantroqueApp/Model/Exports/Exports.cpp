#include "VantroqueApp/Model/Exports/Exports.h"

#include "Analysis/Analyzer.h"
#include "Base/Files.h"
#include "Base/Text.h"
#include "Check/TextRenderer.h"

namespace vantroque {

using namespace Qt::StringLiterals;

/// What markers are made of, beside the review.
struct Exports::MarkerSource {
    MarkerExport::Format format = MarkerExport::Format::csv;
    FileUrl url;
    std::shared_ptr<const MediaInfo> media;
    std::shared_ptr<const FileReport> report;
    /// For which a report is still to be made; null when there is one.
    std::shared_ptr<const std::vector<Profile>> profiles;
};

Exports::Exports(const FileList& files, const ProfileChoice& choice, ReviewBook& book,
                 Desktop& desktop)
    : m_files(files), m_choice(choice), m_book(book), m_desktop(desktop)
{
}

void Exports::setExportMessage(const std::optional<QString>& message)
{
    m_exportMessage = message;
    Q_EMIT exportMessageChanged();
}

void Exports::saveReport()
{
    std::vector<std::shared_ptr<const FileReport>> reports;
    for (const FileAnalysis& entry : m_files.analyses())
        if (const auto* done = std::get_if<FileAnalysis::Done>(&entry.status))
            reports.push_back(done->report);
    if (reports.empty())
        return;
    const auto target = m_desktop.chooseSaveFile(u"Vantroque Report.txt"_s);
    if (!target)
        return;
    // All of them, so that nobody takes it for the one that is shown.
    const QString saved = u"Saved %1 report%2 to %3"_s.arg(
        QString::number(reports.size()), Text::plural(std::ssize(reports)), target->fileName());
    m_tasks.run(
        [reports = std::move(reports), target = *target] {
            const QString text =
                Text::joined(reports, TextRenderer::separator(), [](const auto& report) {
                    return TextRenderer::render(*report, false);
                });
            return Files::writeAtomically(target.path(), text.toUtf8()).has_value();
        },
        [this, saved](bool isWritten) {
            if (isWritten)
                setExportMessage(saved);
        });
}

void Exports::exportMarkers(MarkerExport::Format format)
{
    const FileAnalysis* entry = m_files.selected();
    if (entry == nullptr || entry->report() == nullptr || !entry->media)
        return setExportMessage(u"Analyse a file first."_s);
    if (std::exchange(m_isPreparing, true))
        return;
    // A new choice of profiles may not be scored yet.
    const bool isScored =
        entry->isScoredFor(m_choice.number())
        || Analyzer::needsAdditionalSignalPass(*entry->media, m_choice.enabledProfiles());
    const MarkerSource source{.format = format,
                              .url = entry->url,
                              .media = entry->media,
                              .report = std::get<FileAnalysis::Done>(entry->status).report,
                              .profiles = isScored ? nullptr : m_choice.shared()};
    const auto prepare = [this, source](const ReviewBook::Review& review) {
        m_tasks.run([source, review] { return markers(source, review); },
                    [this, source](const std::vector<Marker>& markers) {
                        m_isPreparing = false;
                        askAndWrite(source, markers);
                    });
    };
    if (entry->fingerprint)
        m_book.read(*entry->fingerprint, prepare);
    else
        prepare(nullptr);
}

/// In the background.
std::vector<Marker> Exports::markers(const MarkerSource& source, const ReviewBook::Review& review)
{
    const FileReport report =
        source.profiles ? Analyzer::report(*source.media, *source.profiles) : *source.report;
    return MarkerExport::markers({.review = review.get(), .report = &report},
                                 source.media->video ? source.media->video->nominalFrameRate : 0);
}

void Exports::askAndWrite(const MarkerSource& source, const std::vector<Marker>& markers)
{
    if (markers.empty())
        return setExportMessage(u"This file has no notes or findings yet."_s);
    const auto target =
        m_desktop.chooseSaveFile(source.url.stem() + MarkerExport::fileSuffix(source.format) + u'.'
                                 + MarkerExport::fileExtension(source.format));
    if (!target)
        return;
    const QString saved = u"Saved %1 marker%2 to %3"_s.arg(
        QString::number(markers.size()), Text::plural(std::ssize(markers)), target->fileName());
    // The context may ask ffprobe.
    m_tasks.run(
        [source, markers, target = *target] {
            const QString text =
                MarkerExport::write(markers, source.format, MarkerExport::context(*source.media));
            return Files::writeAtomically(target.path(), text.toUtf8());
        },
        [this, saved](const Result<void>& written) {
            setExportMessage(
                written ? saved : u"Could not write the markers: "_s + written.error().description);
        });
}

} // namespace vantroque
