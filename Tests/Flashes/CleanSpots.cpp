#include "Flashes/CleanSpots.h"

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr double pi = 3.14159265358979;

/// The same number for the same question, 0 to 1.
double chance(int a, int b, int c)
{
    auto x = static_cast<std::uint32_t>(a * 73'856'093 ^ b * 19'349'663 ^ c * 83'492'791);
    x ^= x >> 16U;
    x *= 0x7FEB'352DU;
    x ^= x >> 15U;
    x *= 0x846C'A68BU;
    x ^= x >> 16U;
    return static_cast<double>(x) / 4294967296.0;
}

/// A scene of soft shapes, some ten cells large.
double scene(double x, double y, int seed)
{
    const auto smooth = [](double part) { return part * part * (3 - 2 * part); };
    const double size = 10;
    const int left = static_cast<int>(std::floor(x / size));
    const int top = static_cast<int>(std::floor(y / size));
    const double across = smooth(x / size - left);
    const double down = smooth(y / size - top);
    const double above =
        chance(left, top, seed) * (1 - across) + chance(left + 1, top, seed) * across;
    const double below =
        chance(left, top + 1, seed) * (1 - across) + chance(left + 1, top + 1, seed) * across;
    return above * (1 - down) + below * down;
}

int codeOf(double level)
{
    return static_cast<int>(std::lround(64 + 876 * std::clamp(level, 0.0, 1.0)));
}

using Picture = std::function<double(int x, int y, int frame, int seed)>;

const std::vector<std::pair<const char*, Picture>>& kinds()
{
    static const std::vector<std::pair<const char*, Picture>> all{
        {"cuts", // three in a second
         [](int x, int y, int frame, int seed) { return scene(x, y, seed * 100 + frame / 9); }},
        {"pan",
         [](int x, int y, int frame, int seed) {
             return 0.2 + 0.4 * scene(x + frame * (0.3 + 0.1 * seed), y, seed);
         }},
        {"fades",
         [](int x, int y, int frame, int seed) {
             const double cycle = std::abs(std::sin(pi * frame / (24 + seed)));
             return scene(x, y, seed) * cycle;
         }},
        {"titles", // a line of letters every third of a second
         [](int x, int y, int frame, int seed) {
             const int lines = frame / 8;
             const bool isLetter = y % 6 < 2 && y / 6 < lines && chance(x / 2, y / 6, seed) > 0.4;
             return isLetter ? 0.9 : 0.1;
         }},
        {"grain",
         [](int x, int y, int frame, int seed) {
             return 0.15 + 0.1 * seed + 0.04 * (chance(x, y, frame * 7 + seed) - 0.5);
         }},
        {"logo that pulses",
         [](int x, int y, int frame, int seed) {
             const bool isLogo = std::hypot(x - 20, y - 11) < 9 + seed;
             return isLogo ? 0.6 + 0.4 * std::sin(2 * pi * frame / 25) : 0.3;
         }},
        {"fireworks", // each on a twentieth of the picture
         [](int x, int y, int frame, int seed) {
             const int burst = frame / 3;
             const double far =
                 std::hypot(x - 40 * chance(burst, 1, seed), y - 22 * chance(burst, 2, seed));
             return far < 3.7 ? 1.0 : 0.05;
         }},
        {"dissolves",
         [](int x, int y, int frame, int seed) {
             const double part = frame % 20 / 20.0;
             const int shot = frame / 20;
             return scene(x, y, seed + shot) * (1 - part) + scene(x, y, seed + shot + 1) * part;
         }},
        {"ball",
         [](int x, int y, int frame, int seed) {
             const double across = 20 + 16 * std::sin(frame * (0.1 + 0.03 * seed));
             return std::hypot(x - across, y - 11) < 6 ? 0.95 : 0.2;
         }},
        {"shaking hand",
         [](int x, int y, int frame, int seed) {
             return 0.1 + 0.5 * scene(x + chance(frame, 1, seed), y + chance(frame, 2, seed), seed);
         }},
    };
    return all;
}

} // namespace

std::vector<CleanSpot> cleanSpots()
{
    std::vector<CleanSpot> spots;
    for (const auto& [name, picture] : kinds())
        for (int seed = 0; seed < 6; ++seed) {
            CleanSpot spot;
            spot.name = name + std::string(" ") + std::to_string(seed);
            spot.source.picture = {80, 44};
            spot.frames = 75;
            spot.code = [shows = picture, seed](int x, int y, int frame) {
                return codeOf(shows(x, y, frame, seed));
            };
            spots.push_back(std::move(spot));
        }
    return spots;
}

FlashInfo analyzedGreys(const FlashAnalyzer::Source& source, int frames,
                        const std::function<int(int x, int y, int frame)>& code)
{
    FlashAnalyzer analyzer(source);
    const FlashPicture& picture = source.picture;
    std::vector<std::uint16_t> samples(picture.samples(), 512);
    for (int frame = 0; frame < frames; ++frame) {
        for (int y = 0; y < picture.rows(); ++y)
            for (int x = 0; x < picture.columns(); ++x) {
                const auto grey = static_cast<std::uint16_t>(code(x, y, frame));
                const int place = y * 2 * picture.width + x * 2;
                for (const int at : {0, 1, picture.width, picture.width + 1})
                    samples[static_cast<std::size_t>(place + at)] = grey;
            }
        analyzer.add(Microseconds{frame} * 40'000, samples);
    }
    return analyzer.finished();
}

} // namespace vantroque
