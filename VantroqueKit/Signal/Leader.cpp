#include "Signal/Leader.h"

#include "Base/Numbers.h"

#include <algorithm>

namespace vantroque::Leader {

namespace {

/// A fade into or out of the black moves its edges, in seconds.
constexpr double edgeAllowance = 0.5;

bool covers(const TimeSpan& run, const Layout& layout)
{
    return !Numbers::above(run.start, layout.slate + edgeAllowance)
           && !Numbers::below(run.end, layout.end() - edgeAllowance)
           && partsSlateFromAd(run, layout);
}

} // namespace

const std::vector<Layout>& layoutsInUse()
{
    static const std::vector<Layout> layouts{{2, 1}, {5, 2}, {7, 3}, {8, 2}};
    return layouts;
}

bool partsSlateFromAd(const TimeSpan& black, const Layout& layout)
{
    return !Numbers::below(black.duration(), layout.black / 2);
}

double end(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.signal || !media.signal->blackRuns)
        return 0;
    double latest = 0;
    for (const Profile& profile : profiles) {
        if (!profile.content || !profile.content->slateSeconds)
            continue;
        const Layout layout{*profile.content->slateSeconds,
                            profile.content->slateBlackSeconds.value_or(0)};
        const bool isThere = std::ranges::any_of(
            *media.signal->blackRuns, [&](const TimeSpan& run) { return covers(run, layout); });
        if (isThere)
            latest = std::max(latest, layout.end());
    }
    return latest;
}

} // namespace vantroque::Leader
