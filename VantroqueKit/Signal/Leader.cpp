#include "Signal/Leader.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque::Leader {

namespace {

/// A fade into or out of the black moves its edges, in seconds.
constexpr double edgeAllowance = 0.5;

bool covers(const TimeSpan& run, double start, double end)
{
    return !Numbers::above(run.start, start + edgeAllowance)
           && !Numbers::below(run.end, end - edgeAllowance);
}

} // namespace

double end(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.signal || !media.signal->blackRuns)
        return 0;
    double latest = 0;
    for (const Profile& profile : profiles) {
        if (!profile.content || !profile.content->slateSeconds)
            continue;
        const double slateEnd = *profile.content->slateSeconds;
        const double leaderEnd = slateEnd + profile.content->slateBlackSeconds.value_or(0);
        const bool isThere =
            std::ranges::any_of(*media.signal->blackRuns, [&](const TimeSpan& run) {
                return covers(run, slateEnd, leaderEnd);
            });
        if (isThere)
            latest = std::max(latest, leaderEnd);
    }
    return latest;
}

} // namespace vantroque::Leader
