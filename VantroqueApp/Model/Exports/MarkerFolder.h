#pragma once

#include "Export/MarkerExport.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Exports/Desktop.h"
#include "VantroqueApp/Model/Exports/ExportSource.h"

#include <functional>
#include <memory>
#include <vector>

namespace vantroque {

/// Writes the markers of several films into a folder that the operator chooses, a file for each
/// film. What is in the folder already is replaced only when the operator says so. One export at a
/// time. Main thread; what takes time is done in the background.
class MarkerFolder {
public:
    struct Failure {
        QString name; ///< Of the file that was to be written.
        QString reason;
    };
    struct Outcome {
        std::size_t films = 0; ///< Those with markers.
        FileUrl folder;
        std::vector<FileUrl> saved;
        std::vector<Failure> failed;

        /// For the operator: how many were saved, and each that was not, with the reason.
        QString text() const;
    };
    /// Gets nothing when the operator changed their mind.
    using Then = std::function<void(const std::optional<Outcome>&)>;

    /// `book` has the notes; both must outlive it.
    MarkerFolder(ReviewBook& book, Desktop& desktop) : m_book(book), m_desktop(desktop) {}

    /// All of `sources` were measured. Nothing is written over one of `films`.
    void start(std::vector<ExportSource> sources, MarkerExport::Format format,
               std::vector<FileUrl> films, const Then& then);

private:
    /// The markers of one film, and the name of their file.
    struct Film {
        ExportSource source;
        std::vector<Marker> markers;
        QString name;
    };
    struct Job {
        std::vector<Film> films;
        MarkerExport::Format format{};
        std::vector<FileUrl> guarded;
        FileUrl folder;
        Then then;
    };

    static std::vector<Film> markers(const std::vector<ExportSource>& sources,
                                     MarkerExport::Format format);
    static void giveNames(std::vector<Film>& films, MarkerExport::Format format);
    static QStringList existing(const Job& job);
    static Outcome write(const Job& job, const QStringList& replaceable);
    static Result<void> write(const Job& job, const Film& film, const FileUrl& target,
                              bool mayReplace);
    void askForFolder(Job job);
    void writeUnlessRefused(const std::shared_ptr<const Job>& job, const QStringList& existing);

    ReviewBook& m_book;
    Desktop& m_desktop;
    Tasks m_tasks; ///< Ends first.
};

} // namespace vantroque
