#pragma once

#include "Base/Record.h"
#include "Records/FlashInfo.h"
#include "Records/RuleSource.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

// One platform's delivery specification. An absent rule means that the platform says nothing on
// the matter and no check runs for it; the check that reads a field decides on its default.

/// In the order of display. Digital profiles are on by default; recommendations never gate a file.
enum class ProfileGroup { digital, broadcast, recommendation };
VANTROQUE_ENUM_NAMES(ProfileGroup, digital, broadcast, recommendation)

struct ContainerRule {
    std::vector<QString> allowed; ///< Values of `MediaInfo::containerKind`.
    std::optional<QString> preferred;
    std::optional<bool> lowercaseExtensionRequired;
    std::optional<bool> fastStartRecommended;

    VANTROQUE_RECORD(ContainerRule, allowed, preferred, lowercaseExtensionRequired,
                     fastStartRecommended)
};

struct CodecOption {
    QString codec;
    std::optional<std::vector<QString>> encoderProfiles;
    std::optional<QString> encoderProfileNote;
    std::optional<std::vector<QString>> proresProfiles;
    std::optional<int> minBitrateKbps;
    std::optional<int> maxBitrateKbps;
    std::optional<bool> cbrRequired;
    std::optional<bool> preferred;

    VANTROQUE_RECORD(CodecOption, codec, encoderProfiles, encoderProfileNote, proresProfiles,
                     minBitrateKbps, maxBitrateKbps, cbrRequired, preferred)
};

struct ResolutionOption {
    int width = 0;
    int height = 0;
    std::optional<bool> preferred;

    VANTROQUE_RECORD(ResolutionOption, width, height, preferred)
};

/// Limits of the picture levels. The presence of the rule asks for the measurement.
struct LevelsRule {
    QString standard; ///< Name of the standard, such as "EBU R 103".
    double tolerancePercent = 0;
    double areaPercent = 0;
    double rejectSeconds = 0;

    VANTROQUE_RECORD(LevelsRule, standard, tolerancePercent, areaPercent, rejectSeconds)
};

/// Flashes that may harm people with photosensitive epilepsy (Recommendation ITU-R BT.1702). The
/// presence of the rule asks for the measurement.
struct FlashRule {
    RuleSource source;                   ///< Who asks for it.
    std::optional<FlashLight> luminance; ///< Of SDR: BT.1886 unless it says `legacy`.

    VANTROQUE_RECORD(FlashRule, source, luminance)
};

struct VideoRule {
    std::vector<CodecOption> codecs;
    std::vector<ResolutionOption> resolutions; ///< Empty: any size.
    std::optional<bool> squarePixelsRequired;
    std::optional<bool> progressiveRequired;
    std::optional<std::vector<double>> interlacedAllowedRates;
    std::optional<QString> chromaPreferred; ///< "422" and the like.
    std::optional<std::vector<QString>> chromaAccepted;
    std::optional<LevelsRule> levels;
    std::optional<FlashRule> flashes;

    VANTROQUE_RECORD(VideoRule, codecs, resolutions, squarePixelsRequired, progressiveRequired,
                     interlacedAllowedRates, chromaPreferred, chromaAccepted, levels, flashes)
};

struct FrameRateRule {
    std::vector<double> allowed; ///< Empty: any rate.
    std::optional<std::vector<double>> preferred;
    std::optional<bool> constantRequired;
    std::optional<bool> duplicateFramesForbidden;
    std::optional<bool> telecineForbidden;

    VANTROQUE_RECORD(FrameRateRule, allowed, preferred, constantRequired, duplicateFramesForbidden,
                     telecineForbidden)
};

struct AudioRule {
    std::vector<QString> codecs;
    std::optional<QString> preferredCodec;
    std::optional<int> minBitrateKbps;
    std::vector<int> sampleRates; ///< Hertz; empty: any rate.
    std::optional<std::vector<int>> bitDepths;
    std::optional<int> channels;
    std::optional<std::vector<int>> channelOptions; ///< Takes the place of `channels`.
    std::optional<int> maxStreams;

    VANTROQUE_RECORD(AudioRule, codecs, preferredCodec, minBitrateKbps, sampleRates, bitDepths,
                     channels, channelOptions, maxStreams)
};

/// What may be heard nowhere. The presence of each asks for the measurement.
struct SoundRule {
    std::optional<RuleSource> alertTonesForbidden; ///< Those of public warnings.
    std::optional<RuleSource> clippingForbidden;   ///< Only warned of: it may be meant.

    VANTROQUE_RECORD(SoundRule, alertTonesForbidden, clippingForbidden)
};

/// The loudest that some window of ITU-R BS.1770 loudness may be.
struct LoudnessLimit {
    double lufs = 0;
    RuleSource source;

    VANTROQUE_RECORD(LoudnessLimit, lufs, source)
};

/// The presence of the rule, even an empty one, asks for the measurement.
struct LoudnessRule {
    std::optional<double> targetLKFS;
    std::optional<double> toleranceLU;
    std::optional<QString> peakSource; ///< Who published the peak limit.
    std::optional<double> maxTruePeakDb;
    std::optional<double> minTruePeakDb;
    std::optional<double> maxSilenceSeconds;
    std::optional<double> recommendedMaxTruePeakDb;
    std::optional<bool> autoNormalized; ///< The platform brings the file to the target itself.
    std::optional<LoudnessLimit> maxShortTerm; ///< Of any three seconds (EBU Tech 3341).
    std::optional<LoudnessLimit> maxMomentary; ///< Of any 0.4 seconds.

    VANTROQUE_RECORD(LoudnessRule, targetLKFS, toleranceLU, peakSource, maxTruePeakDb,
                     minTruePeakDb, maxSilenceSeconds, recommendedMaxTruePeakDb, autoNormalized,
                     maxShortTerm, maxMomentary)
};

struct DurationRule {
    std::optional<bool> frameAccurateSeconds;
    std::optional<double> minSeconds;
    std::optional<double> maxSeconds;

    VANTROQUE_RECORD(DurationRule, frameAccurateSeconds, minSeconds, maxSeconds)
};

enum class SlatePolicy { forbidden, required, optional };
VANTROQUE_ENUM_NAMES(SlatePolicy, forbidden, required, optional)

/// The leader of a broadcast master, in seconds: a slate, then black, then the ad.
struct LeaderLengths {
    double slate = 0;
    double black = 0;

    double end() const { return slate + black; }
    bool operator==(const LeaderLengths&) const = default;
};

struct ContentRule {
    std::optional<SlatePolicy> slate;
    std::optional<QString> slateLayout; ///< The layout in words.
    std::optional<double> slateSeconds;
    std::optional<double> slateBlackSeconds;
    std::optional<bool> slateMuteRequired;
    std::optional<bool> slateTwoPopAllowed;
    std::optional<double> slateTwoPopMaxDbFS;
    std::optional<std::vector<QString>> slateMustShow;
    std::optional<int> maxTailFadeFrames;
    std::optional<bool> letterboxForbidden;
    std::optional<bool> headTailBlackForbidden;
    std::optional<double> textSafeFraction;
    std::optional<double> textRejectFraction;
    std::optional<std::vector<QString>> textClearOfZones; ///< Ids of `PlatformZoneCatalog`.
    /// Those of all profiles that were loaded together with this one; no part of the record.
    std::vector<LeaderLengths> installedLeaders = {};

    VANTROQUE_RECORD(ContentRule, slate, slateLayout, slateSeconds, slateBlackSeconds,
                     slateMuteRequired, slateTwoPopAllowed, slateTwoPopMaxDbFS, slateMustShow,
                     maxTailFadeFrames, letterboxForbidden, headTailBlackForbidden,
                     textSafeFraction, textRejectFraction, textClearOfZones)
};

struct FileRule {
    std::optional<std::int64_t> maxBytes;
    std::optional<std::int64_t> recommendedMaxBytes;
    std::optional<QString> namePattern; ///< A regular expression, searched in the name's stem.
    std::optional<QString> nameNote;

    VANTROQUE_RECORD(FileRule, maxBytes, recommendedMaxBytes, namePattern, nameNote)
};

/// Recommended rates for pictures from `minLines` on, in megabits a second. "High" is for more
/// than 40 frames a second. The `...Max` values are for display.
struct BitrateLadderStep {
    QString name;
    int minLines = 0; ///< Of the picture's shorter side.
    double sdrMbps = 0;
    std::optional<double> sdrMbpsMax;
    double sdrHighMbps = 0;
    std::optional<double> sdrHighMbpsMax;
    std::optional<double> hdrMbps;
    std::optional<double> hdrMbpsMax;
    std::optional<double> hdrHighMbps;
    std::optional<double> hdrHighMbpsMax;

    VANTROQUE_RECORD(BitrateLadderStep, name, minLines, sdrMbps, sdrMbpsMax, sdrHighMbps,
                     sdrHighMbpsMax, hdrMbps, hdrMbpsMax, hdrHighMbps, hdrHighMbpsMax)
};

struct BitrateLadderRule {
    struct Recommendation {
        BitrateLadderStep step;
        double mbps = 0;
        bool operator==(const Recommendation&) const = default;
    };

    std::vector<BitrateLadderStep> steps;

    /// High frame rate begins above this many frames a second.
    static constexpr double highFrameRateAbove = 40.0;

    /// The highest step at or below the picture's shorter side; nothing below all of them.
    std::optional<BitrateLadderStep> step(int width, int height) const;
    std::optional<Recommendation> recommendedMbps(int width, int height, double fps,
                                                  bool hdr) const;

    VANTROQUE_RECORD(BitrateLadderRule, steps)
};

struct Profile {
    QString id; ///< Stable; the key of saved selections.
    QString name;
    std::optional<QString> shortName;
    ProfileGroup group = ProfileGroup::digital;
    QString sourceURL;            ///< Where the specification was published.
    QString verifiedDate;         ///< "yyyy-MM-dd", last comparison with the source.
    std::optional<bool> inferred; ///< The values are not published by the platform.
    std::optional<QString> notes;
    std::optional<ContainerRule> container;
    std::optional<VideoRule> video;
    std::optional<FrameRateRule> frameRate;
    std::optional<AudioRule> audio;
    std::optional<LoudnessRule> loudness;
    std::optional<SoundRule> sound;
    std::optional<DurationRule> duration;
    std::optional<ContentRule> content;
    std::optional<FileRule> file;
    std::optional<BitrateLadderRule> recommendedBitrate;

    VANTROQUE_RECORD(Profile, id, name, shortName, group, sourceURL, verifiedDate, inferred, notes,
                     container, video, frameRate, audio, loudness, sound, duration, content, file,
                     recommendedBitrate)
};

} // namespace vantroque
