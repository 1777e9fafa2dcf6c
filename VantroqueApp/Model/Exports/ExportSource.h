#pragma once

#include "Base/Result.h"
#include "Export/Marker.h"
#include "Records/MediaInfo.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"
#include "VantroqueApp/Model/Review/ReviewBook.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantroque {

/// What an export needs of an entry of the list, to be made in the background.
struct ExportSource {
    FileUrl url;
    std::optional<QString> fingerprint;
    std::shared_ptr<const MediaInfo> media;   ///< Null until measured.
    std::shared_ptr<const FileReport> report; ///< Null where there is none.
    /// For which a report is still to be made; null when there is one, or none can be made.
    std::shared_ptr<const std::vector<Profile>> profiles;
    ReviewBook::Review review; ///< Null where there is none, or until it was read.

    static ExportSource of(const FileAnalysis& entry, const ProfileChoice& choice);

    /// Reads the reviews of all of them. `then` gets the sources with their reviews.
    static void readReviews(ReviewBook& book, std::vector<ExportSource> sources,
                            const std::function<void(std::vector<ExportSource>)>& then);

    /// The report for the platforms that are chosen. Any thread.
    std::optional<FileReport> currentReport() const;
    /// Findings and notes of a measured file. Any thread.
    std::vector<Marker> markers() const;
};

/// A report must never take the place of a film. Fails when `target` leads to one of these files.
Result<void> guardFilms(const FileUrl& target, const std::vector<FileUrl>& films);

} // namespace vantroque
