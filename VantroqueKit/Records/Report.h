#pragma once

#include "Base/Record.h"
#include "Records/EmbeddedCaptionSource.h"
#include "Records/NormalizedRect.h"
#include "Records/SignalInfo.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

// The outcome of scoring one file. The texts are final, ready to show.

/// `fail`: the platform rejects this. `warn`: accepted, not measurable, or worth a look. `pass`:
/// inside the rule. `info`: nothing to score. The order is no scale of severity.
enum class Verdict { pass, warn, fail, info };
VANTROQUE_ENUM_NAMES(Verdict, pass, warn, fail, info)

/// A place in the file.
struct CheckMoment {
    std::int64_t frame = 0;               ///< Counted at the picture's nominal rate.
    std::optional<std::int64_t> endFrame; ///< Last frame of a passage.
    std::optional<NormalizedRect> box;    ///< Where in the picture.

    VANTROQUE_RECORD(CheckMoment, frame, endFrame, box)
};

struct CheckResult {
    QString id; ///< Stable, lower case with hyphens.
    QString title;
    Verdict verdict = Verdict::info;
    QString measured;
    QString expected;
    std::optional<QString> fix;             ///< An instruction to the operator.
    std::optional<CheckMoment> moment = {}; ///< Where to look.

    VANTROQUE_RECORD(CheckResult, id, title, verdict, measured, expected, fix, moment)
};

/// What one platform says about a file.
struct ProfileReport {
    QString profileID;
    QString profileName;
    QString profileShortName;
    bool inferred = false;
    QString sourceURL;
    QString verifiedDate;
    std::optional<bool> advisory; ///< A recommendation: never gates the file.
    std::vector<CheckResult> checks;
    std::optional<QString> tag;           ///< Short label beside the name.
    std::optional<QString> passedSummary; ///< Replaces "Passed" when nothing is wrong.

    bool isAdvisory() const { return advisory.value_or(false); }
    Verdict verdict() const;
    /// As `verdict`, but an advisory report that would fail warns.
    Verdict displayVerdict() const { return displayVerdict(verdict(), isAdvisory()); }
    static Verdict displayVerdict(Verdict verdict, bool advisory);
    std::vector<CheckResult> failedChecks() const;
    std::vector<CheckResult> warnedChecks() const;
    QString statusSummary() const;

    VANTROQUE_RECORD(ProfileReport, profileID, profileName, profileShortName, inferred, sourceURL,
                     verifiedDate, advisory, checks, tag, passedSummary)
};

/// Figures shown beside the verdicts.
struct Measurements {
    std::optional<double> integratedLKFS;
    std::optional<double> truePeakDb;
    std::optional<double> loudnessRangeLU;
    std::optional<double> phaseMean;
    std::optional<double> phaseMin;
    std::optional<bool> phaseInverted;
    std::optional<double> levelsYMinPercent;
    std::optional<double> levelsYMaxPercent;
    std::optional<double> levelsRejectSeconds;
    std::optional<double> levelsStrictSeconds;
    std::optional<bool> levelsGated; ///< Some platform rejects on picture levels.

    VANTROQUE_RECORD(Measurements, integratedLKFS, truePeakDb, loudnessRangeLU, phaseMean, phaseMin,
                     phaseInverted, levelsYMinPercent, levelsYMaxPercent, levelsRejectSeconds,
                     levelsStrictSeconds, levelsGated)
};

/// A place in the file that a measurement points at. Frames count at the picture's nominal rate.
struct SignalEvent {
    enum class Kind {
        levels,
        blackFrame,
        flashFrame,
        duplicateFrame,
        phase,
        deadChannel,
        safeArea,
        safeZone,
        captionSpelling,
        captionDoubled,
        decoding,
        psyFlash,
        psyRed,
        psyExtended,
        psyPattern,
        alertTone,
        clipping
    };

    QString id; ///< Unique in the file's event list.
    Kind kind = Kind::levels;
    std::int64_t frame = 0;
    std::optional<std::int64_t> endFrame;
    Verdict verdict = Verdict::info;
    QString text;
    std::optional<NormalizedRect> box;

    VANTROQUE_RECORD(SignalEvent, id, kind, frame, endFrame, verdict, text, box)
};
VANTROQUE_ENUM_NAMES(SignalEvent::Kind, levels, blackFrame, flashFrame, duplicateFrame, phase,
                     deadChannel, safeArea, safeZone, captionSpelling, captionDoubled, decoding,
                     psyFlash, psyRed, psyExtended, psyPattern, alertTone, clipping)

/// The picture's outline, for players and exports.
struct VideoSummary {
    int width = 0; ///< Pixels, turned as the picture is shown.
    int height = 0;
    double frameRate = 0;
    double durationSeconds = 0;
    std::optional<std::int64_t> frameCount;
    std::optional<CropRect> activePicture;
    std::optional<std::vector<EmbeddedCaptionSource>> embeddedCaptions;
    std::optional<bool> fullRange;
    std::optional<ColorMatrix> matrix;
    std::optional<double> pixelAspect; ///< How wide a pixel is shown for its height, unless 1.

    VANTROQUE_RECORD(VideoSummary, width, height, frameRate, durationSeconds, frameCount,
                     activePicture, embeddedCaptions, fullRange, matrix, pixelAspect)
};

/// The scored file: one report a platform, and how they add up.
struct FileReport {
    QString fileName;
    QString filePath; ///< At the time of analysis.
    QString summaryLine;
    std::optional<Measurements> measurements;
    std::optional<VideoSummary> video;
    std::vector<ProfileReport> profiles;
    std::optional<std::vector<ProfileReport>> sections; ///< Reports that belong to no platform.
    std::optional<std::vector<SignalEvent>> events;

    /// `profiles`, then `sections`.
    std::vector<ProfileReport> allRows() const;
    bool sectionsWarn() const;
    std::vector<ProfileReport> gateProfiles() const;
    std::vector<ProfileReport> advisoryProfiles() const;
    std::vector<ProfileReport> failingProfiles() const;
    std::vector<ProfileReport> warningProfiles() const;
    std::size_t passingProfileCount() const;
    /// The file's badge. Warnings alone are a pass.
    Verdict summaryVerdict() const;
    QString summaryHeadline() const;
    std::optional<QString> advisoryNote() const;
    QString summarySubhead(std::size_t maxNamed) const;

    VANTROQUE_RECORD(FileReport, fileName, filePath, summaryLine, measurements, video, profiles,
                     sections, events)
};

} // namespace vantroque
