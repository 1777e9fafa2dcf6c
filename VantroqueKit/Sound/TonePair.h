#pragma once

#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace vantroque {

/// Tells whether a window of sound has two tones, each far stronger than what lies beside it.
class TonePair {
public:
    struct Search {
        double seconds = 0;          ///< Of the window.
        std::vector<double> centres; ///< Where the tone may lie, in hertz from its own place.
        std::vector<double> beside;  ///< Where it must not, on both sides.
    };

    TonePair(double rate, double lower, double upper, const Search& search);

    std::size_t samples() const { return m_window.size(); }
    /// How loud the two are, as amplitudes, when both are there. `window` has `samples()` of them,
    /// of which 1 is full scale.
    std::optional<std::pair<double, double>> in(std::span<const float> window) const;

private:
    /// A wave under the window's own shape.
    struct Wave {
        std::vector<float> cosine;
        std::vector<float> sine;
    };
    struct Tone {
        std::vector<Wave> centres;
        std::vector<Wave> beside;
    };

    Wave wave(double rate, double hertz) const;
    Tone tone(double rate, double hertz, const Search& search) const;
    static double strongest(const std::vector<Wave>& waves, std::span<const float> window);

    std::vector<float> m_window; ///< Its shape, of sum 2, so that a tone reads as its amplitude.
    Tone m_lower;
    Tone m_upper;
};

} // namespace vantroque
