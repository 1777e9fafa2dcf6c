#include "Check/TextEvents.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckTexts.h"
#include "Check/SignalChecks.h"
#include "Check/TextLimits.h"
#include "Text/TextPlacement.h"

#include <algorithm>

namespace vantroque::TextEvents {

using namespace Qt::StringLiterals;
using Kind = SignalEvent::Kind;

namespace {

/// The enforced profile with the tightest limit, the first of equals.
const Profile* strictest(const std::vector<Profile>& profiles)
{
    const auto limit = [](const Profile& profile) -> std::optional<double> {
        const bool enforced = profile.group != ProfileGroup::recommendation && profile.content;
        return enforced ? profile.content->textRejectFraction : std::nullopt;
    };
    const Profile* best = nullptr;
    for (const Profile& profile : profiles)
        if (limit(profile) && (best == nullptr || *limit(profile) < *limit(*best)))
            best = &profile;
    return best;
}

/// The zones that some profile names and that apply to this shape of picture.
std::vector<PlatformZone> zonesFor(const VideoStreamInfo& video,
                                   const std::vector<Profile>& profiles)
{
    const auto isNamed = [&](const PlatformZone& zone) {
        return std::ranges::any_of(profiles, [&](const Profile& profile) {
            const auto& content = profile.content;
            return content && content->textClearOfZones
                   && std::ranges::count(*content->textClearOfZones, zone.id) > 0;
        });
    };
    std::vector<PlatformZone> zones = PlatformZoneCatalog::zones(TextLimits::family(video));
    std::erase_if(zones, std::not_fn(isNamed));
    return zones;
}

/// An event for as long as the text stands.
SignalEvent event(Kind kind, const TextRegion& region, const MediaInfo& media, Verdict verdict,
                  const QString& text)
{
    const auto lastFrame = SignalChecks::lastFrame(media);
    const auto frameAt = [&](double time) {
        const auto frame = SignalChecks::countingRate(media).frameAt(time);
        return lastFrame ? std::min(frame, *lastFrame) : frame;
    };
    const std::int64_t frame = frameAt(region.start);
    return {u"%1-%2"_s.arg(Text::utf8(enumName(kind)), QString::number(frame)),
            kind,
            frame,
            frameAt(region.end),
            verdict,
            text,
            region.rect()};
}

QString safeAreaText(const TextRegion& region, const Profile& profile)
{
    return u"%1 reaches past the %2 content-safe area. %3 will reject it."_s.arg(
        Checker::quoted(region.text), Checker::pct(*profile.content->textRejectFraction),
        profile.name);
}

/// What a region's text says of the zones over it; nothing when it is clear of them.
std::optional<QString> zonesText(const TextRegion& region, const std::vector<PlatformZone>& zones)
{
    constexpr double mostly = 0.9;
    double largest = 0;
    QStringList names;
    for (const PlatformZone& zone : zones) {
        const double covered = TextPlacement::coverage(region.rect(), zone);
        if (!TextLimits::isUnderControls(covered))
            continue;
        largest = std::max(largest, covered);
        names << zone.name;
    }
    if (names.isEmpty())
        return std::nullopt;
    return u"%1 sits %2 the %3 controls."_s.arg(
        Checker::quoted(region.text),
        Numbers::below(largest, mostly) ? u"partly under"_s : u"under"_s, names.join(u" and "_s));
}

} // namespace

std::vector<SignalEvent> events(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.signal || !media.signal->textRegions)
        return {};
    const auto regions = TextLimits::regionsOfTheAd(media, profiles);
    std::vector<SignalEvent> list;
    if (const Profile* profile = strictest(profiles))
        for (const TextRegion& region : regions)
            if (TextLimits::isBeyond(region, *profile->content->textRejectFraction))
                list.push_back(event(Kind::safeArea, region, media, Verdict::fail,
                                     safeAreaText(region, *profile)));
    if (!media.video)
        return list;
    const auto zones = zonesFor(*media.video, profiles);
    for (const TextRegion& region : regions)
        if (const auto text = zonesText(region, zones))
            list.push_back(event(Kind::safeZone, region, media, Verdict::warn, *text));
    return list;
}

} // namespace vantroque::TextEvents
