#include "Base/Numbers.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/SignalChecks.h"

#include <QStringList>

#include <algorithm>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

/// EBU R 103 with its usual tolerance, for files that no platform grades.
const LevelsRule generalRule{u"EBU R 103"_s, 5, 1, 4};

QString limitText(double limit)
{
    return Numbers::given(limit, Numbers::below(limit, 10) ? 1 : 0) + u" s"_s;
}

/// The first of the longest runs.
std::optional<LevelRun> longest(const std::vector<LevelRun>& runs)
{
    std::optional<LevelRun> best;
    for (const LevelRun& run : runs)
        if (!best || Numbers::above(length(run), length(*best)))
            best = run;
    return best;
}

/// The longest runs out of limits, and the words for them.
class LevelFindings {
public:
    LevelFindings(const PictureLevels& levels, const LevelsRule& rule, FrameRate rate)
        : m_levels(levels),
          m_rule(rule),
          m_rate(rate),
          m_luma(longest(levels.yRejectRuns)),
          m_rgb(longest(levels.rgbRejectRuns))
    {
        note(u"luma"_s, m_luma, false);
        // A gamut judged through an assumed matrix is no ground for rejection.
        note(u"RGB"_s, m_rgb, levels.matrixAssumed);
        const auto strict = longest(levels.strictRuns);
        if (m_short.isEmpty() && strict) {
            m_isLongInTolerance = !Numbers::below(length(*strict), m_rule.rejectSeconds);
            m_short << u"beyond EBU R 103's preferred −1–103% on %1, inside its tolerance"_s.arg(
                extent(*strict));
        }
    }

    CheckResult row(const CheckRow& row, bool gate) const
    {
        const QString assumed =
            m_levels.matrixAssumed
                ? u" (RGB measured assuming %1: the file carries no matrix tag)"_s.arg(
                    matrixName(m_levels.matrix))
                : QString();
        if (!m_rejected.isEmpty())
            return row.outcome(gate ? Verdict::fail : Verdict::warn,
                               m_rejected.join(u"; "_s) + assumed, rejectedFix());
        if (m_short.isEmpty())
            return row.pass(legalText());
        return row.warn(m_short.join(u"; "_s) + assumed, shortFix());
    }

    bool isEmpty() const { return m_rejected.isEmpty() && m_short.isEmpty(); }
    QString text() const { return (m_rejected.isEmpty() ? m_short : m_rejected).join(u"; "_s); }

private:
    void note(const QString& what, const std::optional<LevelRun>& run, bool neverRejected)
    {
        if (!run)
            return;
        const bool tooShort = Numbers::below(length(*run), m_rule.rejectSeconds);
        (tooShort || neverRejected ? m_short : m_rejected) << u"%1 beyond ±%2% on %3"_s.arg(
            what, Numbers::given(m_rule.tolerancePercent, 0), extent(*run));
    }

    QString extent(const LevelRun& run) const
    {
        return u"%1% of the picture at %2 for %3"_s.arg(Numbers::fixed(run.worstFraction * 100, 1),
                                                        timecode(run.start), seconds(length(run)));
    }

    QString timecode(double time) const { return Timecode::fromSeconds(time, m_rate).text(); }

    QString legalText() const
    {
        return u"luma %1–%2% of range, RGB legal%3"_s.arg(
            Numbers::fixed(m_levels.yMinPercent, 0), Numbers::fixed(m_levels.yMaxPercent, 0),
            m_levels.matrixAssumed ? u" (assuming %1)"_s.arg(matrixName(m_levels.matrix))
                                   : QString());
    }

    QString rejectedFix() const
    {
        return u"Legalise the picture: a broadcast-safe limiter on the timeline, or bring the "
               u"offending graphic (usually a white card or a saturated brand colour) inside "
               u"0–100% and re-export. The worst moment is at %1."_s.arg(
                   timecode((m_luma ? m_luma : m_rgb)->start));
    }

    QString shortFix() const
    {
        if (m_rgb && m_levels.matrixAssumed)
            return u"Tag the export with its colour matrix (Rec.709 for HD) so the gamut can be "
                   u"judged against what the file was made with, and check the moment at %1 on a "
                   u"scope."_s.arg(timecode(m_rgb->start));
        if (m_isLongInTolerance)
            return u"Inside the tolerance, so nothing is refused for it. A legaliser or a "
                   u"corrected graphic brings it inside the preferred range."_s;
        return u"Shorter than the %1 rejection window, but the same fix applies: a legaliser or a "
               u"corrected graphic."_s.arg(limitText(m_rule.rejectSeconds));
    }

    const PictureLevels& m_levels;
    const LevelsRule& m_rule;
    FrameRate m_rate;
    std::optional<LevelRun> m_luma;
    std::optional<LevelRun> m_rgb;
    QStringList m_rejected; ///< Out of limits for long enough to be refused.
    QStringList m_short;
    bool m_isLongInTolerance = false; ///< All there is, and it lasts.
};

/// The same levels, but one part of the runs.
PictureLevels partOf(const PictureLevels& levels, double leaderEnd,
                     std::vector<LevelRun> PartedRuns::*part)
{
    PictureLevels some = levels;
    for (auto* runs : {&some.yRejectRuns, &some.rgbRejectRuns, &some.strictRuns})
        *runs = partedAt(leaderEnd, *runs).*part;
    return some;
}

QString expectedText(const LevelsRule& rule, bool gate)
{
    return u"luma and RGB within 0–100% (%1 beyond %2% on more than %3% of the image for %4)"_s.arg(
        gate ? u"rejected"_s : u"EBU R 103 rejects"_s, Numbers::given(rule.tolerancePercent, 0),
        Numbers::given(rule.areaPercent, 0), limitText(rule.rejectSeconds));
}

} // namespace

std::optional<CheckResult> levelsRow(const MediaInfo& media, const std::optional<LevelsRule>& rule,
                                     bool gate, double leaderEnd)
{
    if (!media.video)
        return std::nullopt;
    const CheckRow row{u"video-levels"_s, u"Video levels"_s, u"picture levels within EBU R 103"_s};
    if (media.video->isHDR())
        return row.expecting(u"an SDR picture within EBU R 103"_s)
            .info(u"HDR picture; EBU R 103 limits apply to SDR and are not applied"_s);
    if (!media.signal)
        return row.info(u"signal pass skipped"_s);
    if (!media.signal->levels)
        return row.info(u"not measured"_s);
    const LevelsRule& limits = rule ? *rule : generalRule;
    const CheckRow measuredRow = row.expecting(expectedText(limits, gate));
    const FrameRate rate = countingRate(media);
    const PictureLevels& levels = *media.signal->levels;
    const PictureLevels leader = partOf(levels, leaderEnd, &PartedRuns::before);
    const PictureLevels ad = partOf(levels, leaderEnd, &PartedRuns::after);
    const LevelFindings inLeader(leader, limits, rate);
    const LevelFindings inAd(ad, limits, rate);
    if (inAd.isEmpty() && !inLeader.isEmpty())
        return measuredRow.info(inLeader.text() + u", in the leader; legal from its end on"_s);
    return inAd.row(measuredRow, gate);
}

PartedRuns partedAt(double second, const std::vector<LevelRun>& runs)
{
    PartedRuns parted;
    for (const LevelRun& run : runs) {
        if (Numbers::below(run.start, second))
            parted.before.push_back({run.start, std::min(run.end, second), run.worstFraction});
        if (Numbers::above(run.end, second))
            parted.after.push_back({std::max(run.start, second), run.end, run.worstFraction});
    }
    return parted;
}

} // namespace vantroque::SignalChecks
