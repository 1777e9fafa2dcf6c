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
    : m_files(files),
      m_choice(choice),
      m_book(book),
      m_desktop(desktop),
      m_pdf(book, checker),
      m_markerFolder(book, desktop)
{
}

void Exports::setExportMessage(const std::optional<QString>& message)
{
    m_savedFile.reset();
    m_exportMessage = message;
    Q_EMIT exportMessageChanged();
}

void Exports::tellSaved(const QString& message, const FileUrl& file, bool isAll)
{
    m_isAllSaved = isAll;
    m_savedFile = file;
    m_exportMessage = message;
    Q_EMIT exportMessageChanged();
}

void Exports::showSavedFile()
{
    if (m_savedFile)
        m_desktop.showInFolder(*m_savedFile);
}

QString Exports::reader(MarkerExport::Format format)
{
    switch (format) {
    case MarkerExport::Format::avid: return u"Avid Media Composer"_s;
    case MarkerExport::Format::resolve: return u"DaVinci Resolve"_s;
    case MarkerExport::Format::premiere: return u"Premiere"_s;
    case MarkerExport::Format::csv: break;
    }
    return u"Comma separated"_s;
}

void Exports::saveReport()
{
    setExportMessage({});
    std::vector<std::shared_ptr<const FileReport>> reports;
    FileUrl beside;
    const auto& selected = m_files.selection().ids;
    const bool takesAll = !m_files.isSeveralSelected();
    for (const FileAnalysis& entry : m_files.analyses())
        if (const auto* done = std::get_if<FileAnalysis::Done>(&entry.status);
            done != nullptr && (takesAll || selected.contains(entry.id))) {
            if (reports.empty())
                beside = entry.url;
            reports.push_back(done->report);
        }
    if (reports.empty())
        return setExportMessage(u"There is nothing to export yet."_s);
    const auto target = m_desktop.chooseSaveFile(
        {takesAll ? u"Save All Reports as Text"_s : u"Save the Selected Reports as Text"_s, beside,
         u"Vantroque Report.txt"_s, u"Text files"_s});
    if (!target)
        return;
    // How many, so that nobody takes it for the one that is shown.
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
        [this, saved, target = *target](const Result<void>& outcome) {
            if (outcome)
                return tellSaved(saved, target);
            setExportMessage(u"Could not save the report: "_s + outcome.error().description);
        });
}

void Exports::exportMarkers(MarkerExport::Format format)
{
    if (m_files.isSeveralSelected())
        return exportMarkersOfSeveral(format);
    const FileAnalysis* entry = m_files.selected();
    if (entry == nullptr || entry->report() == nullptr || !entry->media)
        return setExportMessage(u"Analyse a file first."_s);
    if (std::exchange(m_isPreparing, true))
        return;
    setExportMessage({});
    ExportSource::readReviews(
        m_book, {ExportSource::of(*entry, m_choice)}, [this, format](const auto& sources) {
            m_tasks.run([source = sources.front()] { return source.markers(); },
                        [this, source = sources.front(), format](const auto& markers) {
                            m_isPreparing = false;
                            askAndWrite(source, format, markers);
                        });
        });
}

void Exports::exportMarkersOfSeveral(MarkerExport::Format format)
{
    auto chosen = sources(Scope::selectedFile);
    std::erase_if(chosen, [](const ExportSource& source) { return !source.media; });
    if (chosen.empty())
        return setExportMessage(u"Analyse a file first."_s);
    if (std::exchange(m_isPreparing, true))
        return;
    setExportMessage({});
    m_markerFolder.start(std::move(chosen), format, films(m_files), [this](const auto& outcome) {
        m_isPreparing = false;
        if (outcome)
            tellMarkers(*outcome);
    });
}

void Exports::tellMarkers(const MarkerFolder::Outcome& outcome)
{
    if (outcome.films == 0)
        return setExportMessage(u"These files have no notes or findings yet."_s);
    if (outcome.saved.empty())
        return setExportMessage(outcome.text());
    tellSaved(outcome.text(), outcome.saved.front(), outcome.failed.empty());
}

void Exports::askAndWrite(const ExportSource& source, MarkerExport::Format format,
                          const std::vector<Marker>& markers)
{
    if (markers.empty())
        return setExportMessage(u"This file has no notes or findings yet."_s);
    const QString extension = MarkerExport::fileExtension(format);
    const auto target = m_desktop.chooseSaveFile(
        {u"Save Markers (%1)"_s.arg(reader(format)), source.url,
         source.url.stem() + MarkerExport::fileSuffix(format) + u'.' + extension, u"Markers"_s});
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
        [this, saved, target = *target](const Result<void>& outcome) {
            if (outcome)
                return tellSaved(saved, target);
            setExportMessage(u"Could not write the markers: "_s + outcome.error().description);
        });
}

std::vector<ExportSource> Exports::sources(Scope scope) const
{
    std::vector<ExportSource> sources;
    if (scope == Scope::allFiles) {
        for (const FileAnalysis& entry : m_files.analyses())
            if (entry.report() != nullptr)
                sources.push_back(ExportSource::of(entry, m_choice));
    } else if (m_files.isSeveralSelected()) {
        for (const FileAnalysis* entry : m_files.allSelected())
            if (entry->report() != nullptr)
                sources.push_back(ExportSource::of(*entry, m_choice));
    } else if (const FileAnalysis* entry = m_files.selected()) {
        sources.push_back(ExportSource::of(*entry, m_choice));
    }
    return sources;
}

void Exports::exportReviewPDF(Scope scope)
{
    if (m_pdfProgress)
        return;
    setExportMessage({});
    auto chosen = sources(scope);
    if (chosen.empty())
        return setExportMessage(scope == Scope::selectedFile
                                    ? u"Select a file to export."_s
                                    : u"There is nothing to export yet."_s);
    const bool isOne = scope == Scope::selectedFile && !m_files.isSeveralSelected();
    const QString title = isOne                      ? u"Save This File's Report as PDF"_s
                          : scope == Scope::allFiles ? u"Save All Reports as PDF"_s
                                                     : u"Save the Selected Reports as PDF"_s;
    const FileUrl& first = chosen.front().url;
    const auto target = m_desktop.chooseSaveFile(
        {title, first, isOne ? first.stem() + u" report.pdf"_s : u"Vantroque reports.pdf"_s,
         u"PDF documents"_s});
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
        return tellSaved(u"Saved %1"_s.arg(target.fileName()), target);
    setExportMessage(m_pdf.wasCancelled()
                         ? u"The PDF was cancelled."_s
                         : u"Could not export the PDF: "_s + outcome.error().description);
}

} // namespace vantroque
