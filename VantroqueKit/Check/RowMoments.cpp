#include "Check/RowMoments.h"

#include "Text/TextPlacement.h"

#include <algorithm>
#include <map>

namespace vantroque::RowMoments {

using namespace Qt::StringLiterals;
using Kind = SignalEvent::Kind;

namespace {

std::optional<Kind> kindOf(const QString& row)
{
    static const std::map<QString, Kind> kinds{{u"video-levels"_s, Kind::levels},
                                               {u"black-frames"_s, Kind::blackFrame},
                                               {u"flash-frames"_s, Kind::flashFrame},
                                               {u"duplicate-frames"_s, Kind::duplicateFrame},
                                               {u"stereo-phase"_s, Kind::phase},
                                               {u"channel-levels"_s, Kind::deadChannel},
                                               {u"text-safe"_s, Kind::safeArea},
                                               {u"text-zones"_s, Kind::safeZone},
                                               {u"captions-spelling"_s, Kind::captionSpelling},
                                               {u"captions-doubled"_s, Kind::captionDoubled},
                                               {u"decoding"_s, Kind::decoding},
                                               {u"psy-flash"_s, Kind::psyFlash},
                                               {u"psy-red"_s, Kind::psyRed},
                                               {u"psy-extended"_s, Kind::psyExtended},
                                               {u"psy-pattern"_s, Kind::psyPattern},
                                               {u"alert-tones"_s, Kind::alertTone},
                                               {u"clipping"_s, Kind::clipping}};
    const auto found = kinds.find(row);
    return found == kinds.end() ? std::nullopt : std::optional(found->second);
}

int gravity(Verdict verdict)
{
    switch (verdict) {
    case Verdict::fail: return 3;
    case Verdict::warn: return 2;
    case Verdict::info: return 1;
    case Verdict::pass: break;
    }
    return 0;
}

CheckMoment placeOf(const SignalEvent& event)
{
    return {event.frame, event.endFrame, event.box};
}

/// The most of a text that one of the profile's zones covers.
double covered(const NormalizedRect& text, const Profile* profile)
{
    if (profile == nullptr || !profile->content || !profile->content->textClearOfZones)
        return 0;
    double most = 0;
    for (const PlatformZone& zone : PlatformZoneCatalog::all())
        if (std::ranges::count(*profile->content->textClearOfZones, zone.id) > 0)
            most = std::max(most, TextPlacement::coverage(text, zone));
    return most;
}

/// How much an event is the one that a row speaks of, among events as grave.
double weight(const SignalEvent& event, const Profile* profile)
{
    switch (event.kind) {
    case Kind::safeArea: return event.box ? TextPlacement::reach(*event.box) : 0;
    case Kind::safeZone: return event.box ? covered(*event.box, profile) : 0;
    case Kind::levels:
    case Kind::phase:
        return static_cast<double>(event.endFrame.value_or(event.frame) - event.frame);
    default: return 0;
    }
}

} // namespace

std::optional<SignalEvent> of(const CheckResult& row, const Profile* profile,
                              const std::vector<SignalEvent>& events)
{
    const auto kind = row.verdict == Verdict::pass ? std::nullopt : kindOf(row.id);
    if (!kind)
        return std::nullopt;
    const SignalEvent* best = nullptr;
    const auto rank = [&](const SignalEvent& event) {
        return std::pair(gravity(event.verdict), weight(event, profile));
    };
    for (const SignalEvent& event : events)
        if (event.kind == *kind && (best == nullptr || rank(event) > rank(*best)))
            best = &event;
    return best != nullptr ? std::optional(*best) : std::nullopt;
}

void mark(ProfileReport& report, const Profile* profile, const std::vector<SignalEvent>& events)
{
    for (CheckResult& row : report.checks)
        if (!row.moment)
            if (const auto event = of(row, profile, events))
                row.moment = placeOf(*event);
}

void mark(FileReport& report, const std::vector<Profile>& profiles)
{
    if (!report.events)
        return;
    for (ProfileReport& platform : report.profiles) {
        const auto profile = std::ranges::find(profiles, platform.profileID, &Profile::id);
        mark(platform, profile == profiles.end() ? nullptr : &*profile, *report.events);
    }
    if (report.sections)
        for (ProfileReport& section : *report.sections)
            mark(section, nullptr, *report.events);
}

std::optional<SignalEvent> eventAt(const QString& check, const CheckMoment& moment,
                                   const std::vector<SignalEvent>& events)
{
    const auto kind = kindOf(check);
    const auto found = std::ranges::find_if(events, [&](const SignalEvent& event) {
        return event.kind == kind && placeOf(event) == moment;
    });
    return found == events.end() ? std::nullopt : std::optional(*found);
}

} // namespace vantroque::RowMoments
