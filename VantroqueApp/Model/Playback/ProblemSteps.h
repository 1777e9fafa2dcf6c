#pragma once

#include "Records/Report.h"

#include <optional>
#include <vector>

/// The places of a film that need a look, by time, and where among them one stands. Pure.
namespace vantroque::ProblemSteps {

/// Of findings by frame those that fail or warn, up to the last frame.
std::vector<SignalEvent> among(const std::vector<SignalEvent>& events, std::int64_t lastFrame);

/// By their place in the list; nothing where there is none.
struct Stand {
    std::optional<std::size_t> current; ///< The one that is looked at, or on screen.
    std::optional<std::size_t> previous;
    std::optional<std::size_t> next;
};
/// `selected` is the id of the finding that was gone to last, if any.
Stand at(const std::vector<SignalEvent>& problems, const std::optional<QString>& selected,
         std::int64_t frame);

/// How many problems of a report begin at none of these places, since they are of the file as a
/// whole.
std::size_t withoutPlace(const FileReport& report, const std::vector<SignalEvent>& places);
/// Why there is no step further: "No place after this one needs a look.", and where the problems
/// without a place are.
QString endWords(bool forward, std::size_t places, std::size_t withoutPlace);
/// Where those are: "2 problems of the file as a whole stand in the report (F2)."; empty for none.
QString elsewhereWords(std::size_t withoutPlace);

/// "4 of 7", or "– of 7" where one stands on none.
QString words(const Stand& stand, std::size_t count);

} // namespace vantroque::ProblemSteps
