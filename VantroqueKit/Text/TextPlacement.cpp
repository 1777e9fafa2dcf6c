#include "Text/TextPlacement.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace vantroque::TextPlacement {

using Numbers::above;
using Numbers::below;

namespace {

using Box = TextSample::Box;

/// Words of one line stand at most this many heights apart.
constexpr double widestGap = 3.0;

bool isWithin(double value, double lowest, double highest)
{
    return !below(value, lowest) && !above(value, highest);
}

/// Between two rectangles side by side; negative where they overlap.
double horizontalGap(const NormalizedRect& a, const NormalizedRect& b)
{
    return std::max(a.x - b.right(), b.x - a.right());
}

bool isNear(const NormalizedRect& a, const NormalizedRect& b)
{
    return !above(horizontalGap(a, b), std::max(a.height, b.height) * widestGap);
}

/// Whether a box is the next piece of a line.
bool belongsTo(const NormalizedRect& line, const NormalizedRect& box)
{
    const double lowest = std::min(line.height, box.height);
    return lowest > 0 && !above(std::abs(line.centerY() - box.centerY()), lowest * 0.6)
           && isWithin(box.height / line.height, 0.6, 1.67) && isNear(line, box);
}

/// The same text, seen in sample after sample.
struct Track {
    double start = 0;
    double end = 0;
    NormalizedRect anchor; ///< Where it was first seen.
    NormalizedRect last;
    std::vector<NormalizedRect> rects;
    std::vector<QString> texts;
    bool isMatched = true; ///< In the present sample.

    Track(double time, const Box& box) : start(time), anchor(box.rect) { take(time, box); }

    void take(double time, const Box& box)
    {
        end = time;
        last = box.rect;
        rects.push_back(box.rect);
        texts.push_back(box.text);
        isMatched = true;
    }
    TextRegion region() const
    {
        const NormalizedRect rect = typical(rects);
        return {start, end, rect.x, rect.y, rect.width, rect.height, commonest(texts)};
    }
};

double ratio(double value, double divisor)
{
    constexpr double smallest = 1e-6;
    return value / std::max(divisor, smallest);
}

/// Whether `inner` lies within `outer` from left to right, or sticks out by the drift at most.
bool liesWithin(const NormalizedRect& inner, const NormalizedRect& outer)
{
    return !below(inner.x, outer.x - maximumDrift)
           && !above(inner.right(), outer.right() + maximumDrift);
}

/// Whether a box is the track's text again; a wipe lets it grow or shrink along the line.
bool continues(const Track& track, const NormalizedRect& box)
{
    const NormalizedRect& last = track.last;
    if (above(std::abs(last.centerY() - box.centerY()), maximumDrift)
        || !isWithin(ratio(box.height, last.height), 0.7, 1.43))
        return false;
    const bool stands = !above(std::abs(last.centerX() - box.centerX()), maximumDrift)
                        && isWithin(ratio(box.width, last.width), 0.75, 1.34);
    return stands || liesWithin(box, track.anchor) || liesWithin(track.anchor, box);
}

double distance(const NormalizedRect& a, const NormalizedRect& b)
{
    return std::max(std::abs(a.centerX() - b.centerX()), std::abs(a.centerY() - b.centerY()));
}

/// The unmatched track that is nearest to the box, the first of equals.
Track* nearest(std::vector<Track>& open, const NormalizedRect& box)
{
    Track* best = nullptr;
    for (Track& track : open)
        if (!track.isMatched && continues(track, box)
            && (best == nullptr || distance(track.last, box) < distance(best->last, box)))
            best = &track;
    return best;
}

void addSample(std::vector<Track>& open, const TextSample& sample)
{
    for (Track& track : open)
        track.isMatched = false;
    for (const Box& box : mergeLines(sample.boxes)) {
        if (Track* track = nearest(open, box.rect))
            track->take(sample.time, box);
        else
            open.emplace_back(sample.time, box);
    }
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

bool isOneLine(const NormalizedRect& a, const NormalizedRect& b)
{
    const double lowest = std::min(a.height, b.height);
    const double overlap = std::min(a.bottom(), b.bottom()) - std::max(a.y, b.y);
    return lowest > 0 && !below(overlap, lowest / 2) && isNear(a, b);
}

bool isOnePlace(const NormalizedRect& a, const NormalizedRect& b)
{
    const double smaller = std::min(a.area(), b.area());
    return smaller > 0 && !below(a.intersected(b).area() / smaller, 0.6);
}

bool belongTogether(const TextRegion& a, const TextRegion& b)
{
    const bool atOneTime = !above(a.start, b.end) && !above(b.start, a.end);
    return atOneTime && (isOneLine(a.rect(), b.rect()) || isOnePlace(a.rect(), b.rect()));
}

/// Of the region that lasts longer; of equals the longer one.
QString betterText(const TextRegion& kept, const TextRegion& other)
{
    const double longer = other.duration() - kept.duration();
    if (std::abs(longer) > Numbers::slack)
        return longer > 0 ? other.text : kept.text;
    const bool isLonger = Text::characterCount(other.text) > Text::characterCount(kept.text);
    return isLonger ? other.text : kept.text;
}

TextRegion merged(const TextRegion& kept, const TextRegion& other)
{
    const NormalizedRect rect = kept.rect().united(other.rect());
    return {std::min(kept.start, other.start),
            std::max(kept.end, other.end),
            rect.x,
            rect.y,
            rect.width,
            rect.height,
            betterText(kept, other)};
}

} // namespace

std::vector<Box> mergeLines(std::vector<Box> boxes)
{
    std::ranges::stable_sort(boxes, {}, [](const Box& box) { return box.rect.x; });
    std::vector<Box> lines;
    for (const Box& box : boxes) {
        const auto line = std::find_if(lines.rbegin(), lines.rend(), [&](const Box& each) {
            return belongsTo(each.rect, box.rect);
        });
        if (line == lines.rend()) {
            lines.push_back(box);
        } else {
            line->rect = line->rect.united(box.rect);
            line->text += u' ' + box.text;
        }
    }
    return lines;
}

std::vector<TextRegion> track(std::vector<TextSample> samples, double shortest)
{
    std::ranges::stable_sort(samples, {}, &TextSample::time);
    std::vector<Track> open;
    std::vector<Track> closed;
    for (const TextSample& sample : samples) {
        addSample(open, sample);
        const auto gone = std::stable_partition(open.begin(), open.end(),
                                                [](const Track& each) { return each.isMatched; });
        closed.insert(closed.end(), gone, open.end());
        open.erase(gone, open.end());
    }
    closed.insert(closed.end(), open.begin(), open.end());

    constexpr double allowance = 1e-6;
    std::vector<TextRegion> regions;
    for (const Track& track : closed)
        if (track.end - track.start >= shortest - allowance)
            regions.push_back(track.region());
    std::ranges::stable_sort(regions, {}, &TextRegion::start);
    return fold(regions);
}

NormalizedRect typical(const std::vector<NormalizedRect>& rects)
{
    if (rects.empty())
        return {};
    if (rects.size() < 3)
        return rects.front().united(rects.back());
    const auto medianOf = [&](auto edge) {
        std::vector<double> values;
        for (const NormalizedRect& rect : rects)
            values.push_back(std::invoke(edge, rect));
        return median(std::move(values));
    };
    return NormalizedRect::fromEdges(medianOf(&NormalizedRect::x), medianOf(&NormalizedRect::y),
                                     medianOf(&NormalizedRect::right),
                                     medianOf(&NormalizedRect::bottom));
}

QString commonest(const std::vector<QString>& texts)
{
    QHash<QString, int> counts;
    for (const QString& text : texts)
        ++counts[text];
    QString best;
    for (const QString& text : texts) {
        const int lead = counts.value(text) - counts.value(best);
        if (lead > 0 || (lead == 0 && Text::characterCount(text) > Text::characterCount(best)))
            best = text;
    }
    return best;
}

std::vector<TextRegion> fold(const std::vector<TextRegion>& regions)
{
    std::vector<TextRegion> kept;
    for (const TextRegion& region : regions) {
        const auto partner = std::ranges::find_if(
            kept, [&](const TextRegion& each) { return belongTogether(each, region); });
        if (partner == kept.end())
            kept.push_back(region);
        else
            *partner = merged(*partner, region);
    }
    std::ranges::stable_sort(kept, {}, &TextRegion::start);
    return kept;
}

TextRegion narrowed(TextRegion region, const std::vector<double>& before,
                    const std::vector<double>& after, const std::function<bool(double)>& present)
{
    const auto first = std::ranges::partition_point(before, std::not_fn(present));
    if (first != before.end())
        region.start = std::min(region.start, *first);
    const auto gone = std::ranges::partition_point(after, present);
    if (gone != after.begin())
        region.end = std::max(region.end, *std::prev(gone));
    return region;
}

double reach(const NormalizedRect& rect)
{
    const double horizontal = 2 * std::max(0.5 - rect.x, rect.right() - 0.5);
    const double vertical = 2 * std::max(0.5 - rect.y, rect.bottom() - 0.5);
    return std::max({horizontal, vertical, 0.0});
}

double coverage(const NormalizedRect& rect, const PlatformZone& zone)
{
    if (rect.area() <= 0)
        return 0;
    double covered = 0;
    for (const PlatformZone::Region& region : zone.regions)
        covered += rect.intersected(region.rect).area();
    return std::min(covered / rect.area(), 1.0);
}

} // namespace vantroque::TextPlacement
