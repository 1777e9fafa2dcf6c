#pragma once

#include "Records/MediaInfo.h"
#include "Text/RecognizerPool.h"
#include "Tools/ToolContext.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace vantroque {

/// Looks for the edges of texts that have gone while the decode goes on, on a thread of its own, so
/// that little is left to do after it. What it finds holds for a picture that begins with the file;
/// whether it does is known only after the decode. A value that ends waits for the search at hand.
class EdgesAhead {
public:
    /// `interval` is the seconds between two samples. `media` and the recognizers outlive this
    /// object.
    EdgesAhead(const MediaInfo& media, double interval, RecognizerPool& recognizers);

    /// Regions that no further sample changes, in the order of time. Those that come first are
    /// looked at, as many as have their edges narrowed in the end.
    void add(const std::vector<TextRegion>& regions);
    /// Whether all that is to be looked at has been.
    bool isIdle();
    /// Begins no further search and waits for the one at hand.
    void finish();
    /// The region as it is between its edges, if they were looked for. Only after `finish`.
    std::optional<TextRegion> narrowed(const TextRegion& region) const;

private:
    struct Search {
        TextRegion region;
        std::optional<TextRegion> narrowed;
    };
    void work(const std::stop_token& stop);

    const MediaInfo& m_media;
    const double m_interval;
    RecognizerPool& m_recognizers;
    const ToolContext m_context; ///< Of the thread that asked.
    std::mutex m_mutex;          ///< Guards the list.
    std::vector<Search> m_searches;
    std::size_t m_done = 0;
    std::condition_variable_any m_wake;
    std::jthread m_worker; ///< Ends first.
};

} // namespace vantroque
