#include "Base/Text.h"
#include "Check/ReportWords.h"
#include "Print/SectionBlocks.h"

#include <QPainter>
#include <QStringList>

#include <algorithm>

namespace vantroque::SectionBlocks {

using namespace Qt::StringLiterals;

namespace {

constexpr double wordsLeft = 194;
constexpr double stampHeight = 20;

/// Figures that stand between dots, in lines that are parted at the dots.
QStringList linesOf(const QString& figures)
{
    constexpr qsizetype mostCharacters = 68; // in the type for figures
    const QString dot = u" · "_s;
    QStringList lines;
    for (const QString& part : figures.split(dot, Qt::SkipEmptyParts)) {
        if (lines.isEmpty() || lines.last().size() + dot.size() + part.size() > mostCharacters)
            lines << part;
        else
            lines.last() += dot + part;
    }
    return lines;
}

/// What the file is, and what was measured.
QStringList figures(const FileSection& section)
{
    if (section.report) {
        const Measurements measured = section.report->measurements.value_or(Measurements());
        return linesOf(section.report->summaryLine) + linesOf(ReportWords::measurements(measured));
    }
    if (!section.review)
        return {};
    const FileReview& review = *section.review;
    QStringList parts{Text::byteCount(review.fileSizeBytes)};
    if (review.videoWidth && review.videoHeight)
        parts << u"%1x%2"_s.arg(*review.videoWidth).arg(*review.videoHeight);
    return {parts.join(u" · "_s)};
}

QString decisionLine(const ReviewSignOff& signOff)
{
    QString line = ReviewSignOff::label(signOff.decision);
    if (const auto note = signOff.overrideNote())
        line += u' ' + *note;
    return line + u", "_s + signOff.detailLine(QLocale::ShortFormat);
}

/// Where the file lies, and what people did.
QStringList notes(const FileSection& section, const Options& options)
{
    QStringList lines{section.mediaURL.displayPath()};
    if (options.reviewer && !options.reviewer->isEmpty())
        lines << u"reviewed by %1"_s.arg(*options.reviewer);
    const auto count = std::ssize(section.comments());
    lines << u"%1 comment%2"_s.arg(count).arg(Text::plural(count));
    if (section.review && section.review->signOff)
        lines << decisionLine(*section.review->signOff);
    return lines;
}

/// The decision in a frame at the right edge; where it begins.
double addStamp(Composition& composition, ReviewSignOff::Decision decision)
{
    const QColor color =
        Ink::of(decision == ReviewSignOff::Decision::approved ? Verdict::pass : Verdict::fail);
    const Paragraph words(ReviewSignOff::label(decision).toUpper(),
                          TextStyle::semibold(9).in(color), Pages::textWidth);
    constexpr double padding = 8;
    const double width = words.width() + 2 * padding;
    const QRectF frame(Pages::right - width, 0, width, stampHeight);
    composition.add(frame, [color](QPainter& painter, const QRectF& place) {
        constexpr double line = 1;
        painter.setPen(QPen(color, line));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(place.adjusted(line / 2, line / 2, -line / 2, -line / 2));
    });
    composition.add(words, frame.center() - QPointF(words.width(), words.height()) / 2);
    return frame.left();
}

void addIdentifyingFrame(Composition& composition, const FileSection& section,
                         const Options& options)
{
    const double duration = section.video ? section.video->durationSeconds : 0;
    composition.add(QRectF({Pages::left, 0}, QSizeF(ReviewPDF::identifyingSlot)),
                    [wish = FrameWish::identifying(section.mediaURL, duration),
                     &options](QPainter& painter, const QRectF& slot) {
                        drawFrame(painter, slot,
                                  wish.seconds.empty() ? QImage() : options.frame(wish), {});
                    });
}

} // namespace

std::vector<Block> header(const FileSection& section, const Options& options)
{
    Composition composition;
    addIdentifyingFrame(composition, section, options);
    double edge = Pages::right;
    if (section.review && section.review->signOff)
        edge = addStamp(composition, section.review->signOff->decision) - 12;
    double y = composition.add(
        Paragraph::elided(section.name(), TextStyle::semibold(16), edge - wordsLeft),
        {wordsLeft, 0});
    y += 4;
    const double width = Pages::right - wordsLeft;
    for (const QString& line : figures(section))
        y = composition.add(Paragraph(line, TextStyle::mono(9), width, 14), {wordsLeft, y});
    y += 2;
    for (const QString& line : notes(section, options))
        y = composition.add(Paragraph(line, TextStyle::plain(8).in(Ink::quiet), width, 12),
                            {wordsLeft, y});
    const double line = composition.bottom() + 10;
    composition.add(
        {Pages::left, line, Pages::textWidth, 0.5},
        [](QPainter& painter, const QRectF& place) { drawHairline(painter, place.top()); });
    return std::move(composition).blocks(line + 6);
}

} // namespace vantroque::SectionBlocks
