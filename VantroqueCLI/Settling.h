#pragma once

#include "Base/FileStamp.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantroque {

/// Which files of a folder stand still, from what is seen there and when. Knows neither the folder
/// nor the clock.
class Settling {
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    /// One file as it was seen.
    struct Film {
        std::string name;
        FileStamp stamp;
        bool operator==(const Film&) const = default;
    };

    /// A file stands still when it has been the same for so long.
    explicit Settling(Clock::duration settle) : m_settle(settle) {}

    /// What is there now. Forgets what is not.
    void look(const std::map<std::string, FileStamp>& there, Time now);
    /// Those that stand still and do not wait, by how long they have stood.
    std::vector<Film> ready(Time now) const;
    /// When another one may be ready; nothing while none is there.
    std::optional<Time> next() const;

    /// It was changed: has to stand still anew.
    void startOver(const std::string& name, Time now);
    /// It waits until then, or until it is touched.
    void wait(const std::string& name, Time until);
    /// Something went wrong that may pass: it waits for a minute, and each time for twice as long,
    /// up to an hour.
    void retry(const std::string& name, Time now);
    /// Somebody closed it, moved it there or gave permission: it does not wait any more.
    void touched(const std::string& name);

private:
    struct Seen {
        FileStamp stamp;
        Time since;
        Time notBefore = {};
        int retries = 0;
    };
    Time readyAt(const Seen& seen) const;

    Clock::duration m_settle;
    std::map<std::string, Seen> m_seen;
};

} // namespace vantroque
