#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/TextLimits.h"
#include "Text/TextPlacement.h"

#include <algorithm>
#include <set>

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

QString zoneNames(const std::vector<PlatformZone>& zones)
{
    return Text::joined(zones, u" and "_s, [](const PlatformZone& zone) { return zone.name; });
}

const QString nothingHeld = u"no text held on screen for a second or longer"_s;

/// The text of the ad in the file, for one profile.
struct Texts {
    std::vector<TextRegion> regions;
    FrameRate rate; ///< Of the timecodes.

    Texts(const Profile& profile, const MediaInfo& media)
        : regions(TextLimits::regionsOfTheAd(media, {profile})),
          rate(media.video ? Timecode(0, media.video->nominalFrameRate).rate() : FrameRate::film())
    {
    }
    /// Not empty.
    const TextRegion& furthest() const { return *std::ranges::max_element(regions, {}, reach); }
    std::size_t countBeyond(double fraction) const
    {
        return static_cast<std::size_t>(
            std::ranges::count_if(regions, [fraction](const TextRegion& region) {
                return TextLimits::isBeyond(region, fraction);
            }));
    }
    QString timecode(const TextRegion& region) const
    {
        return Timecode::fromSeconds(region.start, rate).text();
    }
    static double reach(const TextRegion& region) { return TextPlacement::reach(region.rect()); }
};

/// "All three of three texts are past the limit ..."
QString past(const Texts& texts, std::size_t over, const QString& limit)
{
    const TextRegion& furthest = texts.furthest();
    const QString reach = Checker::pct(Texts::reach(furthest));
    if (over == 1)
        return u"%1 reaches %2 at %3, past %4."_s.arg(quoted(furthest.text), reach,
                                                      texts.timecode(furthest), limit);
    const std::size_t total = texts.regions.size();
    const QString who = over < total ? u"%1 of %2"_s.arg(over).arg(total)
                        : total == 2 ? u"Both"_s
                                     : u"All %1"_s.arg(total);
    return u"%1 text elements are past %2. %3 goes furthest, reaching %4 at %5."_s.arg(
        who, limit, quoted(furthest.text), reach, texts.timecode(furthest));
}

CheckResult safeRow(const CheckRow& row, const Profile& profile, const Texts& texts)
{
    if (texts.regions.empty())
        return row.pass(nothingHeld);
    const auto& safe = profile.content->textSafeFraction;
    const auto& reject = profile.content->textRejectFraction;
    const double inner = safe ? *safe : *reject;
    const std::size_t overInner = texts.countBeyond(inner);
    const TextRegion& furthest = texts.furthest();
    if (const std::size_t over = reject ? texts.countBeyond(*reject) : 0; over > 0)
        return row.fail(past(texts, over, pct(*reject)),
                        u"%1 will reject this. Move %2 inside %3 and re-export."_s.arg(
                            profile.name, quoted(furthest.text), pct(inner)));
    if (overInner > 0 && reject)
        return row.warn(
            u"Accepted. "_s + past(texts, overInner, u"the %1 title-safe area"_s.arg(pct(inner))),
            u"This is inside %1, so it will not be rejected for placement. On a TV that overscans, "
            u"the edge of %2 may be cut."_s.arg(pct(*reject), quoted(furthest.text)));
    if (overInner > 0)
        return row.info(
            u"Accepted. "_s
            + past(texts, overInner, u"the %1 %2 recommends"_s.arg(pct(inner), profile.name)));
    const QString reach = pct(Texts::reach(furthest));
    if (texts.regions.size() == 1)
        return row.pass(u"The text reaches %1, inside %2."_s.arg(reach, pct(inner)));
    return row.pass(u"All %1 text elements are inside %2. The furthest reaches %3."_s.arg(
        QString::number(texts.regions.size()), pct(inner), reach));
}

/// A text under a platform's controls.
struct Hit {
    const TextRegion* region = nullptr;
    const PlatformZone* zone = nullptr;
    double coverage = 0;
};

std::vector<Hit> hits(const std::vector<TextRegion>& regions,
                      const std::vector<PlatformZone>& zones)
{
    std::vector<Hit> found;
    for (const TextRegion& region : regions)
        for (const PlatformZone& zone : zones)
            if (const double covered = TextPlacement::coverage(region.rect(), zone);
                TextLimits::isUnderControls(covered))
                found.push_back({&region, &zone, covered});
    return found;
}

CheckResult hitRow(const CheckRow& row, const Texts& texts, const std::vector<Hit>& found)
{
    const Hit& worst = *std::ranges::max_element(found, {}, &Hit::coverage);
    std::set<double> starts;
    std::set<QString> names;
    for (const Hit& hit : found) {
        starts.insert(hit.region->start);
        names.insert(hit.zone->name);
    }
    const QString more = starts.size() == 1
                             ? QString()
                             : u" %1 of %2 text elements are affected."_s.arg(starts.size())
                                   .arg(texts.regions.size());
    return row.fail(
        u"%1 sits %2 under the %3 controls at %4.%5"_s.arg(quoted(worst.region->text),
                                                           pct(worst.coverage), worst.zone->name,
                                                           texts.timecode(*worst.region), more),
        u"Move the text clear of where %1 draw their controls. Turn the zone guides on to see "
        u"where they sit."_s.arg(
            Text::joined(names, u" and "_s, [](const QString& name) { return name; })));
}

CheckResult zonesRow(const CheckRow& row, const VideoStreamInfo& video, const Texts& texts,
                     const std::vector<PlatformZone>& zones)
{
    std::vector<PlatformZone> fitting = zones;
    std::erase_if(fitting, [family = TextLimits::family(video)](const PlatformZone& zone) {
        return zone.aspect != family;
    });
    if (fitting.empty())
        return row.info(u"This is a %1 frame. The %2 zones apply to 9:16 cuts."_s.arg(
            frameSize(video.shownWidth(), video.shownHeight()), zoneNames(zones)));
    if (texts.regions.empty())
        return row.pass(nothingHeld);
    const auto found = hits(texts.regions, fitting);
    if (!found.empty())
        return hitRow(row, texts, found);
    const QString clear = u"clear of the %1 controls."_s.arg(zoneNames(zones));
    if (texts.regions.size() == 1)
        return row.pass(u"The text is "_s + clear);
    return row.pass(u"All %1 text elements are "_s.arg(texts.regions.size()) + clear);
}

} // namespace

void checkTextPlacement(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.content)
        return;
    const ContentRule& rule = *profile.content;
    const bool isAttempted = media.signal && media.signal->textScanAttempted.value_or(false);
    const bool isRead = isAttempted && media.signal->textRegions;
    const auto unread = [&](const CheckRow& row) {
        return isAttempted ? row.warn(u"the text scan could not run"_s,
                                      u"The frames could not be read. Check the placement yourself "
                                      u"with the guides on."_s)
                           : row.info(u"text not scanned"_s);
    };
    if (rule.textSafeFraction || rule.textRejectFraction) {
        const CheckRow row{u"text-safe"_s, u"Safe area"_s,
                           safeText(rule.textSafeFraction, rule.textRejectFraction)};
        rows.push_back(isRead ? safeRow(row, profile, Texts(profile, media)) : unread(row));
    }
    const auto zones = zonesWithIDs(rule.textClearOfZones.value_or(std::vector<QString>()));
    if (zones.empty())
        return;
    const CheckRow row{u"text-zones"_s, u"Safe zones"_s,
                       u"text clear of the %1 controls"_s.arg(zoneNames(zones))};
    if (!isRead)
        rows.push_back(unread(row));
    else if (media.video)
        rows.push_back(zonesRow(row, *media.video, Texts(profile, media), zones));
}

} // namespace vantroque::Checker
