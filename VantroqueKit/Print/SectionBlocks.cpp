#include "Print/SectionBlocks.h"

#include <QPainter>

#include <iterator>

namespace vantroque::SectionBlocks {

using namespace Qt::StringLiterals;

namespace {

void append(std::vector<Block>& blocks, std::vector<Block> more)
{
    std::ranges::move(more, std::back_inserter(blocks));
}

} // namespace

std::vector<Block> all(const FileSection& section, const Options& options)
{
    std::vector<Block> blocks = header(section, options);
    if (section.report)
        append(blocks, verdict(section));
    blocks.push_back(gap(8));
    if (const auto comments = section.comments(); !comments.empty()) {
        append(blocks, heading(u"Comments (%1)"_s.arg(comments.size())));
        for (const ReviewComment& each : comments)
            append(blocks, comment(section, each, options));
    }
    if (section.report) {
        append(blocks, heading(u"Full QC results"_s));
        append(blocks, results(section));
    }
    return blocks;
}

std::vector<Block> heading(const QString& words)
{
    Composition composition;
    composition.add(Paragraph(words, TextStyle::semibold(8).in(Ink::quiet), Pages::textWidth, 14),
                    {Pages::left, 8});
    return std::move(composition).blocks(26, true);
}

Block gap(double height)
{
    return {height, false, [](QPainter&, double) {}};
}

std::vector<ProfileReport> rows(const FileSection& section)
{
    auto rows = section.report ? section.report->allRows() : std::vector<ProfileReport>();
    if (section.captionReport)
        rows.push_back(*section.captionReport);
    return rows;
}

void drawFrame(QPainter& painter, const QRectF& slot, const QImage& frame, const QString& missing)
{
    if (!frame.isNull()) {
        QRectF place({}, QSizeF(frame.size()).scaled(slot.size(), Qt::KeepAspectRatio));
        place.moveCenter(slot.center());
        painter.drawImage(place, frame);
        return;
    }
    painter.fillRect(slot, Ink::slot);
    const Paragraph words(missing, TextStyle::plain(8).in(Ink::quiet), slot.width());
    words.draw(painter, slot.center() - QPointF(words.width(), words.height()) / 2);
}

void drawHairline(QPainter& painter, double y)
{
    painter.fillRect(QRectF(Pages::left, y, Pages::textWidth, 0.5), Ink::hairline);
}

} // namespace vantroque::SectionBlocks
