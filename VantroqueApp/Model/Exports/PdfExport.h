#pragma once

#include "Captions/SpellChecker.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Exports/ExportSource.h"

#include <functional>
#include <stop_token>

namespace vantroque {

/// Prints reports and notes in the background, one document at a time. Main thread.
class PdfExport {
public:
    /// How many files are printed.
    struct Progress {
        std::size_t done = 0;
        std::size_t all = 0;
    };
    using Told = std::function<void(const Progress&)>;
    using Then = std::function<void(const Result<void>&)>;

    /// `book` has the notes, `checker` checks the captions; both must outlive it.
    PdfExport(ReviewBook& book, SpellChecker& checker) : m_book(book), m_checker(checker) {}
    /// Calls off what is being printed, and waits for the end of its tools.
    ~PdfExport() { cancel(); }
    PdfExport(const PdfExport&) = delete;
    PdfExport& operator=(const PdfExport&) = delete;

    /// `target` is replaced whole, or left as it was.
    void start(std::vector<ExportSource> sources, const FileUrl& target, const Told& told,
               const Then& then);
    /// What is being printed fails soon.
    void cancel() { m_stop.request_stop(); }
    bool wasCancelled() const { return m_stop.stop_requested(); }

private:
    Result<void> write(const std::vector<ExportSource>& sources, const FileUrl& target,
                       const Told& told);

    ReviewBook& m_book;
    SpellChecker& m_checker;
    std::stop_source m_stop;
    Tasks m_tasks; ///< Ends first.
};

} // namespace vantroque
