#include "Picture/ScopeOptions.h"

#include <array>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array scopes{std::pair("waveform"_L1, &ScopeOptions::waveform),
                            std::pair("parade"_L1, &ScopeOptions::parade),
                            std::pair("vectorscope"_L1, &ScopeOptions::vectorscope)};
constexpr auto outOfRangeKey = "scopes.outOfRange"_L1;

/// What is kept is the exception.
QString keyOf(QLatin1StringView scope, ScopePlace place)
{
    return (place == ScopePlace::review ? u"scopes.away."_s : u"scopes."_s) + scope;
}

} // namespace

ScopeOptions ScopeOptions::load(const UserDefaults& defaults, ScopePlace place)
{
    ScopeOptions options;
    for (const auto& [name, scope] : scopes)
        options.*scope = defaults.isOn(keyOf(name, place)) != (place == ScopePlace::review);
    options.outOfRange = defaults.isOn(outOfRangeKey);
    return options;
}

void ScopeOptions::save(UserDefaults& defaults, ScopePlace place) const
{
    for (const auto& [name, scope] : scopes)
        defaults.setOn(keyOf(name, place), this->*scope != (place == ScopePlace::review));
    defaults.setOn(outOfRangeKey, outOfRange);
}

} // namespace vantroque
