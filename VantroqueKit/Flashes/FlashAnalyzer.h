#pragma once

#include "Flashes/ContentMotion.h"
#include "Flashes/FlashRuns.h"
#include "Flashes/StripeFinder.h"

namespace vantroque {

/// Reads all pictures of a film, one after the other, for flashes that may harm people with
/// photosensitive epilepsy, as Recommendation ITU-R BT.1702-3 describes them. It keeps no picture
/// but the last. Never fails; one thread.
class FlashAnalyzer {
public:
    struct Source {
        FlashPicture picture;
        FlashLight light = FlashLight::bt1886;
        ColorMatrix matrix = ColorMatrix::bt709;
        double frameRate = 25; ///< As the file states it.
        bool fields = false;   ///< Each picture is one field.
    };

    explicit FlashAnalyzer(const Source& source);

    /// Takes the next picture; its time counts from anywhere. One that is not later than the last
    /// counts as a frame later than that.
    void add(Microseconds time, FlashSamples samples);
    /// What was found; times count from the first picture.
    FlashInfo finished();

    /// How far apart flashes are harmless, by Guideline 1: nine frames of 25, ten of 30.
    static Microseconds apart(double frameRate);
    /// The most findings that a record holds.
    static constexpr std::size_t mostFindings = 100;
    static constexpr std::size_t mostOfCurve = 2000;

private:
    void keepRisk(Microseconds time, double risk);
    FlashCurve curve() const;

    Source m_source;
    ScreenLight m_screen;
    LuminanceChanges m_luminance;
    RedChanges m_red;
    FlashRuns m_luminanceRuns;
    FlashRuns m_redRuns;
    StripeFinder m_stripes;
    std::vector<float> m_before; ///< The luminance of the last picture.
    std::optional<Microseconds> m_first;
    Microseconds m_last = 0;
    std::vector<float> m_risk; ///< The highest of each tenth of a second.
};

} // namespace vantroque
