#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/SignalChecks.h"

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;
using Checker::firstOf;

namespace {

CheckResult cadenceRow(const CheckRow& row, const FrameCadence& cadence, FrameRate rate,
                       bool telecineMatters, Verdict broken)
{
    const auto at = [&](std::int64_t frame) { return Timecode(frame, rate).text(); };
    const QString count = QString::number(cadence.duplicateCount);

    if (const auto description = cadence.periodDescription())
        return row.outcome(
            broken,
            u"%1 duplicated frames, %2; first at %3"_s.arg(
                count, *description,
                at(cadence.duplicateFrames.empty() ? 0 : cadence.duplicateFrames.front())),
            u"Export at the content's native rate, or conform in the NLE from the original master. "
            u"A delivery file that was converted by repeating frames stutters on every platform."_s);
    if (const auto ratio = telecineMatters ? telecineRatio(cadence) : std::nullopt)
        return row.outcome(broken,
                           u"repeated fields on %1% of frames (telecine cadence)"_s.arg(
                               Numbers::fixed(*ratio * 100, 0)),
                           u"Remove the pulldown (inverse telecine) and deliver progressive at the "
                           u"native rate."_s);
    if (const auto description = cadence.retimeDescription(); description && cadence.duplicateSpan)
        return row.warn(u"%1 duplicated frames between %2 and %3: %4"_s.arg(
                            count, at(cadence.duplicateSpan->first),
                            at(cadence.duplicateSpan->second), *description),
                        u"If the slow motion is intended, the file is fine, though the shot will "
                        u"judder. Optical-flow retiming, or higher-rate source footage, gives new "
                        u"frames instead of repeats."_s);
    if (cadence.duplicateCount < 1)
        return row.pass(u"no duplicate frames"_s
                        + (telecineMatters ? u", no repeated fields"_s : QString()));
    return row.warn(u"%1 duplicated frame%2 at %3"_s.arg(
                        count, Text::plural(cadence.duplicateCount),
                        firstOf(cadence.duplicateFrames, 4, cadence.duplicateCount, at)),
                    u"A frame repeated inside motion is usually a dropped render frame or a hold "
                    u"left on the timeline. Step to each one and check the edit."_s);
}

} // namespace

std::optional<double> telecineRatio(const FrameCadence& cadence)
{
    const auto repeated =
        static_cast<double>(cadence.repeatedFieldsTop + cadence.repeatedFieldsBottom);
    const double total = repeated + static_cast<double>(cadence.repeatedFieldsNeither);
    if (cadence.frameCountSeen <= 9 || total < 1 || Numbers::below(repeated / total, 0.2))
        return std::nullopt;
    return repeated / total;
}

std::optional<CheckResult> flashFramesRow(const MediaInfo& media)
{
    if (!media.video || !media.signal || !media.signal->cadence)
        return std::nullopt;
    const CheckRow row{
        u"flash-frames"_s, u"Flash frames"_s,
        u"no single frame that matches neither the one before it nor the one after"_s};
    const auto& flashes = media.signal->cadence->flashFrames;
    if (flashes.empty())
        return row.pass(u"none"_s);
    const auto place = [rate = countingRate(media)](const FlashFrame& flash) {
        return u"%1 (%2×)"_s.arg(Timecode(flash.frame, rate).text(),
                                 Numbers::fixed(flash.ratio, 0));
    };
    return row.info(firstOf(flashes, 4, std::ssize(flashes), place)
                    + u", against the motion around them. A stray frame from another shot or a "
                      u"render glitch reads this way. A fast cut on a bright frame reads the same "
                      u"way, so look before acting"_s);
}

std::optional<CheckResult> duplicatesRow(const MediaInfo& media,
                                         const std::optional<FrameRateRule>& rule, bool gate)
{
    if (!media.video)
        return std::nullopt;
    const bool telecineMatters = !rule || rule->telecineForbidden.value_or(false);
    const CheckRow row{u"duplicate-frames"_s, u"Duplicate frames"_s,
                       u"no duplicate frames"_s
                           + (telecineMatters ? u", no telecine cadence"_s : QString())};
    if (!media.signal)
        return row.info(u"signal pass skipped"_s);
    if (!media.signal->cadence)
        return row.info(u"not measured"_s);
    return cadenceRow(row, *media.signal->cadence, countingRate(media), telecineMatters,
                      gate ? Verdict::fail : Verdict::warn);
}

} // namespace vantroque::SignalChecks
