#include "Base/Text.h"
#include "Draw/FramePainter.h"
#include "Print/SectionBlocks.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vantroque::SectionBlocks {

using namespace Qt::StringLiterals;

namespace {

constexpr double wordsLeft = 280;
constexpr double wordsWidth = 284;

/// Width over height of the picture as it is shown.
double aspectRatio(const FileSection& section)
{
    double width = 0;
    double height = 0;
    if (section.video) {
        width = section.video->width;
        height = section.video->height;
    } else if (section.review) {
        width = section.review->videoWidth.value_or(0);
        height = section.review->videoHeight.value_or(0);
    }
    return width > 0 && height > 0 ? width / height : 16.0 / 9;
}

/// As high as the picture is, but of pictures that are hardly one: with room for words, and not so
/// high that the comment falls on another page.
double slotHeight(const FileSection& section)
{
    return std::clamp(ReviewPDF::commentSlotWidth / aspectRatio(section), 24.0, 480.0);
}

/// The frame with all that lies on it, as the operator saw it.
QImage seen(const QImage& frame, const FileSection& section, const ReviewComment& comment)
{
    Overlay overlay;
    overlay.strokes = comment.strokes;
    if (section.captions)
        overlay.captions = section.captions->track.cues(comment.seconds());
    return frame.isNull() ? frame : FramePainter::burnIn(frame, overlay, frame.size());
}

} // namespace

std::vector<Block> comment(const FileSection& section, const ReviewComment& comment,
                           const Options& options)
{
    Composition composition;
    composition.add(
        QRectF(Pages::left, 0, ReviewPDF::commentSlotWidth, slotHeight(section)),
        [&section, &options, comment](QPainter& painter, const QRectF& slot) {
            const QImage frame = options.frame(FrameWish::at(section.mediaURL, comment.seconds()));
            drawFrame(painter, slot, seen(frame, section, comment), u"frame unavailable"_s);
        });
    composition.add(Paragraph(comment.timecode().text(), TextStyle::mono(11), wordsWidth),
                    {wordsLeft, 0});
    const double y =
        composition.add(Paragraph(comment.text, TextStyle::plain(10), wordsWidth), {wordsLeft, 18});
    if (const auto count = std::ssize(comment.strokes); count > 0)
        composition.add(Paragraph(u"%1 marking%2"_s.arg(count).arg(Text::plural(count)),
                                  TextStyle::plain(8).in(Ink::quiet), wordsWidth),
                        {wordsLeft, y + 2});
    const double height = std::ceil(composition.bottom()) + 6;
    return std::move(composition).blocks(height);
}

} // namespace vantroque::SectionBlocks
