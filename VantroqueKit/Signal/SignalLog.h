#pragma once

#include "Records/AudioLevels.h"
#include "Records/SignalInfo.h"
#include "Signal/LoudestPlace.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vantroque {

/// What a decode's log says, read in one pass over its bytes: the log of a long film has many
/// megabytes. Never fails; what does not read as it should is skipped.
///
/// ffmpeg configures the graph twice and prints empty results the first time, so only what stands
/// after the last "Stream mapping:" counts. The headers of inputs and outputs hold the file's own
/// tags, which could forge any line, and are skipped.
///
/// ffmpeg counts time from whatever begins first, picture or sound. Here all times count from the
/// first frame, as frame numbers do: sound that begins before it has negative ones.
class SignalLog {
public:
    SignalLog() = default;
    explicit SignalLog(std::string_view log);

    /// One channel's block of ffmpeg's astats.
    struct ChannelBlock {
        std::optional<double> rmsDb;
        std::optional<double> peakDb;
        std::optional<int> bits;
    };

    /// Frames that ffmpeg's idet told apart.
    struct FieldCounts {
        std::int64_t topFirst = 0;
        std::int64_t bottomFirst = 0;
        std::int64_t progressive = 0;
        std::int64_t undetermined = 0;
    };

    struct RepeatedFields {
        std::int64_t neither = 0;
        std::int64_t top = 0;
        std::int64_t bottom = 0;
    };

    struct BlackRun {
        double start = 0;
        double end = 0;
        double duration = 0;
    };

    struct LevelWindows {
        std::vector<float> rms;
        std::vector<float> peak;
    };

    /// Seconds from the start of the file to the first frame; 0 without a picture.
    double pictureStart() const { return m_firstFrame.value_or(0); }
    /// Seconds from one frame to the next, on average; nothing with fewer than two.
    std::optional<double> frameInterval() const;
    /// Where the first sample of sound lies; 0 without sound.
    double soundStart() const { return m_firstSound.value_or(0); }
    /// Where the last window of levels begins.
    std::optional<double> lastSoundWindow() const { return m_lastSound; }
    /// Of all decoded sound, as ffmpeg counts its output, to half a kilobyte.
    std::optional<double> soundKilobytes() const { return m_soundKilobytes; }
    /// That many bytes of it were put out for another reader.
    void leaveOut(std::uint64_t bytes);
    /// Some filter said something.
    bool hasFilterLines() const { return m_hasFilterLines; }
    bool hasSummary() const { return m_summaries.contains(0); }
    /// Some sample of sound was decoded: every window of it is measured.
    bool hasSound() const { return !m_levelWindows.empty(); }
    std::string summary() const { return summaryOf(0); } ///< Of the loudness; the last one.
    /// The same of a further group of audio streams, by the number of its first from 1 on; empty
    /// when it was not measured.
    std::string summaryOf(int track) const;
    /// Where what is graded is loudest, and where the tenth of a second begins in which it peaks.
    std::optional<double> loudestSeconds() const { return fromFirstFrame(m_loudest.loudness()); }
    std::optional<double> truePeakSeconds() const { return fromFirstFrame(m_loudest.truePeak()); }
    /// The loudest three and 0.4 seconds of what is graded.
    std::optional<LoudestWindow> maxShortTerm() const
    {
        return fromFirstFrame(m_loudest.shortTerm());
    }
    std::optional<LoudestWindow> maxMomentary() const
    {
        return fromFirstFrame(m_loudest.momentary());
    }
    bool hasSilenceDetector() const { return m_hasSilenceDetector; }
    const std::vector<double>& silenceStarts() const { return m_silenceStarts; }
    const std::vector<double>& silenceEnds() const { return m_silenceEnds; }
    const std::vector<double>& silenceDurations() const { return m_silenceDurations; }
    std::size_t silenceEndCount() const { return m_silenceEndCount; }
    const std::vector<BlackRun>& blackRuns() const { return m_blackRuns; }
    const std::vector<double>& freezeStarts() const { return m_freezeStarts; }
    const std::vector<double>& freezeDurations() const { return m_freezeDurations; }
    const std::optional<FieldCounts>& fieldCounts() const { return m_fieldCounts; }
    const RepeatedFields& repeatedFields() const { return m_repeatedFields; }
    /// The rectangle that was found most often.
    std::optional<CropRect> activePicture() const;
    std::optional<int> lowestLuma() const { return m_lowestLuma; }
    std::optional<int> highestLuma() const { return m_highestLuma; }
    std::optional<int> firstLumaBits() const { return m_firstLumaBits; }
    const std::vector<double>& lumaDifferences() const { return m_lumaDifferences; }
    const std::vector<ChannelBlock>& channelBlocks() const { return m_channelBlocks; }
    /// By channel, counted from 1.
    const std::map<int, LevelWindows>& levelWindows() const { return m_levelWindows; }
    const std::vector<float>& phase() const { return m_phase; }

private:
    void readLine(std::string_view line);
    void readTime(std::string_view line);
    void readSize(std::string_view line);
    bool readLoudness(std::string_view line);
    bool readSummary(std::string_view line);
    void countFromFirstFrame();
    std::optional<double> fromFirstFrame(const std::optional<double>& time) const;
    std::optional<LoudestWindow> fromFirstFrame(std::optional<LoudestWindow> window) const;
    void addLateSoundToSilence();
    void readMetadata(std::string_view text);
    void readStatistic(std::string_view text);
    void readLevel(std::string_view text);
    void readFreeze(std::string_view text);
    void readCrop(std::string_view text);
    void readBlack(std::string_view line);
    void readSilence(std::string_view line);
    void readFields(std::string_view line);
    void readChannel(std::string_view line);

    using Rectangle = std::tuple<int, int, int, int>;

    std::optional<double> m_firstFrame;
    std::optional<double> m_lastFrame;
    std::optional<double> m_firstSound;
    std::optional<double> m_lastSound;
    std::optional<double> m_soundKilobytes;
    bool m_hasFilterLines = false;
    std::optional<int> m_openSummary;       ///< The one that the next lines belong to.
    std::map<int, std::string> m_summaries; ///< By track; 0 is what is graded.
    LoudestPlace m_loudest;
    bool m_hasSilenceDetector = false;
    std::vector<double> m_silenceStarts;
    std::vector<double> m_silenceEnds;
    std::vector<double> m_silenceDurations;
    std::size_t m_silenceEndCount = 0;
    std::vector<BlackRun> m_blackRuns;
    std::vector<double> m_freezeStarts;
    std::vector<double> m_freezeDurations;
    std::optional<FieldCounts> m_fieldCounts;
    RepeatedFields m_repeatedFields;
    std::map<Rectangle, std::int64_t> m_crops;
    std::vector<Rectangle> m_cropOrder; ///< As they first came, for ties.
    std::optional<int> m_lowestLuma;
    std::optional<int> m_highestLuma;
    std::optional<int> m_firstLumaBits;
    std::vector<double> m_lumaDifferences;
    std::vector<ChannelBlock> m_channelBlocks;
    std::map<int, LevelWindows> m_levelWindows;
    std::vector<float> m_phase;
};

} // namespace vantroque
