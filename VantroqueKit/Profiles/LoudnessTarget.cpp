#include "Profiles/LoudnessTarget.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <algorithm>
#include <set>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString given(double limit)
{
    return Numbers::given(limit, 0);
}

template<typename T>
void keepLeast(std::optional<T>& least, const std::optional<T>& candidate)
{
    if (candidate)
        least = std::min(*candidate, least.value_or(*candidate));
}

} // namespace

LoudnessTarget LoudnessTarget::across(const std::vector<Profile>& profiles)
{
    std::set<double> targets;
    std::optional<double> tolerance;
    for (const Profile& profile : profiles) {
        if (!profile.loudness || !profile.loudness->targetLKFS)
            continue;
        targets.insert(*profile.loudness->targetLKFS);
        keepLeast(tolerance, profile.loudness->toleranceLU);
    }
    if (targets.empty())
        return {};
    if (targets.size() == 1)
        return Single{*targets.begin(), tolerance.value_or(defaultTolerance)};
    return Several{{targets.begin(), targets.end()}};
}

std::optional<LoudnessTarget::Single> LoudnessTarget::band() const
{
    const auto* single = std::get_if<Single>(&m_value);
    return single != nullptr ? std::optional(*single) : std::nullopt;
}

std::vector<double> LoudnessTarget::marks() const
{
    if (const auto* several = std::get_if<Several>(&m_value))
        return several->targets;
    if (const auto single = band())
        return {single->target};
    return {};
}

QString LoudnessTarget::caption() const
{
    if (const auto* several = std::get_if<Several>(&m_value))
        return u"targets "_s + Text::joined(several->targets, u" and "_s, given);
    if (const auto single = band())
        return u"target %1 ± %2"_s.arg(given(single->target), given(single->tolerance));
    return u"no target for the selected platforms"_s;
}

std::optional<TruePeakRule> TruePeakRule::across(const std::vector<Profile>& profiles)
{
    std::optional<double> floor;
    std::optional<double> windowCeiling;
    std::optional<double> ceiling;
    for (const Profile& profile : profiles) {
        if (!profile.loudness)
            continue;
        const LoudnessRule& rule = *profile.loudness;
        keepLeast(ceiling, rule.maxTruePeakDb);
        if (rule.minTruePeakDb) {
            floor = std::max(*rule.minTruePeakDb, floor.value_or(*rule.minTruePeakDb));
            keepLeast(windowCeiling, rule.maxTruePeakDb);
        }
    }
    if (windowCeiling)
        return TruePeakRule{floor, *windowCeiling};
    if (ceiling)
        return TruePeakRule{std::nullopt, *ceiling};
    return std::nullopt;
}

std::optional<QString> TruePeakRule::caption(const std::vector<Profile>& profiles)
{
    const auto rule = across(profiles);
    return rule ? std::optional(rule->caption()) : std::nullopt;
}

bool TruePeakRule::allows(double peak) const
{
    return peak <= ceiling && (!floor || peak >= *floor);
}

QString TruePeakRule::caption() const
{
    if (floor)
        return u"window %1 to %2"_s.arg(given(*floor), given(ceiling));
    return u"ceiling %1"_s.arg(given(ceiling));
}

} // namespace vantroque
