#include "VantroqueApp/Views/Report/FixText.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>
#include <QRegularExpression>
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

/// Where the first option of a tool begins; -1 without one.
qsizetype firstOption(const QString& text)
{
    static const QRegularExpression option(u"(?<= )-\u2060[a-z]"_s);
    return text.indexOf(option);
}

/// From the first option to the end of the sentence, but for a closing bracket and full stop.
QTextLayout::FormatRange arguments(const QString& text)
{
    const auto option = firstOption(text);
    const auto start = option < 0 ? text.size() : option;
    const auto sentence = text.indexOf(u". "_s, start);
    auto end = sentence < 0 ? text.size() : sentence;
    while (end > start && (text[end - 1] == u'.' || text[end - 1] == u')'))
        --end;
    QTextCharFormat format;
    format.setFont(Type::mono(Type::caption, QFont::Medium));
    return {static_cast<int>(start), static_cast<int>(end - start), format};
}

} // namespace

FixText::FixText(const QString& text, int width, const QString& label)
    : m_layout(joined(label + text), Type::text(Type::body))
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    if (firstOption(m_layout.text()) >= 0)
        m_layout.setFormats({arguments(m_layout.text())});
    m_strong =
        label.isEmpty()
            ? arguments(m_layout.text())
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
