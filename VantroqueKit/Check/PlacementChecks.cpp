#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Profiles/PlatformZones.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

/// The catalog's zones for a profile's ids, in the profile's order.
std::vector<PlatformZone> zonesWithIDs(const std::vector<QString>& ids)
{
    const auto& catalog = PlatformZoneCatalog::all();
    std::vector<PlatformZone> zones;
    for (const QString& id : ids) {
        const auto zone = std::ranges::find(catalog, id, &PlatformZone::id);
        if (zone != catalog.end())
            zones.push_back(*zone);
    }
    return zones;
}

QString safeText(const std::optional<double>& safe, const std::optional<double>& reject)
{
    const QString inside = u"text and graphics inside "_s;
    if (!safe)
        return inside + pct(reject.value_or(0));
    return inside + pct(*safe)
           + (reject ? u", rejected past "_s + pct(*reject)
                     : u", and anything up to 100% is accepted"_s);
}

QString zoneText(const std::vector<PlatformZone>& zones)
{
    const QString names =
        Text::joined(zones, u" and "_s, [](const PlatformZone& zone) { return zone.name; });
    return u"text clear of the %1 controls"_s.arg(names);
}

/// The rows that this profile asks for, with what they expect: the safe area, then the zones.
std::vector<CheckRow> placementRows(const ContentRule& rule)
{
    std::vector<CheckRow> rows;
    if (rule.textSafeFraction || rule.textRejectFraction)
        rows.push_back({u"text-safe"_s, u"Safe area"_s,
                        safeText(rule.textSafeFraction, rule.textRejectFraction)});
    const auto zones = zonesWithIDs(rule.textClearOfZones.value_or(std::vector<QString>()));
    if (!zones.empty())
        rows.push_back({u"text-zones"_s, u"Safe zones"_s, zoneText(zones)});
    return rows;
}

} // namespace

void checkTextPlacement(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.content)
        return;
    const bool attempted = media.signal && media.signal->textScanAttempted.value_or(false);
    if (attempted && media.signal->textRegions)
        return;
    for (const CheckRow& row : placementRows(*profile.content))
        rows.push_back(attempted ? row.warn(u"the text scan could not run"_s,
                                            u"The frames could not be read. Check the placement "
                                            u"yourself with the guides on."_s)
                                 : row.info(u"text not scanned"_s));
}

} // namespace vantroque::Checker
