#include "Signal/CleanRun.h"
#include "Signal/MeasuredFacts.h"

#include <ebur128.h>

#include <cmath>
#include <fstream>
#include <random>

namespace vantroque {
namespace {

using Sound = std::vector<std::int16_t>; ///< Stereo, at 48 kHz.

constexpr int sampleRate = 48'000;

/// Noise and a tone in steps of a few tenths of a second, each as loud as chance has it, sometimes
/// with a silent side.
Sound sound(unsigned seed)
{
    std::mt19937 chance(seed);
    const auto from = [&](int least, int most) {
        return least + static_cast<int>(chance() % static_cast<unsigned>(most - least + 1));
    };
    Sound samples;
    const int steps = from(4, 20);
    for (int step = 0; step < steps; ++step) {
        const double gain = std::pow(10, -from(6, 50) / 20.0);
        const double tone = from(60, 6'000) * 2 * M_PI / sampleRate;
        const double noise = from(0, 10) / 10.0;
        const double right = from(0, 3) / 3.0;
        for (int i = from(4'800, 72'000); i > 0; --i) {
            const double white = from(-1'000, 1'000) / 1'000.0;
            const double value = gain * (noise * white + (1 - noise) * std::sin(i * tone));
            samples.push_back(static_cast<std::int16_t>(std::lround(value * 32'767)));
            samples.push_back(static_cast<std::int16_t>(std::lround(value * right * 32'767)));
        }
    }
    return samples;
}

std::filesystem::path stored(const Sound& samples, unsigned seed)
{
    const auto raw = [&](const std::filesystem::path& file) {
        const auto plain = file.string() + ".raw";
        std::ofstream(plain, std::ios::binary)
            .write(reinterpret_cast<const char*>(samples.data()),
                   static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
        Media::ffmpeg({"-y", "-f", "s16le", "-ar", "48000", "-ac", "2", "-i", plain, "-c:a",
                       "pcm_s16le", file.string()});
        std::filesystem::remove(plain);
    };
    return Media::make("loudness-" + std::to_string(seed) + ".wav", {"steps, 1"}, raw);
}

struct Loudest {
    double shortTerm = -HUGE_VAL;
    double momentary = -HUGE_VAL;
};

/// As libebur128 measures it, a tenth of a second at a time.
Loudest oracle(const Sound& samples)
{
    ebur128_state* state = ebur128_init(2, sampleRate, EBUR128_MODE_S);
    constexpr std::size_t step = sampleRate / 10;
    Loudest found;
    const std::size_t frames = samples.size() / 2;
    for (std::size_t frame = 0; frame + step <= frames; frame += step) {
        ebur128_add_frames_short(state, samples.data() + 2 * frame, step);
        double loudness = 0;
        if (frame + step >= 4 * step && ebur128_loudness_momentary(state, &loudness) == 0)
            found.momentary = std::max(found.momentary, loudness);
        if (frame + step >= 30 * step && ebur128_loudness_shortterm(state, &loudness) == 0)
            found.shortTerm = std::max(found.shortTerm, loudness);
    }
    ebur128_destroy(&state);
    return found;
}

} // namespace

TEST(LoudnessOracle, LoudestWindowsAreWithinATenthOfWhatAnotherMeterReads)
{
    const CleanRun cleanRun;
    constexpr double tenth = 0.1 + 1e-9;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        const Sound samples = sound(seed);
        const Loudest expected = oracle(samples);
        const SignalInfo found = measured(stored(samples, seed));
        ASSERT_TRUE(found.maxMomentary) << seed;
        EXPECT_NEAR(found.maxMomentary->lufs, expected.momentary, tenth) << seed;
        ASSERT_EQ(found.maxShortTerm.has_value(), samples.size() >= std::size_t{6} * sampleRate)
            << seed;
        if (found.maxShortTerm)
            EXPECT_NEAR(found.maxShortTerm->lufs, expected.shortTerm, tenth) << seed;
    }
}

} // namespace vantroque
