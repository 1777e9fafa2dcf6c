#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/SlateLayout.h"
#include "Check/TwoPop.h"

#include <algorithm>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

QString popText(const LeaderFacts& facts, const TimeSpan& island)
{
    const SignalInfo& signal = facts.signal;
    const std::int64_t frames = std::max<std::int64_t>(facts.frameAt(island.duration()), 1);
    const QString level = signal.leaderPopPeakDb
                              ? u", %1 dBFS"_s.arg(Numbers::fixed(*signal.leaderPopPeakDb, 1))
                              : QString();
    return u"a 2-pop at frame %1 (%2 Hz%3, %4 frame%5); silent otherwise"_s.arg(
        QString::number(facts.frameAt(island.start)), Numbers::fixed(*signal.leaderToneHz, 0),
        level, QString::number(frames), Text::plural(frames));
}

/// An accepted pop against the published ceiling of its peak.
CheckResult popLevelRow(const CheckRow& row, const QString& pop, double ceiling,
                        const std::optional<double>& peak)
{
    if (!peak)
        return row.warn(
            u"%1; level not measured"_s.arg(pop),
            u"Check the pop's peak by hand; it must not exceed the published ceiling."_s);
    if (Numbers::above(*peak, ceiling + 0.5))
        return row.warn(pop, u"Extreme Reach might reject it. Bring the pop down %1 dB. The pop "
                             u"itself is right. Only its level is out."_s.arg(
                                 Numbers::fixed(*peak - ceiling, 1)));
    if (Numbers::above(*peak, ceiling))
        return row.warn(pop, u"The pop sits within half a decibel of the ceiling, close enough "
                             u"that an encode could put it over. Trim it a little."_s);
    return row.pass(pop);
}

CheckResult popRow(const CheckRow& row, const LeaderFacts& facts, const QString& pop)
{
    if (!facts.rule.slateTwoPopAllowed.value_or(false))
        return row.warn(pop, u"The published page asks for silence on the slate and through the "
                             u"two seconds of black. Confirm this destination accepts a sync pop "
                             u"before you deliver."_s);
    const auto& ceiling = facts.rule.slateTwoPopMaxDbFS;
    if (!ceiling)
        return row.expecting(u"a mute leader, or a 2-pop at the end of the slate"_s).pass(pop);
    const QString popLimit = u"a mute slate, or a 2-pop at its end no louder than %1 dBFS"_s.arg(
        Numbers::given(*ceiling, 0));
    return popLevelRow(row.expecting(popLimit), pop, *ceiling, facts.signal.leaderPopPeakDb);
}

} // namespace

CheckResult slateAudioRow(const LeaderFacts& facts)
{
    const CheckRow row{u"slate-audio"_s, u"Slate audio"_s,
                       u"no audio on the slate or in the black before the ad"_s};
    const auto& islands = facts.signal.audioIslands;
    if (islands && islands->empty())
        return row.pass(u"no sound"_s);
    const double firstSound = facts.signal.headSilenceSeconds.value_or(0);
    if (!Numbers::above(facts.leaderEnd() - 0.25, firstSound))
        return row.pass(
            u"leader is mute (first sound at %1 s)"_s.arg(Numbers::fixed(firstSound, 2)));

    const auto island =
        lonePopIsland(facts.signal, facts.leaderEnd(), facts.video.nominalFrameRate);
    if (island && isTwoPop(facts.signal))
        return popRow(row, facts, popText(facts, *island));

    const QString measured =
        Numbers::below(firstSound, 0.1)
            ? u"sound from the first frame"_s
            : u"sound from %1 s, under the leader"_s.arg(Numbers::fixed(firstSound, 2));
    return row.fail(
        measured, u"Mute the first %1 seconds, slate and black. The mix starts with the ad."_s.arg(
                      Numbers::given(facts.leaderEnd(), 0)));
}

} // namespace vantroque::Checker
