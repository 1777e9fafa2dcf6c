#include "Sound/MadeSound.h"

#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <string>

namespace vantroque {

namespace {

constexpr double turn = 2 * std::numbers::pi;

double amplitude(double dbfs)
{
    return std::pow(10, dbfs / 20);
}

std::size_t place(double seconds)
{
    return static_cast<std::size_t>(std::lround(seconds * madeRate));
}

void addVoice(MadeSound& sound, std::mt19937& chance, double tuning)
{
    const auto below = [&](double most) { return most * (chance() % 1'000) / 1'000.0; };
    for (std::size_t at = 0; at < sound.size();) {
        const auto length = std::min(place(0.1 + below(1.4)), sound.size() - at);
        const double hertz = tuning * std::pow(2, (static_cast<int>(chance() % 36) - 24) / 12.0);
        const double vibrato = below(1) < 0.5 ? 0 : below(0.006);
        const double fall = 1 + below(6);
        double phase = 0;
        for (std::size_t i = 0; i < length; ++i) {
            const double time = static_cast<double>(i) / madeRate;
            phase += turn * hertz * (1 + vibrato * std::sin(turn * 5.5 * time)) / madeRate;
            double value = 0;
            for (int partial = 1; partial <= 4; ++partial)
                value += std::sin(partial * phase) / partial;
            sound[at + i] += static_cast<float>(0.05 * value * std::exp(-fall * time));
        }
        at += length;
    }
}

} // namespace

MadeSound silence(double seconds)
{
    return MadeSound(place(seconds));
}

MadeSound music(double seconds, unsigned seed, double tuning)
{
    std::mt19937 chance(seed);
    MadeSound sound = silence(seconds);
    for (int voice = 0; voice < 3; ++voice)
        addVoice(sound, chance, tuning);
    for (float& sample : sound)
        sample += static_cast<float>(0.005 * (static_cast<int>(chance() % 2'001) - 1'000) / 1'000);
    return sound;
}

void addTones(MadeSound& sound, const std::vector<double>& hertz, double dbfs, double start,
              double seconds)
{
    for (std::size_t i = place(start); i < std::min(place(start + seconds), sound.size()); ++i)
        for (const double each : hertz)
            sound[i] += static_cast<float>(
                amplitude(dbfs) * std::sin(turn * each * static_cast<double>(i) / madeRate));
}

double addHeader(MadeSound& sound, const char* text, double dbfs, double start)
{
    const std::string bytes = std::string(16, '\xAB') + text;
    constexpr double bitSeconds = 1 / 520.83;
    double phase = 0;
    const auto bits = bytes.size() * 8;
    for (std::size_t i = 0; i < place(static_cast<double>(bits) * bitSeconds); ++i) {
        const auto bit = std::min(
            static_cast<std::size_t>(static_cast<double>(i) / madeRate / bitSeconds), bits - 1);
        const bool isOne = ((static_cast<unsigned char>(bytes[bit / 8]) >> (bit % 8)) & 1) != 0;
        phase += turn * (isOne ? 2083.3 : 1562.5) / madeRate;
        sound[place(start) + i] += static_cast<float>(amplitude(dbfs) * std::sin(phase));
    }
    return static_cast<double>(bits) * bitSeconds;
}

} // namespace vantroque
