#include "Base/Numbers.h"
#include "Check/CheckRow.h"
#include "Check/Checker.h"
#include "Check/SignalChecks.h"

#include <algorithm>
#include <cmath>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

QString given(double limit)
{
    return Numbers::given(limit, 0);
}

QString oneDecimal(double value)
{
    return Numbers::fixed(value, 1);
}

QString normalizeOnExport(double target, double peak)
{
    return u"normalize on export (in ffmpeg: -af loudnorm=I=%1:TP=%2:LRA=7)."_s.arg(given(target),
                                                                                    given(peak));
}

double toleranceOf(const LoudnessRule& rule)
{
    return rule.toleranceLU.value_or(2.0);
}

CheckRow loudnessLabel(const LoudnessRule& rule, double target)
{
    return {u"loudness"_s, u"Loudness"_s,
            u"%1 LKFS ± %2 LU"_s.arg(given(target), given(toleranceOf(rule)))};
}

/// What the gate of ITU-R BS.1770 leaves out; what reads this has no block above it.
constexpr double absoluteGate = -70;

CheckResult loudnessRow(const LoudnessRule& rule, double target, double integrated)
{
    const CheckRow row = loudnessLabel(rule, target);
    if (!Numbers::above(integrated, absoluteGate)) // no platform makes a mix of nothing
        return row.fail(u"%1 LKFS (no programme sound)"_s.arg(oneDecimal(absoluteGate)),
                        u"The sound is silent from end to end. Export again with the mix."_s);
    const double off = integrated - target;
    const QString measured = oneDecimal(integrated) + u" LKFS"_s;
    if (!Numbers::above(std::abs(off), toleranceOf(rule)))
        return row.pass(measured);

    const QString offTarget =
        u"%1 (%2 LU off target)"_s.arg(measured, Numbers::signedFixed(off, 1));
    const QString gain = Numbers::signedFixed(-off, 1);
    if (rule.autoNormalized.value_or(false))
        return row.warn(
            offTarget, u"Accepted: the platform normalizes it to %1 LKFS, which takes the result "
                       u"out of your hands. Adjust the mix by %2 dB to deliver it on target."_s.arg(
                           given(target), gain));
    return row.fail(offTarget,
                    u"Adjust the mix by %1 dB, or %2"_s.arg(
                        gain, normalizeOnExport(target, rule.maxTruePeakDb.value_or(-2))));
}

QString limiterFix(const LoudnessRule& rule, double ceiling)
{
    const QString limiter =
        u"Apply a true-peak limiter at %1 dBTP in your mix"_s.arg(given(ceiling));
    if (rule.targetLKFS)
        return limiter + u", or "_s + normalizeOnExport(*rule.targetLKFS, ceiling);
    return limiter
           + u". Lossy encoders overshoot, so a file that peaks at the ceiling can clip after the "
             u"platform re-encodes it."_s;
}

CheckResult truePeakRow(const LoudnessRule& rule, double ceiling, double peak)
{
    const auto& floor = rule.minTruePeakDb;
    const QString limit = floor ? u"%1 to %2 dBTP"_s.arg(given(ceiling), given(*floor))
                                : u"≤ %1 dBTP"_s.arg(given(ceiling));
    const CheckRow row{u"true-peak"_s, u"True peak"_s, limit};
    const QString measured = oneDecimal(peak) + u" dBTP"_s;
    if (Numbers::above(peak, ceiling))
        return row.fail(measured + u" (over the ceiling)"_s, limiterFix(rule, ceiling));
    if (floor && Numbers::below(peak, *floor)) {
        const QString tail =
            rule.targetLKFS
                ? u" while integrated loudness stays at %1 LKFS"_s.arg(given(*rule.targetLKFS))
                : QString();
        return row.fail(measured + u" (below the window)"_s,
                        u"Peaks sit below the required window. Raise the mix so peaks land between "
                        u"%1 and %2 dBTP%3."_s.arg(given(*floor), given(ceiling), tail));
    }
    const auto& recommended = rule.recommendedMaxTruePeakDb;
    if (recommended && Numbers::above(peak, *recommended))
        return row.expecting(u"%1, %2 dBTP recommended"_s.arg(limit, given(*recommended)))
            .warn(measured + u" (within spec, above the recommendation)"_s,
                  u"Accepted under the %1 dBTP ceiling. The platform recommends %2 dBTP, which "
                  u"downstream digital destinations accept too."_s.arg(given(ceiling),
                                                                       given(*recommended)));
    return row.pass(measured);
}

/// Where to hear it, when there is a picture that counts frames.
std::optional<CheckMoment> placeAt(const std::optional<double>& seconds, const MediaInfo& media)
{
    if (!seconds || !media.video)
        return std::nullopt;
    const auto frame = SignalChecks::countingRate(media).frameAt(*seconds);
    const auto last = SignalChecks::lastFrame(media).value_or(frame);
    return CheckMoment{std::max<std::int64_t>(std::min(frame, last), 0), {}, {}};
}

/// A limit on the loudest window of some length.
struct WindowLimit {
    QString id;
    QString title;
    const std::optional<LoudnessLimit>& limit;
    const std::optional<LoudestWindow>& loudest;
    double seconds; ///< Of the window.
};

CheckResult windowRow(const WindowLimit& window, const MediaInfo& media)
{
    const CheckRow row{window.id, window.title,
                       u"at most %1 LUFS in any %2 s (%3)"_s.arg(given(window.limit->lufs),
                                                                 given(window.seconds),
                                                                 window.limit->source.words())};
    if (!media.signal)
        return row.info(u"signal pass skipped"_s);
    const SignalInfo& signal = *media.signal;
    const bool isShorter = signal.soundStart && signal.soundEnd
                           && Numbers::below(*signal.soundEnd - *signal.soundStart, window.seconds);
    if (isShorter)
        return row.info(u"the sound is shorter than %1 s"_s.arg(given(window.seconds)));
    if (!window.loudest)
        return row.warn(u"could not be measured"_s);
    const double loudest = window.loudest->lufs;
    if (!Numbers::above(loudest, absoluteGate))
        return row.pass(u"silent"_s);
    const QString measured = u"%1 LUFS at its loudest"_s.arg(oneDecimal(loudest));
    if (!Numbers::above(loudest, window.limit->lufs))
        return row.pass(measured);
    CheckResult result = row.fail(
        measured + u" (%1 LU over)"_s.arg(oneDecimal(loudest - window.limit->lufs)),
        u"Turn the loudest passage down, or compress the mix, and bring the whole back to its "
        u"loudness: turned down as a whole it would be too quiet."_s);
    result.moment = placeAt(window.loudest->start, media);
    return result;
}

CheckResult silenceRow(double limit, double longest)
{
    const CheckRow row{u"silence"_s, u"Audio silence"_s,
                       u"no silent run over %1 s"_s.arg(Numbers::given(limit, 1))};
    if (Numbers::above(longest, limit))
        return row.fail(u"%1 s of continuous silence"_s.arg(oneDecimal(longest)),
                        u"Check for a dropped audio region or a silent head/tail. Room tone under "
                        u"the gap is enough to clear this."_s);
    return row.pass(longest > 0 ? u"longest silent run %1 s"_s.arg(oneDecimal(longest))
                                : u"no silent runs"_s);
}

void addWindowRows(const LoudnessRule& rule, const MediaInfo& media, Rows& rows)
{
    if (!media.audio)
        return;
    static const std::optional<LoudestWindow> none;
    const auto& shortTerm = media.signal ? media.signal->maxShortTerm : none;
    const auto& momentary = media.signal ? media.signal->maxMomentary : none;
    for (const WindowLimit& window :
         {WindowLimit{u"short-term"_s, u"Short-term loudness"_s, rule.maxShortTerm, shortTerm, 3},
          WindowLimit{u"momentary"_s, u"Momentary loudness"_s, rule.maxMomentary, momentary, 0.4}})
        if (window.limit)
            rows.push_back(windowRow(window, media));
}

} // namespace

void checkLoudness(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.loudness)
        return;
    const LoudnessRule& rule = *profile.loudness;
    const auto& target = rule.targetLKFS;
    if (!media.signal) {
        if (target)
            rows.push_back(loudnessLabel(rule, *target).info(u"signal pass skipped"_s));
        addWindowRows(rule, media, rows);
        return;
    }
    const SignalInfo& signal = *media.signal;
    // Of what is too quiet no place is worth a look.
    const auto add = [&](CheckResult row, bool isHigh, const std::optional<double>& seconds) {
        row.measured += media.audio ? SignalChecks::trackRemark(*media.audio) : QString();
        if (isHigh && row.verdict != Verdict::pass)
            row.moment = placeAt(seconds, media);
        rows.push_back(std::move(row));
    };
    if (const auto& integrated = signal.integratedLKFS; target && integrated)
        add(loudnessRow(rule, *target, *integrated), *integrated > *target, signal.loudestSeconds);
    else if (target && media.audio)
        rows.push_back(loudnessLabel(rule, *target).warn(u"could not be measured"_s));
    if (const auto& peak = signal.truePeakDb; rule.maxTruePeakDb && peak)
        add(truePeakRow(rule, *rule.maxTruePeakDb, *peak),
            !rule.minTruePeakDb || *peak > *rule.minTruePeakDb, signal.truePeakSeconds);
    if (rule.maxSilenceSeconds)
        rows.push_back(
            silenceRow(*rule.maxSilenceSeconds, signal.longestSilenceSeconds.value_or(0)));
    addWindowRows(rule, media, rows);
}

} // namespace vantroque::Checker
