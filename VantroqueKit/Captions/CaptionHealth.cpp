#include "Captions/CaptionHealth.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <limits>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Cue times are written in milliseconds; what differs by less is the same moment.
constexpr double millisecond = 0.001;

int overlapping(const std::vector<CaptionCue>& cues)
{
    int count = 0;
    double latestEnd = -std::numeric_limits<double>::infinity();
    for (const CaptionCue& cue : cues) {
        count += Numbers::below(cue.start, latestEnd - millisecond);
        latestEnd = std::max(latestEnd, cue.end);
    }
    return count;
}

/// "%1" in the plural stands for the count. Empty when there is nothing to tell.
std::vector<QString> note(std::int64_t count, const QString& one, const QString& many)
{
    if (count < 1)
        return {};
    return {count == 1 ? one : many.arg(count)};
}

std::vector<QString> joined(const std::vector<std::vector<QString>>& lists)
{
    std::vector<QString> all;
    for (const auto& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

std::vector<QString> shifted(const CaptionHealth& health)
{
    const QString from = u"Timed from %1:00:00:00, shifted back "_s.arg(
        Numbers::zeroPadded(std::max<std::int64_t>(health.shiftedHours, 0), 2));
    return note(health.shiftedHours, from + u"an hour"_s, from + u"%1 hours"_s);
}

std::vector<QString> beyond(const CaptionHealth& health)
{
    return note(health.beyondPicture, u"1 cue after the picture ends"_s,
                u"%1 cues after the picture ends"_s);
}

std::vector<QString> overlaps(const CaptionHealth& health)
{
    return note(health.overlapping, u"1 cue overlaps the one before"_s,
                u"%1 cues overlap the one before"_s);
}

std::vector<QString> lengthless(const CaptionHealth& health)
{
    return note(health.zeroLength, u"1 cue with no duration"_s, u"%1 cues with no duration"_s);
}

} // namespace

CaptionHealth CaptionHealth::of(const CaptionTrack& track, double duration)
{
    const auto& cues = track.cues();
    const auto count = [&](auto condition) {
        return static_cast<int>(std::ranges::count_if(cues, condition));
    };
    CaptionHealth health;
    health.cueCount = static_cast<int>(cues.size());
    if (!cues.empty()) {
        health.first = cues.front().start;
        health.last = std::ranges::max(cues, {}, &CaptionCue::end).end;
    }
    health.overlapping = vantroque::overlapping(cues);
    if (duration > 0)
        health.beyondPicture = count([&](const CaptionCue& cue) {
            return !Numbers::below(cue.start, duration - millisecond);
        });
    health.zeroLength = count([](const CaptionCue& cue) { return cue.end <= cue.start; });
    health.empty = count([](const CaptionCue& cue) { return cue.text().trimmed().isEmpty(); });
    health.overTwoLines = count([](const CaptionCue& cue) { return cue.lineCount() > 2; });
    health.shiftedHours = Numbers::roundedToInt(track.shift() / 3600);
    return health;
}

std::vector<QString> CaptionHealth::notes() const
{
    return joined(
        {shifted(*this), beyond(*this), overlaps(*this), lengthless(*this), layoutNotes()});
}

std::vector<QString> CaptionHealth::timingNotes() const
{
    return joined({overlaps(*this), beyond(*this), lengthless(*this)});
}

std::vector<QString> CaptionHealth::layoutNotes() const
{
    return joined({note(empty, u"1 empty cue"_s, u"%1 empty cues"_s),
                   note(overTwoLines, u"1 cue over two lines"_s, u"%1 cues over two lines"_s)});
}

} // namespace vantroque
