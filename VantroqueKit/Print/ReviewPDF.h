#pragma once

#include "Base/Result.h"
#include "Captions/LoadedCaptions.h"
#include "Captions/SpellChecker.h"
#include "Print/FrameWish.h"
#include "Records/FileReview.h"
#include "Records/Report.h"

#include <QSize>

/// Reports and review notes on paper, for people who do not have the program: first a frame by
/// which the film is known and the verdict, then the operator's comments, then all results.
/// Stateless; blocks; any thread, in a program that has a QGuiApplication.
namespace vantroque::ReviewPDF {

/// What is told of one file.
struct FileSection {
    std::optional<FileReview> review;
    FileUrl mediaURL;
    std::optional<FileReport> report;
    std::optional<VideoSummary> video;
    std::optional<LoadedCaptions> captions;     ///< Drawn on the frames of comments.
    std::optional<ProfileReport> captionReport; ///< Told below the platforms.

    /// The given captions, or those that stand for the file, and what their check says. Blocks as
    /// long as ffmpeg takes; any thread.
    void addCaptions(const std::optional<LoadedCaptions>& given, SpellChecker& checker);

    QString name() const;
    std::vector<ReviewComment> comments() const; ///< In the order of the film.
};

enum class PDFError { contextFailed, nothingToExport };
QString description(PDFError error);

/// Slots for frames, in points.
constexpr QSize identifyingSlot{132, 76};
constexpr int commentSlotWidth = 216;

/// The frames that `write` asks for, in that order, so that they can be fetched beforehand.
std::vector<FrameWish> wishes(const std::vector<FileSection>& sections);

struct Options {
    std::optional<QString> reviewer;
    /// Where frames come from. A null one leaves its slot empty.
    std::function<QImage(const FrameWish&)> frame = [](const FrameWish&) { return QImage(); };
    /// How many sections are done.
    std::function<void(std::size_t)> progress = [](std::size_t) {};
};

/// Takes the finished document, which is gone after the call.
using Taker = std::function<Result<void>(const QByteArray& document)>;

/// Makes one document of all sections that hold a comment or a report. Fails with the words of a
/// `PDFError`, those of the file system, or of `take`, and when the thread's work is called off.
Result<void> write(const std::vector<FileSection>& sections, const Options& options,
                   const Taker& take);
/// Into a file, which is replaced whole or left as it was.
Result<void> write(const std::vector<FileSection>& sections, const FileUrl& url,
                   const Options& options);

} // namespace vantroque::ReviewPDF
