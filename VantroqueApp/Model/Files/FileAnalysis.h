#pragma once

#include "Records/FileReview.h"
#include "Records/MediaInfo.h"
#include "Records/Report.h"

#include <QUuid>

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace vantroque {

/// One entry of the list of files. Report and measurements are shared with whoever works on them in
/// the background, and never change: a new one takes their place.
struct FileAnalysis {
    struct Done {
        std::shared_ptr<const FileReport> report; ///< Never null.
        std::uint64_t choice = 0; ///< Of profiles, for which it was scored: its number.
    };
    struct Failed {
        QString reason; ///< For the operator.
    };
    struct Queued {};
    struct Running {};
    struct Missing {}; ///< The file is no longer there.
    using Status = std::variant<Done, Failed, Queued, Running, Missing>;

    QUuid id; ///< New for each entry, also of a restored one; never stored.
    FileUrl url;
    Status status = Queued{};
    std::shared_ptr<const MediaInfo> media; ///< Null until measured.
    std::optional<QString> fingerprint;
    std::optional<ReviewSignOff> signOff; ///< As in the review of the file.
    /// The choice of profiles for which measuring what is missing failed last.
    std::uint64_t failedChoice = 0;

    template<typename State>
    bool is() const
    {
        return std::holds_alternative<State>(status);
    }
    /// The report, or null.
    const FileReport* report() const
    {
        const auto* done = std::get_if<Done>(&status);
        return done != nullptr ? done->report.get() : nullptr;
    }
    bool isScoredFor(std::uint64_t choice) const
    {
        const auto* done = std::get_if<Done>(&status);
        return done != nullptr && done->choice == choice;
    }
    /// The measurements are of this version of the program.
    bool hasCurrentMedia() const { return media && media->isCurrentAnalysis(); }
    /// The measurements may be scored. A missing file has no report, and a running one gets its
    /// own.
    bool canBeScored() const { return hasCurrentMedia() && !is<Missing>() && !is<Running>(); }
};

} // namespace vantroque
