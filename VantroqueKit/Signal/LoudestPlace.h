#pragma once

#include "Records/AudioLevels.h"

#include <deque>
#include <limits>
#include <optional>
#include <string_view>

namespace vantroque {

/// Where sound is loudest and where it peaks, from what ffmpeg's ebur128 prints ten times a second.
/// Lines that do not read as they should are skipped.
class LoudestPlace {
public:
    /// A line of the filter, from its time on: "0.4 TARGET:-23 LUFS M: -22.7 S:-120.7 ...".
    void read(std::string_view line);
    /// The filter is done; what it prints from here on is of another stretch, measured anew.
    void close() { m_isClosed = true; }

    /// Where the loudest momentary window (0.4 s) inside the loudest short-term window (3 s)
    /// begins, in seconds as ffmpeg counts them; of sound that is shorter, the loudest momentary
    /// window. Nothing where no sound is above the gate of ITU-R BS.1770.
    std::optional<double> loudness() const;
    /// Where the tenth of a second begins in which the true peak of all channels lies; nothing in
    /// digital silence.
    std::optional<double> truePeak() const { return m_peakStart; }
    /// The loudest windows of three seconds and of 0.4; nothing when no line of the filter came.
    std::optional<LoudestWindow> shortTerm() const;
    std::optional<LoudestWindow> momentary() const;

private:
    struct Moment {
        double end = 0;                 ///< Of the window, in seconds.
        std::optional<double> loudness; ///< When it can be heard.
    };

    std::optional<LoudestWindow> loudest(const std::optional<Moment>& window, double seconds) const;
    void readLoudness(double time, std::string_view line);
    void readPeaks(double time, std::string_view line);

    bool m_isClosed = false;
    std::deque<Moment> m_recent; ///< The last momentary windows, those of a short-term one.
    std::optional<Moment> m_loudestMoment;
    std::optional<Moment> m_inLoudestWindow; ///< The loudest moment of the loudest window.
    std::optional<Moment> m_loudestWindow;   ///< Of three seconds.
    bool m_hasRead = false;
    double m_peak = -std::numeric_limits<double>::infinity();
    std::optional<double> m_peakStart;
};

} // namespace vantroque
