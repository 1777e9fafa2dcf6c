#include "Print/Paragraph.h"

#include "Base/Text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Fonts come in whole sizes: text is set in twentieths of a point and drawn that much smaller.
constexpr double unitsPerPoint = 20;

/// Whether glyphs of the text join or stack. Other text is left as it is written: type for
/// interfaces would make a multiplication sign of the x in "1920x1080".
bool needsShaping(const QString& text)
{
    return std::ranges::any_of(text, [](QChar c) {
        return c.isSurrogate()
               || (c.unicode() >= 0x0300 && c.script() != QChar::Script_Latin
                   && c.script() != QChar::Script_Common);
    });
}

QFont font(const TextStyle& style, const QString& text)
{
    QFont font;
    font.setFamilies({style.face == TextStyle::Face::figures ? u"JetBrains Mono"_s : u"Inter"_s,
                      u"Noto Sans"_s, u"Noto Sans CJK JP"_s, u"Noto Sans CJK KR"_s,
                      u"Noto Sans Arabic"_s, u"Noto Sans Hebrew"_s, u"Noto Sans Devanagari"_s,
                      u"Noto Sans Thai"_s, u"DejaVu Sans"_s});
    font.setPixelSize(qRound(style.points * unitsPerPoint));
    font.setWeight(style.weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (!needsShaping(text))
        font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

/// What could steer a reader of the text is shown as such; lines stay.
QString readable(const QString& text)
{
    return Text::joined(text.split(u'\n'), QString(QChar::LineSeparator), Text::printable);
}

} // namespace

Paragraph::Paragraph(const QString& text, const TextStyle& style, double width)
    : Paragraph(text, style, width, 0)
{
}

Paragraph::Paragraph(const QString& text, const TextStyle& style, double width, double lineHeight)
{
    const QString words = readable(text);
    const QFont type = font(style, words);
    const QFontMetricsF metrics(type);
    m_lineHeight = lineHeight > 0 ? lineHeight : metrics.lineSpacing() / unitsPerPoint;
    m_ascent = metrics.ascent() / unitsPerPoint;
    m_layout = std::make_shared<QTextLayout>(words, type);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    option.setUseDesignMetrics(true);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout->setTextOption(option);
    QTextCharFormat format;
    format.setForeground(style.color);
    if (!style.link.isEmpty()) {
        format.setAnchor(true);
        format.setAnchorHref(style.link);
    }
    m_layout->setFormats({{0, static_cast<int>(words.size()), format}});
    m_layout->beginLayout();
    for (QTextLine line = m_layout->createLine(); line.isValid(); line = m_layout->createLine())
        line.setLineWidth(width * unitsPerPoint);
    m_layout->endLayout();
}

Paragraph Paragraph::elided(const QString& text, const TextStyle& style, double width)
{
    const QString words = Text::printable(text);
    return {
        QFontMetricsF(font(style, words)).elidedText(words, Qt::ElideMiddle, width * unitsPerPoint),
        style, width * 2};
}

int Paragraph::lineCount() const
{
    return m_layout->lineCount();
}

double Paragraph::width() const
{
    return m_layout->maximumWidth() / unitsPerPoint;
}

void Paragraph::draw(QPainter& painter, QPointF topLeft) const
{
    for (int line = 0; line < lineCount(); ++line)
        drawLine(painter, line, topLeft + QPointF(0, line * m_lineHeight));
}

void Paragraph::drawLine(QPainter& painter, int line, QPointF topLeft) const
{
    // Fonts that help out in a line may stand higher; the lines stay as far apart.
    const QTextLine set = m_layout->lineAt(line);
    painter.save();
    painter.translate(topLeft.x(), topLeft.y() + m_ascent - set.ascent() / unitsPerPoint);
    painter.scale(1 / unitsPerPoint, 1 / unitsPerPoint);
    set.draw(&painter, {});
    painter.restore();
}

} // namespace vantroque
