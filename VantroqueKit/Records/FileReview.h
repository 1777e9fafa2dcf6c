#pragma once

#include "Base/Record.h"
#include "Base/Timecode.h"
#include "Records/Report.h"

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

// The operator's own work on a file: notes at frames, drawings on the picture, and a decision.

/// A place in fractions of the picture, 0 to 1, from the top left corner.
struct NormalizedPoint {
    double x = 0;
    double y = 0;

    VANTROQUE_RECORD(NormalizedPoint, x, y)
};

struct AnnotationStroke {
    enum class Tool { pen, ellipse, arrow };
    enum class Ink { red, amber, white };

    QUuid id;
    Tool tool = Tool::pen;
    std::vector<NormalizedPoint> points; ///< A pen's path, or what defines an ellipse or arrow.
    Ink ink = Ink::red;

    static QString displayName(Ink ink);

    VANTROQUE_RECORD(AnnotationStroke, id, tool, points, ink)
};
VANTROQUE_ENUM_NAMES(AnnotationStroke::Tool, pen, ellipse, arrow)
VANTROQUE_ENUM_NAMES(AnnotationStroke::Ink, red, amber, white)

struct ReviewComment {
    QUuid id;
    std::int64_t frame = 0;
    double frameRate = 0; ///< At which `frame` counts; one not above 0 counts as 25.
    QString text;
    std::optional<QString> author;
    QDateTime createdAt;
    std::vector<AnnotationStroke> strokes;

    double seconds() const { return timecode().seconds(); }
    Timecode timecode() const { return {frame, frameRate}; }

    VANTROQUE_RECORD(ReviewComment, id, frame, frameRate, text, author, createdAt, strokes)
};

/// The decision on a file, with what the automatic check said at that moment, so that a later
/// reader can tell a considered approval of a failing file from an ignorant one.
struct ReviewSignOff {
    enum class Decision { approved, needsRevisions };

    Decision decision = Decision::approved;
    QDateTime decidedAt;
    std::optional<Verdict> qcVerdictWhenSigned;
    std::optional<QString> qcSummaryWhenSigned;
    std::vector<QString> failingWhenSigned; ///< Names of platforms.

    static QString label(Decision decision);       ///< What was decided.
    static QString actionLabel(Decision decision); ///< On the button that decides so.

    /// Approved although the check said that the file fails.
    bool overrodeFailure() const;
    /// "over 2 failing platforms" and the like; nothing unless a failure was overridden.
    std::optional<QString> overrideNote() const;
    /// When it was decided, in local time and the user's locale with a short time of day, and over
    /// which failing platforms.
    QString detailLine(QLocale::FormatType dateStyle) const;

    VANTROQUE_RECORD(ReviewSignOff, decision, decidedAt, qcVerdictWhenSigned, qcSummaryWhenSigned,
                     failingWhenSigned)
};
VANTROQUE_ENUM_NAMES(ReviewSignOff::Decision, approved, needsRevisions)

/// One record a file content, so that notes survive renaming and moving the file and stay with the
/// cut they were made on.
struct FileReview {
    QString fingerprint;
    QString fileName;      ///< When last seen.
    QString lastKnownPath; ///< When last seen.
    std::int64_t fileSizeBytes = 0;
    std::optional<int> videoWidth;
    std::optional<int> videoHeight;
    std::vector<ReviewComment> comments; ///< In order of adding.
    std::optional<ReviewSignOff> signOff;
    QDateTime updatedAt;
    std::optional<QString> captionsPath; ///< Sidecar captions chosen for this file.

    /// By frame; those on one frame in order of adding.
    std::vector<ReviewComment> sortedComments() const;
    /// Those at most `tolerance` frames away, in order of adding.
    std::vector<ReviewComment> commentsAt(std::int64_t frame, std::int64_t tolerance) const;
    /// The drawings of `commentsAt`.
    std::vector<AnnotationStroke> strokesAt(std::int64_t frame, std::int64_t tolerance) const;

    VANTROQUE_RECORD(FileReview, fingerprint, fileName, lastKnownPath, fileSizeBytes, videoWidth,
                     videoHeight, comments, signOff, updatedAt, captionsPath)
};

} // namespace vantroque
