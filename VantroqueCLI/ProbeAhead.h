#pragma once

#include "Base/Result.h"
#include "Records/MediaInfo.h"

#include <deque>
#include <future>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vantroque {

/// Hands out the files of a call in their order, with what their probes find. The probes of the
/// files that come next run meanwhile, since a tool's start takes time in which others can compute.
/// Any thread.
class ProbeAhead {
public:
    /// `names` must outlive this object. `ahead` is how many probes run for the files to come.
    ProbeAhead(const std::vector<std::string>& names, std::size_t ahead);

    struct File {
        std::size_t index = 0; ///< In `names`.
        std::future<Result<MediaInfo>> media;
    };
    /// Nothing after the last.
    std::optional<File> take();

private:
    void startNext();

    const std::vector<std::string>& m_names;
    const std::size_t m_ahead;
    std::mutex m_mutex; ///< Guards what follows.
    std::size_t m_started = 0;
    std::deque<File> m_coming;
};

} // namespace vantroque
