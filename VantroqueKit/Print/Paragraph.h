#pragma once

#include "Print/Ink.h"

#include <QFont>
#include <QPointF>
#include <QString>

#include <memory>
#include <vector>

class QPainter;
class QTextLayout;

namespace vantroque {

/// How text is set on paper.
struct TextStyle {
    enum class Face { words, figures };

    double points = 0;
    QFont::Weight weight = QFont::Normal;
    Face face = Face::words;
    QColor color = Ink::text;
    QString link; ///< Where a click leads; may be empty.

    static TextStyle plain(double points) { return {.points = points}; }
    static TextStyle semibold(double points)
    {
        return {.points = points, .weight = QFont::DemiBold};
    }
    static TextStyle mono(double points) { return {.points = points, .face = Face::figures}; }
    TextStyle in(const QColor& ink) const
    {
        TextStyle style = *this;
        style.color = ink;
        return style;
    }
};

/// Text that has been set in lines; lengths are points. It stays text in a PDF. A cheap value.
class Paragraph {
public:
    /// Wrapped, also inside of words that are wider. A line feed begins a new line.
    Paragraph(const QString& text, const TextStyle& style, double width);
    /// In lines of that height.
    Paragraph(const QString& text, const TextStyle& style, double width, double lineHeight);
    /// One line; what does not fit is left out in the middle, so that version and extension of a
    /// file's name stay.
    static Paragraph elided(const QString& text, const TextStyle& style, double width);

    int lineCount() const;
    double lineHeight() const { return m_lineHeight; }
    double height() const { return lineCount() * m_lineHeight; }
    /// Of the widest line.
    double width() const;

    void draw(QPainter& painter, QPointF topLeft) const;
    /// One line, at the place of its own top.
    void drawLine(QPainter& painter, int line, QPointF topLeft) const;

private:
    double m_lineHeight = 0;
    double m_ascent = 0;
    std::shared_ptr<QTextLayout> m_layout;
};

} // namespace vantroque
