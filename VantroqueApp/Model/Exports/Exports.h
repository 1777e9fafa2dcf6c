#pragma once

#include "Export/MarkerExport.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Exports/Desktop.h"
#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Review/ReviewBook.h"

#include <QObject>

#include <optional>

namespace vantroque {

/// What leaves the program as a file, to where the operator chooses, and the line that tells how
/// it went. Main thread; what takes time is done in the background.
class Exports : public QObject {
    Q_OBJECT

public:
    /// All of them must outlive it.
    Exports(const FileList& files, const ProfileChoice& choice, ReviewBook& book, Desktop& desktop);

    /// One line for the operator after an export.
    const std::optional<QString>& exportMessage() const { return m_exportMessage; }
    void setExportMessage(const std::optional<QString>& message);

    /// Writes findings and notes of the selected file. While one export of markers is prepared, no
    /// other begins: each would ask for a place.
    void exportMarkers(MarkerExport::Format format);
    /// Writes the reports of all analysed files as text.
    void saveReport();

    /// Nothing is being prepared or written.
    bool isIdle() const { return !m_isPreparing && m_tasks.isIdle(); }

Q_SIGNALS:
    void exportMessageChanged();

private:
    struct MarkerSource;

    static std::vector<Marker> markers(const MarkerSource& source,
                                       const ReviewBook::Review& review);
    void askAndWrite(const MarkerSource& source, const std::vector<Marker>& markers);

    const FileList& m_files;
    const ProfileChoice& m_choice;
    ReviewBook& m_book;
    Desktop& m_desktop;
    std::optional<QString> m_exportMessage;
    bool m_isPreparing = false;
    Tasks m_tasks;
};

} // namespace vantroque
