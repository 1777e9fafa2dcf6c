#include "Check/SignalEvents.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/EventOrder.h"
#include "Check/SignalChecks.h"
#include "Signal/ChannelAnalyzer.h"

#include <algorithm>

namespace vantroque::SignalEvents {

using namespace Qt::StringLiterals;
using SignalChecks::seconds;
using Kind = SignalEvent::Kind;

namespace {

QString channelWord(int index)
{
    switch (index) {
    case 0: return u"left"_s;
    case 1: return u"right"_s;
    default: return u"channel "_s + QString::number(index + 1);
    }
}

/// Collects events by subject; frames count at `rate`.
class EventList {
public:
    explicit EventList(const MediaInfo& media)
        : m_rate(SignalChecks::countingRate(media)), m_lastFrame(SignalChecks::lastFrame(media))
    {
    }

    void addLevels(const PictureLevels& levels, double leaderEnd)
    {
        const auto luma = SignalChecks::partedAt(leaderEnd, levels.yRejectRuns);
        const auto rgb = SignalChecks::partedAt(leaderEnd, levels.rgbRejectRuns);
        addLeaderRuns(luma.before, u"Luma beyond EBU R 103 tolerance on "_s);
        addLeaderRuns(rgb.before, u"RGB out of gamut on "_s);
        for (const LevelRun& run : luma.after)
            addLevelRun(run, u"Luma beyond EBU R 103 tolerance on "_s, false, {});
        const QString assumed =
            levels.matrixAssumed ? u" (assuming %1)"_s.arg(SignalChecks::matrixName(levels.matrix))
                                 : QString();
        for (const LevelRun& run : rgb.after)
            addLevelRun(run, u"RGB out of gamut on "_s, levels.matrixAssumed, assumed);
    }

    void addBlack(const FrameCadence& cadence, double leaderEnd)
    {
        for (const TimeSpan& run : SignalChecks::blackAfterLeader(cadence, leaderEnd)) {
            if (SignalChecks::isGap(run, m_rate)) {
                const std::int64_t frames = SignalChecks::framesIn(run, m_rate);
                add(Kind::blackFrame, run, Verdict::warn,
                    u"%1 black frame%2 inside the picture"_s.arg(QString::number(frames),
                                                                 Text::plural(frames)));
            } else {
                add(Kind::blackFrame, run, Verdict::info,
                    u"Dip to black for "_s + seconds(run.duration()));
            }
        }
    }

    void addFlashes(const FrameCadence& cadence)
    {
        for (const FlashFrame& flash : cadence.flashFrames)
            add(Kind::flashFrame, flash.frame, Verdict::info,
                u"Flash frame: it matches neither the frame before nor the one after, by %1× the "
                u"motion around it"_s.arg(Numbers::fixed(flash.ratio, 0)));
    }

    /// A regular repeat is one event, since its single frames tell nothing more.
    void addDuplicates(const FrameCadence& cadence)
    {
        const auto& frames = cadence.duplicateFrames;
        if (const auto period = cadence.periodDescription(); period && !frames.empty()) {
            add(Kind::duplicateFrame, frames.front(), Verdict::warn,
                u"Duplicate frames "_s + *period);
        } else if (const auto retime = cadence.retimeDescription();
                   retime && cadence.duplicateSpan) {
            add(Kind::duplicateFrame, cadence.duplicateSpan->first, Verdict::warn,
                u"%1 duplicated frames: %2"_s.arg(QString::number(cadence.duplicateCount),
                                                  *retime));
        } else {
            for (const std::int64_t frame : frames)
                add(Kind::duplicateFrame, frame, Verdict::warn,
                    u"Frame repeats the one before it"_s);
        }
    }

    void addPhase(const StereoPhase& phase)
    {
        for (const TimeSpan& run : phase.outOfPhaseRuns)
            add(Kind::phase, run, Verdict::warn,
                u"Left and right inverted for %1: cancels in mono"_s.arg(seconds(run.duration())));
    }

    void addDeadChannels(const AudioStreamInfo& audio, const std::vector<ChannelLevel>& levels)
    {
        const auto dead = ChannelAnalyzer::missedChannels(
            levels, ChannelNames::names(audio.measuredLayout(), audio.measuredChannels()));
        if (!dead.empty())
            add(Kind::deadChannel, 0, Verdict::warn,
                u"Silent %1 channel for the whole file"_s.arg(
                    Text::joined(dead, u", "_s, channelWord)));
    }

    void addLostChannels(const std::vector<LostChannel>& lost)
    {
        for (const LostChannel& each : lost)
            add(Kind::deadChannel, frameAt(each.start), Verdict::warn,
                u"Lost %1 channel: silent from here on while the rest play"_s.arg(
                    channelWord(each.channel)));
    }

    void addDamage(const DecodeHealth& health)
    {
        for (const DamagedPlace& place : health.places) {
            const QString what = place.picture && place.sound ? u"Picture and sound do"_s
                                 : place.sound                ? u"The sound does"_s
                                                              : u"The picture does"_s;
            const std::int64_t frame = frameAt(place.start);
            const std::int64_t end = frameAt(place.end);
            add(Kind::decoding, frame, Verdict::fail, what + u" not decode whole here"_s,
                end > frame ? std::optional(end) : std::nullopt);
        }
        if (health.endsAt)
            add(Kind::decoding, frameAt(*health.endsAt), Verdict::fail,
                u"The file ends here: it is cut off"_s);
    }

    /// In order of frames, cut at the cap, with their ids.
    std::vector<SignalEvent> finished() &&
    {
        m_events = EventOrder::byFrame(std::move(m_events));
        if (const auto count = std::ssize(m_events); count > cap) {
            m_events.resize(cap);
            add(Kind::duplicateFrame, m_events.back().frame, Verdict::info,
                u"and %1 more"_s.arg(QString::number(count - cap)));
        }
        return EventOrder::byFrame(std::move(m_events));
    }

private:
    void add(Kind kind, std::int64_t frame, Verdict verdict, const QString& text,
             const std::optional<std::int64_t>& endFrame = {})
    {
        m_events.push_back({{}, kind, frame, endFrame, verdict, text, {}});
    }

    void add(Kind kind, const TimeSpan& run, Verdict verdict, const QString& text)
    {
        add(kind, frameAt(run.start), verdict, text, frameAt(run.end));
    }

    void addLevelRun(const LevelRun& run, const QString& what, bool neverFails,
                     const QString& remark)
    {
        const bool isLong = !Numbers::below(run.end - run.start, 4);
        add(Kind::levels, TimeSpan{run.start, run.end},
            isLong && !neverFails ? Verdict::fail : Verdict::warn, levelText(run, what) + remark);
    }

    /// Bars and a slate are not graded.
    void addLeaderRuns(const std::vector<LevelRun>& runs, const QString& what)
    {
        for (const LevelRun& run : runs)
            add(Kind::levels, TimeSpan{run.start, run.end}, Verdict::info,
                levelText(run, what) + u", in the leader"_s);
    }

    static QString levelText(const LevelRun& run, const QString& what)
    {
        return u"%1%2% of the picture for %3"_s.arg(
            what, Numbers::fixed(run.worstFraction * 100, 1), seconds(SignalChecks::length(run)));
    }

    /// Sound may go on where there is no frame any more.
    std::int64_t frameAt(double time) const
    {
        const std::int64_t frame = m_rate.frameAt(time);
        return m_lastFrame ? std::min(frame, *m_lastFrame) : frame;
    }

    FrameRate m_rate;
    std::optional<std::int64_t> m_lastFrame;
    std::vector<SignalEvent> m_events;
};

} // namespace

std::vector<SignalEvent> events(const MediaInfo& media, double leaderEnd)
{
    if (!media.signal)
        return {};
    EventList list(media);
    if (const auto& levels = media.signal->levels)
        list.addLevels(*levels, leaderEnd);
    if (const auto& cadence = media.signal->cadence) {
        list.addBlack(*cadence, leaderEnd);
        list.addFlashes(*cadence);
        list.addDuplicates(*cadence);
    }
    if (const auto& phase = media.signal->phase)
        list.addPhase(*phase);
    if (const auto& levels = media.signal->channelLevels; levels && media.audio)
        list.addDeadChannels(*media.audio, *levels);
    list.addLostChannels(SignalChecks::lostChannels(media));
    if (const auto& health = media.signal->decodeHealth)
        list.addDamage(*health);
    return std::move(list).finished();
}

} // namespace vantroque::SignalEvents
