#pragma once

#include "Analysis/Analyzer.h"

#include <functional>

namespace vantroque {

/// What the list has done in the background: the analyzer, and what it reads text with. Tests put
/// slow or failing ones here. Called on worker threads, several at once.
struct AnalysisEngine {
    std::function<Result<Analyzer::Analysis>(const FileUrl&, const std::vector<Profile>&,
                                             AnalysisProgress&)>
        analyze;
    std::function<Result<FileReport>(MediaInfo&, const std::vector<Profile>&)> rescore;
    /// Its disk may be one of the network, which does not answer.
    std::function<bool(const FileUrl&)> isThere = exists;

    /// The real one. `recognizers` must outlive it, and may be null.
    static AnalysisEngine real(RecognizerPool* recognizers);
    /// On the disk.
    static bool exists(const FileUrl& file);
};

} // namespace vantroque
