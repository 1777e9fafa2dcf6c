#include "Flashes/FlashTable.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

// What follows shares nothing with the analyzer: light, chromaticity and counting are written out
// once more, zone by zone and without any state.

constexpr int cells = 200; // of 40 by 20 samples

double lightOfCode(FlashLight light, double code)
{
    const double level = std::max((code - 64) / 876, 0.0);
    switch (light) {
    case FlashLight::bt1886: return 200 * std::pow(level, 2.4);
    case FlashLight::legacy: return 413.435 * std::pow(0.002745 * level * 255 + 0.0189623, 2.2);
    case FlashLight::pq: {
        const double p = std::pow(level, 32.0 / 2523);
        return 10'000
               * std::pow(std::max(p - 0.8359375, 0.0) / (18.8515625 - 18.6875 * p), 8192.0 / 1305);
    }
    case FlashLight::hlg: break;
    }
    const double scene = level <= 0.5
                             ? level * level / 3
                             : (std::exp((level - 0.55991073) / 0.17883277) + 0.28466892) / 12;
    return 1000 * std::pow(scene, 1.2); // of greys
}

struct Rgb {
    double r, g, b;
};

/// Of BT.709 alone, in cd/m2 of white.
Rgb rgbOf(FlashLight light, const Colour& colour)
{
    const double y = (colour.y - 64) / 876.0;
    const double cb = (colour.cb - 512) / 896.0;
    const double cr = (colour.cr - 512) / 896.0;
    const auto primary = [&](double level) { return lightOfCode(light, 64 + 876 * level); };
    return {primary(y + 1.5748 * cr), primary(y - 0.1873 * cb - 0.4681 * cr),
            primary(y + 1.8556 * cb)};
}

double luminanceOf(FlashLight light, const Colour& colour)
{
    if (colour.cb == 512 && colour.cr == 512)
        return lightOfCode(light, colour.y);
    const Rgb rgb = rgbOf(light, colour);
    return 0.2126 * rgb.r + 0.7152 * rgb.g + 0.0722 * rgb.b;
}

bool luminanceCounts(FlashLight light, const FlashZone& zone)
{
    const double a = luminanceOf(light, zone.first);
    const double b = luminanceOf(light, zone.second);
    const double dark = std::min(a, b);
    const double step = std::abs(a - b);
    if (dark < 160)
        return step >= 20;
    return light != FlashLight::bt1886 && light != FlashLight::legacy && step / (a + b) >= 1.0 / 17;
}

bool redCounts(FlashLight light, const FlashZone& zone)
{
    struct State {
        double share, u, v;
    };
    const auto state = [&](const Colour& colour) {
        Rgb c = rgbOf(light, colour);
        for (double* each : {&c.r, &c.g, &c.b})
            *each += 0.2;
        const double x = 0.4124 * c.r + 0.3576 * c.g + 0.1805 * c.b;
        const double y = 0.2126 * c.r + 0.7152 * c.g + 0.0722 * c.b;
        const double z = 0.0193 * c.r + 0.1192 * c.g + 0.9505 * c.b;
        return State{c.r / (c.r + c.g + c.b), 4 * x / (x + 15 * y + 3 * z),
                     9 * y / (x + 15 * y + 3 * z)};
    };
    const State a = state(zone.first);
    const State b = state(zone.second);
    return std::max(a.share, b.share) >= 0.8 && std::hypot(a.u - b.u, a.v - b.v) > 0.2;
}

/// One zone's changes of one kind, with how many of them lie in the second up to each.
struct Counted {
    int frame;
    double time;
    bool up;
    int count;
    double oldest;
};

std::vector<Counted> counted(const FlashClip& clip, const FlashZone& zone, bool secondIsUp)
{
    const double rate = clip.source.frameRate;
    const bool is60 = std::abs(rate - 30) < 0.1 || std::abs(rate - 60) < 0.1;
    const double apart = is60 ? 0.333 : 0.359;
    std::vector<Counted> found;
    const auto timeOf = [&](std::size_t i) {
        return static_cast<double>(clip.times[static_cast<std::size_t>(zone.toggles[i])]) / 1e6;
    };
    for (std::size_t last = 0; last < zone.toggles.size(); ++last) {
        Counted each{zone.toggles[last], timeOf(last), (last % 2 == 0) == secondIsUp, 0, 0};
        for (std::size_t i = 0; i <= last; ++i) {
            const bool inSecond = timeOf(last) - timeOf(i) < 0.99995;
            const bool closeBefore = i >= 2 && timeOf(i) - timeOf(i - 2) < apart - 1e-7;
            const bool closeAfter = i + 2 <= last && timeOf(i + 2) - timeOf(i) < apart - 1e-7;
            if (!inSecond || !(closeBefore || closeAfter))
                continue;
            if (each.count == 0)
                each.oldest = timeOf(i);
            ++each.count;
        }
        found.push_back(each);
    }
    return found;
}

struct ZoneChanges {
    int cells;
    std::vector<Counted> changes;
};

/// The frames at which more than a quarter changes in one direction, with so many changes each.
std::vector<int> framesOver(const std::vector<ZoneChanges>& zones, int frames, int least)
{
    std::vector<int> over;
    for (int frame = 0; frame < frames; ++frame)
        for (const bool up : {true, false}) {
            int area = 0;
            bool isNow = false;
            for (const ZoneChanges& zone : zones)
                for (const Counted& each : zone.changes)
                    if (each.up == up && each.count >= least
                        && (each.frame == frame || each.frame == frame - 1)) {
                        area += zone.cells;
                        isNow = isNow || each.frame == frame;
                    }
            if (isNow && area * 4 > cells && (over.empty() || over.back() != frame))
                over.push_back(frame);
        }
    return over;
}

bool isExtended(const FlashClip& clip, const std::vector<ZoneChanges>& zones)
{
    double first = 0;
    double last = -10;
    for (const int frame : framesOver(zones, static_cast<int>(clip.times.size()), 4)) {
        const double now = static_cast<double>(clip.times[static_cast<std::size_t>(frame)]) / 1e6;
        if (now - last > 1) {
            first = now;
            for (const ZoneChanges& zone : zones)
                for (const Counted& each : zone.changes)
                    if (each.frame == frame && each.count >= 4)
                        first = std::min(first, each.oldest);
        }
        last = now;
        if (last - first > 5)
            return true;
    }
    return false;
}

constexpr Colour grey(int code)
{
    return {code, 512, 512};
}

/// The lowest grey of at least so much light.
int codeFor(FlashLight light, double nits)
{
    int code = 64;
    while (code < 1000 && lightOfCode(light, code) < nits)
        ++code;
    return code;
}

Colour ofRgb(double r, double g, double b)
{
    const double y = 0.2126 * r + 0.7152 * g + 0.0722 * b;
    return {static_cast<int>(std::lround(64 + 876 * y)),
            static_cast<int>(std::lround(512 + 896 * (b - y) / 1.8556)),
            static_cast<int>(std::lround(512 + 896 * (r - y) / 1.5748))};
}

struct Rate {
    const char* name;
    double perSecond;
};

const std::vector<Rate>& rates()
{
    static const std::vector<Rate> all{{"23.976", 24'000.0 / 1001}, {"24", 24}, {"25", 25},
                                       {"29.97", 30'000.0 / 1001},  {"30", 30}, {"50", 50},
                                       {"59.94", 60'000.0 / 1001},  {"60", 60}};
    return all;
}

FlashClip clipAt(const std::string& name, double rate, double seconds, bool fields = false)
{
    FlashClip clip;
    clip.name = name;
    clip.source.picture = {40, 20};
    clip.source.frameRate = rate;
    clip.source.fields = fields;
    const double pictures = fields ? rate * 2 : rate;
    for (int i = 0; i < pictures * seconds; ++i)
        clip.times.push_back(std::llround(i / pictures * 1e6));
    return clip;
}

/// So many changes, spread evenly over so many seconds from some second on.
std::vector<int> spread(const FlashClip& clip, int changes, double from, double over)
{
    std::vector<int> frames;
    for (int i = 0; i < changes; ++i) {
        const double time = from + over * i / std::max(changes - 1, 1);
        const auto at =
            std::ranges::lower_bound(clip.times, static_cast<Microseconds>(time * 1e6 - 1));
        frames.push_back(static_cast<int>(at - clip.times.begin()));
    }
    return frames;
}

void addCounts(std::vector<FlashClip>& table)
{
    for (const Rate& rate : rates())
        for (const int changes : {5, 6, 7, 8})
            for (const int percent : {24, 25, 26, 100}) {
                FlashClip clip = clipAt("count " + std::to_string(changes) + " area "
                                            + std::to_string(percent) + " at " + rate.name,
                                        rate.perSecond, 2);
                clip.zones = {
                    {cells * percent / 100, grey(64), grey(700), spread(clip, changes, 0.4, 0.9)}};
                table.push_back(clip);
            }
}

void addSteps(std::vector<FlashClip>& table)
{
    for (const FlashLight light :
         {FlashLight::bt1886, FlashLight::legacy, FlashLight::pq, FlashLight::hlg})
        for (const double dark : {0.1, 50.0, 158.0, 161.0, 170.0})
            for (const double step : {19.0, 20.0, 21.0, 26.0})
                for (const bool startsBright : {false, true}) {
                    FlashClip clip = clipAt(
                        "light " + std::string(enumName(light)) + " dark " + std::to_string(dark)
                            + " step " + std::to_string(step) + (startsBright ? " down" : " up"),
                        25, 2);
                    clip.source.light = light;
                    const Colour low = grey(codeFor(light, dark));
                    const Colour high = grey(codeFor(light, lightOfCode(light, low.y) + step));
                    clip.zones = {{cells / 2, startsBright ? high : low, startsBright ? low : high,
                                   spread(clip, 8, 0.4, 0.84)}};
                    table.push_back(clip);
                }
}

void addReds(std::vector<FlashClip>& table)
{
    const std::vector<std::pair<Colour, Colour>> pairs{
        {ofRgb(1, 0, 0), ofRgb(0.45, 0.45, 0.45)},      // of nearly one luminance
        {ofRgb(0.6, 0, 0), grey(64)},                   // to black
        {ofRgb(0.6, 0.1, 0.1), ofRgb(0.3, 0.3, 0.3)},   //
        {ofRgb(0.7, 0.1, 0), ofRgb(0.6, 0.3, 0)},       // two near reds
        {ofRgb(0.6, 0.45, 0.45), ofRgb(0.4, 0.5, 0.5)}, // not saturated
        {ofRgb(0.3, 0, 0), ofRgb(0, 0.16, 0)},          // dark red and green
        {ofRgb(0, 0, 0.5), ofRgb(0.25, 0.25, 0.25)}};   // blue
    for (std::size_t i = 0; i < pairs.size(); ++i)
        for (const int changes : {6, 7})
            for (const int percent : {24, 26})
                for (const bool swapped : {false, true}) {
                    FlashClip clip =
                        clipAt("red " + std::to_string(i) + " changes " + std::to_string(changes)
                                   + " area " + std::to_string(percent),
                               swapped ? 25 : 30, 2);
                    clip.zones = {{cells * percent / 100,
                                   swapped ? pairs[i].second : pairs[i].first,
                                   swapped ? pairs[i].first : pairs[i].second,
                                   spread(clip, changes, 0.4, 0.8)}};
                    table.push_back(clip);
                }
}

/// Two zones that flash beside each other, at once, a few frames apart or in each other's pauses.
void addPhases(std::vector<FlashClip>& table)
{
    for (const double rate : {25.0, 50.0})
        for (const int percent : {13, 20, 50})
            for (const int late : {0, 1, 2, 3})
                for (const bool opposed : {false, true}) {
                    FlashClip clip =
                        clipAt("phase " + std::to_string(late) + " area " + std::to_string(percent)
                                   + (opposed ? " opposed" : ""),
                               rate, 2.5);
                    const int part = cells * percent / 100;
                    const auto toggles = spread(clip, 9, 0.4, 1.28);
                    auto others = toggles;
                    for (int& frame : others)
                        frame += late;
                    clip.zones = {{part, grey(64), grey(600), toggles},
                                  {part, opposed ? grey(600) : grey(64),
                                   opposed ? grey(64) : grey(600), others}};
                    table.push_back(clip);
                }
}

/// Flashes far apart, and flashing that goes on.
void addLong(std::vector<FlashClip>& table)
{
    for (const Rate& rate : rates())
        for (const double every : {0.30, 0.334, 0.36, 0.5})
            for (const double seconds : {4.5, 7.0}) {
                FlashClip clip = clipAt("every " + std::to_string(every) + " for "
                                            + std::to_string(seconds) + " at " + rate.name,
                                        rate.perSecond, seconds + 1);
                const double pictures = rate.perSecond;
                const int step = static_cast<int>(std::lround(every * pictures));
                std::vector<int> toggles;
                for (int frame = 5; frame < seconds * pictures; frame += step)
                    for (const int at : {frame, frame + step / 2})
                        toggles.push_back(at);
                clip.zones = {{cells, grey(100), grey(800), toggles}};
                table.push_back(clip);
            }
}

/// Frames that do not come evenly, and seven changes in a second or just not.
void addUneven(std::vector<FlashClip>& table)
{
    for (int seed = 0; seed < 12; ++seed)
        for (const bool inside : {false, true}) {
            FlashClip clip = clipAt("uneven " + std::to_string(seed), 25, 0);
            clip.source.frameRate = 25;
            Microseconds time = 0;
            for (int i = 0; i < 60; ++i) {
                clip.times.push_back(time);
                time += 17'000 + (i * 7919 + seed * 104'729) % 50'000;
            }
            std::vector<int> toggles;
            for (int i = 0; i < 7; ++i)
                toggles.push_back(10 + i * 3);
            // The last of them exactly a second after the first, or a little earlier.
            const Microseconds wanted = clip.times[10] + 1'000'000 - (inside ? 2'000 : 0);
            const Microseconds off = wanted - clip.times[28];
            for (std::size_t i = 28; i < clip.times.size(); ++i)
                clip.times[i] += off;
            for (std::size_t i = 27; i > 11 && clip.times[i] >= clip.times[i + 1]; --i)
                clip.times[i] = clip.times[i + 1] - 1'000;
            clip.zones = {{cells / 3, grey(64), grey(500), toggles}};
            table.push_back(clip);
        }
}

/// Two pictures a frame, and changes that only single fields see.
void addFields(std::vector<FlashClip>& table)
{
    for (const double rate : {25.0, 30'000.0 / 1001})
        for (const int first : {20, 21})
            for (const int every : {1, 2, 3, 7, 8})
                for (const int percent : {24, 26}) {
                    FlashClip clip = clipAt("fields from " + std::to_string(first) + " every "
                                                + std::to_string(every),
                                            rate, 2.5, true);
                    std::vector<int> toggles;
                    for (int i = 0; i < 8; ++i)
                        toggles.push_back(first + i * every);
                    clip.zones = {{cells * percent / 100, grey(80), grey(640), toggles}};
                    table.push_back(clip);
                }
}

} // namespace

FlashClip::Truth FlashClip::truth() const
{
    Truth truth;
    const auto frames = static_cast<int>(times.size());
    const auto of = [&](bool red) {
        std::vector<ZoneChanges> changing;
        for (const FlashZone& zone : zones)
            if (red ? redCounts(source.light, zone) : luminanceCounts(source.light, zone)) {
                const bool up =
                    red ? rgbOf(source.light, zone.second).r > rgbOf(source.light, zone.first).r
                        : luminanceOf(source.light, zone.second)
                              > luminanceOf(source.light, zone.first);
                changing.push_back({zone.cells, counted(*this, zone, up)});
            }
        truth.extended = truth.extended || isExtended(*this, changing);
        const auto over = framesOver(changing, frames, 7);
        return over.empty()
                   ? std::nullopt
                   : std::optional(
                       static_cast<double>(times[static_cast<std::size_t>(over.front())]) / 1e6);
    };
    truth.luminance = of(false);
    truth.red = of(true);
    return truth;
}

std::vector<std::uint16_t> FlashClip::picture(std::size_t frame) const
{
    const auto all = static_cast<std::size_t>(source.picture.cells());
    const auto columns = static_cast<std::size_t>(source.picture.columns());
    const auto width = static_cast<std::size_t>(source.picture.width);
    std::vector<std::uint16_t> samples(source.picture.samples(), 64);
    std::fill(samples.begin() + static_cast<std::ptrdiff_t>(all * 4), samples.end(), 512);
    std::size_t cell = 0;
    for (const FlashZone& zone : zones) {
        const auto done = std::ranges::count_if(
            zone.toggles, [&](int toggle) { return toggle <= static_cast<int>(frame); });
        const Colour& colour = done % 2 == 0 ? zone.first : zone.second;
        for (int i = 0; i < zone.cells; ++i, ++cell) {
            const std::size_t place = cell / columns * 2 * width + cell % columns * 2;
            for (const std::size_t at : {place, place + 1, place + width, place + width + 1})
                samples[at] = static_cast<std::uint16_t>(colour.y);
            samples[all * 4 + cell] = static_cast<std::uint16_t>(colour.cb);
            samples[all * 5 + cell] = static_cast<std::uint16_t>(colour.cr);
        }
    }
    return samples;
}

std::vector<FlashClip> flashTable()
{
    std::vector<FlashClip> table;
    addCounts(table);
    addSteps(table);
    addReds(table);
    addPhases(table);
    addLong(table);
    addUneven(table);
    addFields(table);
    return table;
}

FlashInfo analyzed(const FlashClip& clip)
{
    FlashAnalyzer analyzer(clip.source);
    for (std::size_t frame = 0; frame < clip.times.size(); ++frame)
        analyzer.add(clip.times[frame], clip.picture(frame));
    return analyzer.finished();
}

} // namespace vantroque
