#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/SignalChecks.h"
#include "Signal/ChannelAnalyzer.h"

#include <algorithm>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;
using Checker::firstOf;

namespace {

/// "correlation +0.85 average, lowest half-second -0.12"
QString correlationText(const StereoPhase& phase)
{
    return u"correlation %1 average, lowest half-second %2"_s.arg(
        Numbers::signedFixed(phase.meanCorrelation, 2),
        Numbers::signedFixed(phase.minWindowCorrelation, 2));
}

QString invertedText(const StereoPhase& phase, double rate)
{
    QString text =
        u"left and right are inverted (%1). Summed to mono on a TV, phone or laptop speaker they "
        u"cancel, and the mix drops or disappears"_s.arg(correlationText(phase));
    const auto& runs = phase.outOfPhaseRuns;
    if (runs.empty())
        return text;
    const auto place = [&](const TimeSpan& run) {
        const auto frame =
            std::min(Numbers::roundedToInt(rate * run.start), Timecode::frameCeiling);
        return u"%1 for %2"_s.arg(Timecode(frame, rate).text(), seconds(run.duration()));
    };
    return text + u"; inverted at "_s + firstOf(runs, 3, std::ssize(runs), place);
}

class ChannelTexts {
public:
    ChannelTexts(const AudioStreamInfo& audio, const std::vector<ChannelLevel>& levels)
        : m_names(ChannelNames::names(audio.measuredLayout(), audio.measuredChannels())),
          m_levels(levels)
    {
    }

    QString name(int index) const
    {
        return index < std::ssize(m_names) ? m_names[static_cast<std::size_t>(index)]
                                           : QString::number(index + 1);
    }

    /// "L -20.1 dBFS RMS, R silent"
    QString summary() const
    {
        QStringList parts;
        for (int index = 0; const ChannelLevel& level : m_levels) {
            const bool rests = mayBeSilent(index) && ChannelAnalyzer::isSilent(level);
            parts << u"%1 %2"_s.arg(name(index++), rests ? u"silent"_s : value(level));
        }
        return parts.join(u", "_s);
    }

    /// The name in a sentence.
    QString word(int index) const
    {
        const QString known = name(index);
        if (known == "L"_L1)
            return u"left"_s;
        return known == "R"_L1 ? u"right"_s : known;
    }

    bool mayBeSilent(int index) const { return ChannelNames::mayBeSilent(name(index)); }

    std::vector<int> missed() const { return ChannelAnalyzer::missedChannels(m_levels, m_names); }

private:
    static QString value(const ChannelLevel& level)
    {
        if (!level.rmsDb)
            return u"?"_s;
        constexpr double notMeasurable = -99;
        return *level.rmsDb <= notMeasurable ? u"silent"_s
                                             : Numbers::fixed(*level.rmsDb, 1) + u" dBFS RMS"_s;
    }

    std::vector<QString> m_names;
    const std::vector<ChannelLevel>& m_levels;
};

/// "right lost from 00:00:02:12"
QString lostText(const MediaInfo& media, const ChannelTexts& texts)
{
    const FrameRate rate = countingRate(media);
    return Text::joined(lostChannels(media), u", "_s, [&](const LostChannel& each) {
        return u"%1 lost from %2"_s.arg(texts.word(each.channel),
                                        Timecode::fromSeconds(each.start, rate).text());
    });
}

} // namespace

std::optional<CheckResult> phaseRow(const MediaInfo& media)
{
    if (!media.audio || media.audio->measuredChannels() < 2 || !media.signal)
        return std::nullopt;
    const CheckRow row{u"stereo-phase"_s, u"Stereo phase"_s,
                       u"left and right add in mono (correlation above 0)"_s};
    if (!media.signal->phase)
        return row.info(u"not measured"_s);
    const StereoPhase& phase = *media.signal->phase;
    const QString remark = channelRemark(*media.audio);
    if (Numbers::below(phase.audibleSeconds, 0.5))
        return row.info(u"mix is silent"_s);
    if (phase.dualMono)
        return row.info(u"left and right are the same signal (dual mono)"_s + remark);
    if (phase.outOfPhaseRuns.empty() && phase.meanCorrelation >= 0)
        return row.pass(u"left and right add up in mono (%1)"_s.arg(correlationText(phase))
                        + remark);
    // Ambience and effects that were widened a little lose little in mono.
    constexpr double inversionBelow = -0.1;
    if (phase.outOfPhaseRuns.empty() && !Numbers::below(phase.meanCorrelation, inversionBelow))
        return row.info(u"wide stereo (%1)"_s.arg(correlationText(phase)) + remark);
    // A picture without a rate has no frames to point at, so that all places read as zero.
    const double rate =
        media.video ? media.video->nominalFrameRate : countingRate(media).perSecond();
    return row.warn(invertedText(phase, rate) + remark,
                    u"Inverted channels cancel on a TV or phone speaker summing to mono. Check the "
                    u"polarity of one channel (a flipped cable, an inverted stem) and listen to "
                    u"the mix in mono."_s);
}

std::vector<LostChannel> lostChannels(const MediaInfo& media)
{
    auto lost = media.signal->lostChannels.value_or(std::vector<LostChannel>());
    if (lost.empty() || !media.audio || !media.signal->channelLevels)
        return {};
    const ChannelTexts texts(*media.audio, *media.signal->channelLevels);
    const auto missed = texts.missed();
    std::erase_if(lost, [&](const LostChannel& each) {
        return texts.mayBeSilent(each.channel) || std::ranges::count(missed, each.channel) > 0;
    });
    return lost;
}

std::optional<CheckResult> channelLevelsRow(const MediaInfo& media)
{
    if (!media.audio || !media.signal || !media.signal->channelLevels
        || media.signal->channelLevels->empty())
        return std::nullopt;
    const CheckRow row{u"channel-levels"_s, u"Channel levels"_s,
                       u"signal on every channel the layout declares"_s};
    const std::vector<ChannelLevel>& levels = *media.signal->channelLevels;
    const bool anyAudible = std::ranges::any_of(levels, [](const ChannelLevel& level) {
        return level.rmsDb && Numbers::above(*level.rmsDb, -60);
    });
    if (!anyAudible)
        return row.info(u"every channel is silent: the file carries no mix"_s);

    const ChannelTexts texts(*media.audio, levels);
    const auto dead = texts.missed();
    const QString remark = channelRemark(*media.audio);
    const QString lost = lostText(media, texts);
    if (dead.empty() && lost.isEmpty())
        return row.pass(texts.summary() + remark);
    if (dead.empty())
        return row.warn(lost + remark, u"The channel stops while the others go on. Check the "
                                       u"track on the timeline from there on, and the export's "
                                       u"channel mapping."_s);
    const auto name = [&](int index) { return texts.name(index); };
    return row.warn(u"%1 silent for the whole file while the rest play (%2)"_s.arg(
                        Text::joined(dead, u", "_s, name), texts.summary())
                        + (lost.isEmpty() ? QString() : u"; "_s + lost) + remark,
                    u"A silent channel in a stereo pair plays as one-sided audio. Check the "
                    u"export's channel mapping and the source stems."_s);
}

} // namespace vantroque::SignalChecks
