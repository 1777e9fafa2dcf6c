#pragma once

#include "Print/ReviewPDF.h"
#include "Support/TestFolder.h"

namespace vantroque {

/// A document that was written, as other programs read it.
class Printed {
public:
    explicit Printed(const std::vector<ReviewPDF::FileSection>& sections,
                     const ReviewPDF::Options& options = {});

    std::filesystem::path path() const { return m_folder / "out.pdf"; }
    /// The words of a page, from 1, in reading order; of all pages with 0. Blanks and line ends
    /// are one blank.
    QString text(int page = 0) const;
    int pageCount() const;
    /// What a program prints of it.
    QByteArray told(std::vector<std::string> command) const;

private:
    TestFolder m_folder;
};

/// A report of one platform with a failing check, and a section.
FileReport spotReport();
ReviewPDF::FileSection spot();
ReviewComment note(std::int64_t frame, const QString& text);
FileReview reviewWith(std::vector<ReviewComment> comments);

} // namespace vantroque
