#include "Picture/ScopeOptions.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr auto waveformKey = "scopes.waveform"_L1;
constexpr auto paradeKey = "scopes.parade"_L1;
constexpr auto vectorscopeKey = "scopes.vectorscope"_L1;
constexpr auto outOfRangeKey = "scopes.outOfRange"_L1;

} // namespace

ScopeOptions ScopeOptions::load(const UserDefaults& defaults)
{
    return {.waveform = defaults.isOn(waveformKey),
            .parade = defaults.isOn(paradeKey),
            .vectorscope = defaults.isOn(vectorscopeKey),
            .outOfRange = defaults.isOn(outOfRangeKey)};
}

void ScopeOptions::save(UserDefaults& defaults) const
{
    defaults.setOn(waveformKey, waveform);
    defaults.setOn(paradeKey, parade);
    defaults.setOn(vectorscopeKey, vectorscope);
    defaults.setOn(outOfRangeKey, outOfRange);
}

} // namespace vantroque
