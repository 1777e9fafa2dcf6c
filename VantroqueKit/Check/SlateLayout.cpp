#include "Check/SlateLayout.h"

#include "Base/Numbers.h"
#include "Check/CheckRow.h"
#include "Signal/Leader.h"

#include <cmath>
#include <cstdlib>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

QString number(std::int64_t value)
{
    return QString::number(value);
}

struct LayoutOutcome {
    CheckResult row;
    bool noSlate = false; ///< There is none that could be read.
};

/// Where the file's black lies, against where the leader wants it. One frame either way is right.
class LeaderLayout {
public:
    explicit LeaderLayout(const LeaderFacts& facts)
        : m_facts(facts),
          m_slateFrames(facts.frameAt(facts.slateLen)),
          m_leaderFrames(facts.frameAt(facts.leaderEnd())),
          m_row{u"slate"_s, u"Slate and leader"_s,
                u"slate to frame %1, black to frame %2; the ad starts on frame %2 "
                u"(frame zero counted)"_s.arg(number(m_slateFrames), number(m_leaderFrames))}
    {
        for (const TimeSpan& run : facts.runs) {
            if (!m_headRun && !Numbers::above(run.start, 0.05))
                m_headRun = run;
            if (Numbers::above(run.start, 0.5) && Numbers::below(run.end, facts.totalSeconds - 0.05)
                && (!m_gap || isBetterGap(run, *m_gap)))
                m_gap = run;
        }
    }

    LayoutOutcome outcome() const
    {
        if (!m_headRun)
            return m_gap ? LayoutOutcome{gapRow()} : noLeader();
        const std::int64_t headFrames = m_facts.frameAt(m_headRun->end);
        if (isAboutTheSlate(m_headRun->end)) {
            const std::int64_t drift = headFrames - m_leaderFrames;
            return std::abs(drift) >= 2 && m_gap ? LayoutOutcome{gapRow()} : blackHead(headFrames);
        }
        if (m_gap)
            return {gapRow()};
        return {m_row.fail(u"the head is %1 frames of black, then the ad; no slate"_s.arg(
                               number(headFrames)),
                           layoutFix()),
                true};
    }

private:
    /// A gap between two shots does not end the leader while there is black that does.
    bool isBetterGap(const TimeSpan& run, const TimeSpan& other) const
    {
        const Leader::Layout layout{m_facts.slateLen, m_facts.gapLen};
        const bool parts = Leader::partsSlateFromAd(run, layout);
        const bool otherParts = Leader::partsSlateFromAd(other, layout);
        if (parts != otherParts)
            return parts;
        return Numbers::below(distance(run), distance(other));
    }

    double distance(const TimeSpan& run) const { return std::abs(run.end - m_facts.leaderEnd()); }

    bool isAboutTheSlate(double seconds) const
    {
        return !Numbers::above(m_facts.slateLen - 0.5, seconds);
    }

    QString layoutFix() const
    {
        return u"Lay the file out as %1, with the first active frame on frame %2."_s.arg(
            m_facts.rule.slateLayout.value_or(u"slate, black, then the ad"_s),
            number(m_leaderFrames));
    }

    LayoutOutcome noLeader() const
    {
        return {
            m_row.fail(isAboutTheSlate(m_facts.signal.headFreezeSeconds)
                           ? u"a slate-like held frame at the head, but no black before the ad"_s
                           : u"no leader; the ad appears to start on frame 0"_s,
                       layoutFix()),
            true};
    }

    LayoutOutcome blackHead(std::int64_t headFrames) const
    {
        const QString frame = number(headFrames);
        if (headFrames - m_leaderFrames > 1)
            return {m_row.fail(u"black leads through frame %1, then the ad; no slate"_s.arg(frame),
                               layoutFix()),
                    true};
        // White words on black are a mostly black picture, so text that was read outvotes the
        // black detector.
        const auto& lines = m_facts.signal.slateTextLines;
        if (!lines || lines->size() < 2)
            return {m_row.warn(
                u"head reads as black through frame %1; no slate picture detected"_s.arg(frame),
                u"A white-on-black slate can read as black here. Confirm it shows the Ad-ID, "
                u"advertiser, title and duration. If the head really is bare black, add the "
                u"slate."_s)};
        return {m_row.pass(u"white-on-black slate; leader runs to frame %1"_s.arg(frame))};
    }

    CheckResult gapRow() const
    {
        const std::int64_t gapStart = m_facts.frameAt(m_gap->start);
        const std::int64_t gapEnd = m_facts.frameAt(m_gap->end);
        const QString found =
            u"slate to frame %1, black to frame %2"_s.arg(number(gapStart), number(gapEnd));
        const bool startsRight = std::abs(gapStart - m_slateFrames) < 2;
        const std::int64_t endOff = gapEnd - m_leaderFrames;
        if (startsRight && std::abs(endOff) < 2)
            return m_row.pass(found);
        // The ad may open with a fade from black as long as the one that may close it.
        if (startsRight && endOff >= 2 && endOff <= m_facts.rule.maxTailFadeFrames.value_or(10))
            return m_row.warn(
                u"%1; first clearly active frame is %2"_s.arg(found, number(gapEnd)),
                u"An opening fade from black can read late here. Confirm the ad's first frame sits "
                u"on frame %1."_s.arg(number(m_leaderFrames)));
        return m_row.fail(found, layoutFix());
    }

    const LeaderFacts& m_facts;
    std::int64_t m_slateFrames;
    std::int64_t m_leaderFrames;
    CheckRow m_row;
    std::optional<TimeSpan> m_headRun;
    std::optional<TimeSpan> m_gap; ///< The black inside the file that ends nearest to the leader.
};

CheckResult tailRow(int limit, std::int64_t tail)
{
    const CheckRow row{u"tail-black"_s, u"Tail"_s,
                       u"content to the last frame; fades up to %1 frames"_s.arg(number(limit))};
    if (tail == 0)
        return row.pass(u"content runs to the last frame"_s);
    if (tail <= limit)
        return row.pass(
            u"%1 frames of black at the tail (within the fade allowance)"_s.arg(number(tail)));
    return row.fail(u"%1 frames of black after the content"_s.arg(number(tail)),
                    u"Trim the tail so the last frame of content is the last frame of the file."_s);
}

} // namespace

std::int64_t LeaderFacts::frameAt(double seconds) const
{
    return Numbers::roundedToInt(seconds * video.nominalFrameRate);
}

void checkSlateLayout(const LeaderFacts& facts, Rows& rows)
{
    const LayoutOutcome layout = LeaderLayout(facts).outcome();
    rows.push_back(layout.row);
    const auto& mustShow = facts.rule.slateMustShow;
    if (mustShow && !mustShow->empty() && !layout.noSlate)
        checkSlateContents(*mustShow, facts.signal, facts.fileName,
                           facts.totalSeconds - facts.leaderEnd(), rows);
    if (facts.rule.slateMuteRequired.value_or(false) && facts.hasAudio)
        rows.push_back(slateAudioRow(facts));
    if (const auto& limit = facts.rule.maxTailFadeFrames)
        rows.push_back(tailRow(*limit, facts.frameAt(facts.signal.tailBlackSeconds)));
}

} // namespace vantroque::Checker
