#pragma once

#include "Export/MarkerExport.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Exports/Desktop.h"
#include "VantroqueApp/Model/Exports/MarkerFolder.h"
#include "VantroqueApp/Model/Exports/PdfExport.h"
#include "VantroqueApp/Model/Files/FileList.h"

#include <QObject>

#include <optional>

namespace vantroque {

/// What leaves the program as a file, to where the operator chooses, and the line that tells how
/// it went. Main thread; what takes time is done in the background.
class Exports : public QObject {
    Q_OBJECT

public:
    /// Of several selected files those that are analysed.
    enum class Scope { selectedFile, allFiles };

    /// All of them must outlive it.
    Exports(const FileList& files, const ProfileChoice& choice, ReviewBook& book, Desktop& desktop,
            SpellChecker& checker);

    /// One line for the operator after an export. It goes when the next one begins.
    const std::optional<QString>& exportMessage() const { return m_exportMessage; }
    void setExportMessage(const std::optional<QString>& message);
    /// The file that the line says was saved; nothing when it speaks of something else.
    const std::optional<FileUrl>& savedFile() const { return m_savedFile; }
    /// Nothing failed beside it.
    bool isAllSaved() const { return m_savedFile && m_isAllSaved; }
    /// Shows it in its folder.
    void showSavedFile();
    /// The editing system that reads markers of this format, as its users call it.
    static QString reader(MarkerExport::Format format);

    /// Writes findings and notes of the selected file; those of several, a file each, into a
    /// folder. While one export of markers is prepared, no other begins: each would ask for a
    /// place.
    void exportMarkers(MarkerExport::Format format);
    /// Writes the reports of all analysed files as text, or of those among several selected ones.
    void saveReport();
    /// Prints reports and notes. While one document is made, no other begins.
    void exportReviewPDF(Scope scope);

    /// Of the document that is being made; nothing when there is none.
    const std::optional<PdfExport::Progress>& pdfProgress() const { return m_pdfProgress; }
    /// The document that is being made is given up, and nothing of it is left.
    void cancelPDF() { m_pdf.cancel(); }

    /// Nothing is being prepared or written.
    bool isIdle() const { return !m_isPreparing && !m_pdfProgress && m_tasks.isIdle(); }

Q_SIGNALS:
    void exportMessageChanged();
    void pdfProgressChanged();

private:
    void tellSaved(const QString& message, const FileUrl& file, bool isAll = true);
    void exportMarkersOfSeveral(MarkerExport::Format format);
    void tellMarkers(const MarkerFolder::Outcome& outcome);
    void askAndWrite(const ExportSource& source, MarkerExport::Format format,
                     const std::vector<Marker>& markers);
    std::vector<ExportSource> sources(Scope scope) const;
    void setPdfProgress(const std::optional<PdfExport::Progress>& progress);
    void tellPrinted(const Result<void>& outcome, const FileUrl& target);

    const FileList& m_files;
    const ProfileChoice& m_choice;
    ReviewBook& m_book;
    Desktop& m_desktop;
    std::optional<QString> m_exportMessage;
    std::optional<FileUrl> m_savedFile;
    bool m_isAllSaved = true;
    bool m_isPreparing = false;
    std::optional<PdfExport::Progress> m_pdfProgress;
    PdfExport m_pdf;
    MarkerFolder m_markerFolder;
    Tasks m_tasks;
};

} // namespace vantroque
