#include "Check/SoundScanChecks.h"

#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/SignalChecks.h"
#include "Sound/ClippingFinder.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

/// The frame at a time, inside the picture.
std::int64_t frameAt(double seconds, const MediaInfo& media)
{
    const auto frame = SignalChecks::countingRate(media).frameAt(seconds);
    return std::clamp<std::int64_t>(frame, 0, SignalChecks::lastFrame(media).value_or(frame));
}

QString timecode(double seconds, const MediaInfo& media)
{
    return Timecode::fromSeconds(std::max(seconds, 0.0), SignalChecks::countingRate(media)).text();
}

/// The outcome of a row that has nothing to score; nothing when there is.
std::optional<CheckResult> unmeasured(const CheckRow& row, const MediaInfo& media)
{
    if (!media.signal)
        return row.info(u"signal pass skipped"_s);
    if (!media.signal->soundScan)
        return row.warn(u"could not be measured"_s);
    return std::nullopt;
}

QString name(AlertTone::Kind kind)
{
    return kind == AlertTone::Kind::attention ? u"attention signal (853 and 960 Hz)"_s
                                              : u"data of a warning"_s;
}

QString alertText(const AlertTone& tone, const MediaInfo& media)
{
    return u"%1 at %2 for %3"_s.arg(name(tone.kind), timecode(tone.start, media),
                                    SignalChecks::seconds(tone.end - tone.start));
}

CheckResult alertTonesRow(const RuleSource& source, const MediaInfo& media)
{
    const CheckRow row{u"alert-tones"_s, u"Alert tones"_s,
                       u"no sound of a public warning (%1)"_s.arg(source.words())};
    if (auto outcome = unmeasured(row, media))
        return *std::move(outcome);
    const auto& tones = media.signal->soundScan->alertTones;
    if (tones.empty())
        return row.pass(u"none"_s);
    const QString measured = firstOf(tones, 3, std::ssize(tones),
                                     [&](const AlertTone& tone) { return alertText(tone, media); });
    CheckResult result = row.fail(
        measured, u"Take the sounds of the warning out of the mix, imitations too. Broadcast "
                  u"without an emergency they are forbidden, and fined."_s);
    if (media.video)
        result.moment =
            CheckMoment{frameAt(tones.front().start, media), frameAt(tones.front().end, media), {}};
    return result;
}

CheckResult clippingRow(const RuleSource& source, const MediaInfo& media)
{
    const CheckRow row{u"clipping"_s, u"Clipping"_s,
                       u"fewer than %1 samples in a row at full scale (%2)"_s.arg(
                           QString::number(ClippingFinder::shortestRun), source.words())};
    if (auto outcome = unmeasured(row, media))
        return *std::move(outcome);
    const SoundScan& scan = *media.signal->soundScan;
    if (scan.clippedRuns.empty())
        return row.pass(u"none"_s);
    const auto longest = std::ranges::max(scan.clippedRuns, {}, &ClippedRun::samples);
    const QString places = scan.clippedRunCount == 1
                               ? u"1 place"_s
                               : u"%1 places"_s.arg(QString::number(scan.clippedRunCount));
    CheckResult result = row.warn(
        u"%1, the longest %2 samples at %3"_s.arg(places, QString::number(longest.samples),
                                                  timecode(longest.start, media)),
        u"Listen there. If it is distorted, mix again with a limiter below full scale; turning the "
        u"file down does not bring back what was cut off."_s);
    if (media.video)
        result.moment = CheckMoment{frameAt(longest.start, media), {}, {}};
    return result;
}

bool isAsked(const std::vector<Profile>& profiles, std::optional<RuleSource> SoundRule::*rule)
{
    return std::ranges::any_of(profiles, [&](const Profile& profile) {
        return profile.sound && ((*profile.sound).*rule);
    });
}

} // namespace

void checkSoundScan(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.sound || !media.audio)
        return;
    if (const auto& source = profile.sound->alertTonesForbidden)
        rows.push_back(alertTonesRow(*source, media));
    if (const auto& source = profile.sound->clippingForbidden)
        rows.push_back(clippingRow(*source, media));
}

} // namespace vantroque::Checker

namespace vantroque::SoundScanChecks {

using namespace Qt::StringLiterals;
using namespace Checker;

std::vector<SignalEvent> events(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.video || !media.signal || !media.signal->soundScan)
        return {};
    const SoundScan& scan = *media.signal->soundScan;
    std::vector<SignalEvent> list;
    if (isAsked(profiles, &SoundRule::alertTonesForbidden))
        for (const AlertTone& tone : scan.alertTones)
            list.push_back({{},
                            SignalEvent::Kind::alertTone,
                            frameAt(tone.start, media),
                            frameAt(tone.end, media),
                            Verdict::fail,
                            u"Public warning: "_s + name(tone.kind),
                            {}});
    if (isAsked(profiles, &SoundRule::clippingForbidden))
        for (const ClippedRun& run : scan.clippedRuns)
            list.push_back({{},
                            SignalEvent::Kind::clipping,
                            frameAt(run.start, media),
                            {},
                            Verdict::warn,
                            u"Clipped: %1 samples at full scale"_s.arg(run.samples),
                            {}});
    // Of one frame and of both channels one word is enough.
    const auto isSame = [](const SignalEvent& event, const SignalEvent& other) {
        return event.kind == other.kind && event.frame == other.frame
               && event.endFrame == other.endFrame;
    };
    list.erase(std::unique(list.begin(), list.end(), isSame), list.end());
    return list;
}

} // namespace vantroque::SoundScanChecks
