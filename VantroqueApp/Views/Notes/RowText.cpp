#include "VantroqueApp/Views/Notes/RowText.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

#include <algorithm>
#include <limits>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar ellipsis(0x2026);

QTextOption wrapping(const QString& paragraph)
{
    const bool fromRight = paragraph.isRightToLeft();
    QTextOption option(fromRight ? Qt::AlignRight : Qt::AlignLeft);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(fromRight ? Qt::RightToLeft : Qt::LeftToRight);
    return option;
}

/// As much of a text as its first lines can hold, so that a long note costs no more than they do.
QString start(const QString& text, int width)
{
    constexpr int narrowestLetter = 3;
    const QString begin = text.left(width / narrowestLetter * RowText::briefLines);
    const bool isHalf = !begin.isEmpty() && begin.back().isHighSurrogate();
    return isHalf ? begin.chopped(1) : begin;
}

} // namespace

RowText::RowText(const QString& text, int width, Extent extent)
    : m_font(fontFor(text)), m_width(width)
{
    const bool isBrief = extent == Extent::brief;
    const QString shown = isBrief ? start(text, width) : text;
    const int mostLines = isBrief ? briefLines : std::numeric_limits<int>::max();
    qsizetype at = 0;
    while (at <= shown.size() && !isFull(mostLines)) {
        const qsizetype end = shown.indexOf(u'\n', at);
        add(shown.mid(at, end < 0 ? -1 : end - at), mostLines);
        at = end < 0 ? shown.size() + 1 : end + 1;
    }
    const QTextLayout& last = m_paragraphs.back();
    const QTextLine line = last.lineAt(last.lineCount() - 1);
    const bool isCut = line.textStart() + line.textLength() < last.text().size();
    if (isCut || at <= shown.size() || shown.size() < text.size())
        endEarly(mostLines);
}

QFont RowText::fontFor(const QString& text)
{
    constexpr QChar joiner(0x200D);
    constexpr QChar asPicture(0xFE0F);
    QFont font = Type::text(Type::body);
    const auto isOfEmoji = [&](QChar each) {
        return each.isSurrogate() || each == joiner || each == asPicture;
    };
    if (std::ranges::any_of(text, isOfEmoji)) {
        font.setFamilies({u"Inter"_s, u"Noto Sans"_s, u"Noto Color Emoji"_s});
        font.setStyleStrategy(QFont::PreferDefault);
    }
    return font;
}

void RowText::add(const QString& paragraph, int mostLines)
{
    QTextLayout& layout = m_paragraphs.emplace_back(paragraph, m_font);
    layout.setTextOption(wrapping(paragraph));
    layout.beginLayout();
    while (!isFull(mostLines)) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(m_width);
        line.setPosition({0, static_cast<double>(m_lines * lineHeight)});
        ++m_lines;
    }
    layout.endLayout();
}

/// Shortens the last line, since there is more than is shown.
void RowText::endEarly(int mostLines)
{
    const QTextLayout& last = m_paragraphs.back();
    const QString paragraph = last.text();
    const int lines = last.lineCount();
    const int from = last.lineAt(lines - 1).textStart();
    const QString shortened = QFontMetrics(m_font).elidedText(
        paragraph.mid(from).trimmed() + ellipsis, Qt::ElideRight, m_width);
    m_lines -= lines;
    m_paragraphs.pop_back();
    const QString before =
        from > 0 ? paragraph.left(from) + QChar(QChar::LineSeparator) : QString();
    add(before + shortened, mostLines);
}

void RowText::draw(QPainter& painter, const QPointF& place, const QColor& color) const
{
    painter.setPen(color);
    const QRectF visible = painter.clipBoundingRect();
    for (const QTextLayout& paragraph : m_paragraphs)
        paragraph.draw(&painter, place, {}, visible);
}

} // namespace vantroque
