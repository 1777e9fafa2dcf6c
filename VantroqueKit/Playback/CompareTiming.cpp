#include "Playback/CompareTiming.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vantroque::CompareTiming {

using namespace Qt::StringLiterals;

namespace {

/// Of a clip that goes on beyond its ends.
double unboundedTime(double position, const Line& line, const Clip& clip)
{
    return alignedTime(position, line, clip) + clip.offset;
}

} // namespace

Clip Clip::of(const VideoSummary& video)
{
    const double stated = video.durationSeconds;
    Clip clip{.duration = std::isfinite(stated) ? std::max(stated, 0.0) : 0,
              .rate = FrameRate::of(video.frameRate).value_or(FrameRate::television())};
    constexpr double little = 0.5; // more of a difference is a rate that varies
    const double counted = clip.rate.secondsOf(video.frameCount.value_or(0));
    if (counted > 0 && std::abs(counted - clip.duration) <= little)
        clip.duration = counted;
    return clip;
}

Clip Clip::endingWith(std::int64_t lastFrame) const
{
    Clip clip = *this;
    clip.duration = std::max(rate.secondsOf(lastFrame) + step(), 0.0);
    return clip;
}

double Clip::last() const
{
    return std::max(duration - step(), 0.0);
}

Line Line::of(const std::vector<Clip>& clips, SyncAlignment alignment)
{
    Line line{.alignment = alignment};
    for (const Clip& clip : clips)
        line.longest = std::max(line.longest, clip.duration);
    return line;
}

double Line::clamped(double position) const
{
    return std::clamp(position, 0.0, longest);
}

FrameRate sharedRate(const std::vector<Clip>& clips)
{
    const auto fastest = std::ranges::max_element(clips, {}, &Clip::rate);
    return fastest == clips.end() ? FrameRate::television() : fastest->rate;
}

bool isSlipped(const Clip& clip)
{
    constexpr double unseen = 0.0005;
    return std::abs(clip.offset) > unseen;
}

double alignedTime(double position, const Line& line, const Clip& clip)
{
    return line.alignment == SyncAlignment::fromStart ? position
                                                      : clip.duration - (line.longest - position);
}

double time(double position, const Line& line, const Clip& clip)
{
    return std::clamp(unboundedTime(position, line, clip), 0.0, clip.last());
}

std::int64_t frameDue(double position, const Line& line, const Clip& clip)
{
    constexpr double early = 0.001;
    return Numbers::truncatedToInt((time(position, line, clip) + early) * clip.rate.perSecond());
}

double offset(double target, double position, const Line& line, const Clip& clip)
{
    return target - alignedTime(position, line, clip);
}

double timeUntilStart(double position, const Line& line, const Clip& clip)
{
    return std::max(0.0, -unboundedTime(position, line, clip));
}

std::optional<QString> startsIn(double position, const Line& line, const Clip& clip)
{
    const double remaining = timeUntilStart(position, line, clip);
    if (remaining <= clip.step() / 2)
        return std::nullopt;
    constexpr int minute = 60;
    const std::int64_t seconds = Numbers::roundedToInt(remaining);
    return u"Starts in %1:%2"_s.arg(QString::number(seconds / minute),
                                    Numbers::zeroPadded(seconds % minute, 2));
}

double position(double clipTime, const Line& line, const Clip& clip)
{
    return line.clamped(line.alignment == SyncAlignment::fromStart
                            ? clipTime
                            : line.longest - (clip.duration - clipTime));
}

bool runFinished(double position, double rate, const Line& line)
{
    if (rate == 0)
        return true;
    return rate > 0 ? position >= line.longest : position <= 0;
}

std::optional<Entry> entry(double position, double rate, const Line& line, const Clip& clip)
{
    const double now = unboundedTime(position, line, clip);
    const double last = clip.last();
    const bool isOver = rate > 0 ? now >= last : now <= 0;
    if (rate == 0 || isOver)
        return std::nullopt;
    if (rate > 0 && now < 0)
        return Entry{.delay = -now, .clipTime = 0};
    if (rate < 0 && now > last)
        return Entry{.delay = now - last, .clipTime = last};
    return Entry{.delay = 0, .clipTime = now};
}

} // namespace vantroque::CompareTiming
