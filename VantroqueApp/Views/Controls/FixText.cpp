#include "VantroqueApp/Views/Controls/FixText.h"

#include "Check/ShortTexts.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>
#include <QTextOption>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int lineHeight = 18;

/// With a word joiner after each leading hyphen, where lines would break otherwise: of an option,
/// and of a negative number.
QString joined(QString text)
{
    return text.replace(u" -"_s, u" -\u2060"_s);
}

/// The arguments that are given in `text`, where they stand in the joined text. Of no length
/// without any.
QTextLayout::FormatRange argumentsIn(const QString& text)
{
    const QString given = joined(u" "_s + ShortTexts::arguments(text));
    const qsizetype start = given.size() > 1 ? joined(text).indexOf(given) + 1 : 0;
    QTextCharFormat format;
    format.setFont(Type::mono(Type::caption, QFont::Medium));
    return {static_cast<int>(start), static_cast<int>(given.size() - 1), format};
}

} // namespace

FixText::FixText(const QString& text, int width, const QString& label)
    : m_layout(joined(label + text), Type::text(Type::body))
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    const auto arguments = argumentsIn(label + text);
    if (arguments.length > 0)
        m_layout.setFormats({arguments});
    m_strong =
        label.isEmpty()
            ? arguments
            : QTextLayout::FormatRange{static_cast<int>(label.size()),
                                       static_cast<int>(m_layout.text().size() - label.size()),
                                       {}};
    m_layout.setCacheEnabled(true);
    m_layout.beginLayout();
    int y = 0;
    for (QTextLine line = m_layout.createLine(); line.isValid(); line = m_layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += lineHeight;
    }
    m_layout.endLayout();
}

int FixText::height() const
{
    return m_layout.lineCount() * lineHeight;
}

void FixText::draw(QPainter& painter, const QPointF& place, const QColor& color,
                   const QColor& strong) const
{
    painter.setPen(color);
    QTextLayout::FormatRange range = m_strong;
    range.format.setForeground(strong);
    m_layout.draw(&painter, place, {range});
}

} // namespace vantroque
