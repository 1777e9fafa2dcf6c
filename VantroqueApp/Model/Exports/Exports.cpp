#include "VantroqueApp/Model/Exports/Exports.h"

#include "Base/Files.h"
#include "Base/Text.h"
#include "Check/TextRenderer.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

std::vector<FileUrl> films(const FileList& files)
{
    std::vector<FileUrl> films;
    for (const FileAnalysis& entry : files.analyses())
        films.push_back(entry.url);
    return films;
}

Result<void> written(const QString& text, const FileUrl& target, const std::vector<FileUrl>& films)
{
    TRY(guardFilms(target, films));
    return Files::writeAtomically(target.path(), text.toUtf8());
}

} // namespace

Exports::Exports(const FileList& files, const ProfileChoice& choice, ReviewBook& book,
                 Desktop& desktop, SpellChecker& checker)
    : m_files(files), m_choice(choice), m_book(book), m_desktop(desktop), m_pdf(book, checker)
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
        [reports = std::move(reports), films = films(m_files), target = *target] {
            const QString text =
                Text::joined(reports, TextRenderer::separator(), [](const auto& report) {
                    return TextRenderer::render(*report, false);
                });
            return written(text, target, films);
        },
        [this, saved](const Result<void>& outcome) {
            setExportMessage(
                outcome ? saved : u"Could not save the report: "_s + outcome.error().description);
        });
}

void Exports::exportMarkers(MarkerExport::Format format)
{
    const FileAnalysis* entry = m_files.selected();
    if (entry == nullptr || entry->report() == nullptr || !entry->media)
        return setExportMessage(u"Analyse a file first."_s);
    if (std::exchange(m_isPreparing, true))
        return;
    ExportSource::readReviews(
        m_book, {ExportSource::of(*entry, m_choice)}, [this, format](const auto& sources) {
            m_tasks.run([source = sources.front()] { return markers(source); },
                        [this, source = sources.front(), format](const auto& markers) {
                            m_isPreparing = false;
                            askAndWrite(source, format, markers);
                        });
        });
}

/// In the background.
std::vector<Marker> Exports::markers(const ExportSource& source)
{
    const auto report = source.currentReport();
    return MarkerExport::markers({.review = source.review.get(), .report = &*report},
                                 source.media->video ? source.media->video->nominalFrameRate : 0);
}

void Exports::askAndWrite(const ExportSource& source, MarkerExport::Format format,
                          const std::vector<Marker>& markers)
{
    if (markers.empty())
        return setExportMessage(u"This file has no notes or findings yet."_s);
    const auto target =
        m_desktop.chooseSaveFile(source.url.stem() + MarkerExport::fileSuffix(format) + u'.'
                                 + MarkerExport::fileExtension(format));
    if (!target)
        return;
    const QString saved = u"Saved %1 marker%2 to %3"_s.arg(
        QString::number(markers.size()), Text::plural(std::ssize(markers)), target->fileName());
    // The context may ask ffprobe.
    m_tasks.run(
        [source, format, markers, films = films(m_files), target = *target] {
            return written(
                MarkerExport::write(markers, format, MarkerExport::context(*source.media)), target,
                films);
        },
        [this, saved](const Result<void>& outcome) {
            setExportMessage(
                outcome ? saved : u"Could not write the markers: "_s + outcome.error().description);
        });
}

std::vector<ExportSource> Exports::sources(Scope scope) const
{
    std::vector<ExportSource> sources;
    if (scope == Scope::allFiles) {
        for (const FileAnalysis& entry : m_files.analyses())
            if (entry.report() != nullptr)
                sources.push_back(ExportSource::of(entry, m_choice));
    } else if (const FileAnalysis* entry = m_files.selected()) {
        sources.push_back(ExportSource::of(*entry, m_choice));
    }
    return sources;
}

void Exports::exportReviewPDF(Scope scope)
{
    if (m_pdfProgress)
        return;
    auto chosen = sources(scope);
    if (chosen.empty())
        return setExportMessage(scope == Scope::selectedFile
                                    ? u"Select a file to export."_s
                                    : u"There is nothing to export yet."_s);
    const auto target = m_desktop.chooseSaveFile(scope == Scope::selectedFile
                                                     ? chosen.front().url.stem() + u" report.pdf"_s
                                                     : u"Vantroque reports.pdf"_s);
    if (!target)
        return;
    setExportMessage(u"Building the PDF…"_s);
    setPdfProgress(PdfExport::Progress{0, chosen.size()});
    m_pdf.start(
        std::move(chosen), *target, [this](const auto& progress) { setPdfProgress(progress); },
        [this, target](const auto& outcome) { tellPrinted(outcome, *target); });
}

void Exports::setPdfProgress(const std::optional<PdfExport::Progress>& progress)
{
    m_pdfProgress = progress;
    Q_EMIT pdfProgressChanged();
}

void Exports::tellPrinted(const Result<void>& outcome, const FileUrl& target)
{
    setPdfProgress({});
    if (outcome)
        return setExportMessage(u"Saved %1"_s.arg(target.fileName()));
    setExportMessage(m_pdf.wasCancelled()
                         ? u"The PDF was cancelled."_s
                         : u"Could not export the PDF: "_s + outcome.error().description);
}

} // namespace vantroque
