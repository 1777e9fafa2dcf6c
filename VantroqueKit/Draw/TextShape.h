#pragma once

#include "Records/CaptionCue.h"

#include <QGlyphRun>
#include <QPainter>
#include <QPainterPath>

#include <optional>
#include <vector>

namespace vantroque {

/// Text that has been laid out, as outlines of its glyphs, so that it can be filled, stroked and
/// enlarged. Glyphs that the first font has not come from fonts of their script, and those of emoji
/// are pictures. Lengths are in multiples of the font's size. A plain value.
class TextShape {
public:
    /// One line in the type for figures.
    static TextShape label(const QString& text);
    /// One bold line in the type of the window.
    static TextShape tag(const QString& text);
    /// Centred lines in the type of captions, none wider than `width`, `spacing` times as far apart
    /// as the font has it. Text without end is cut.
    static TextShape centred(const std::vector<CaptionCue::Run>& runs, double width,
                             double spacing);

    QSizeF size() const { return m_size; }

    /// At a top left corner and in a font size, both in the painter's units.
    void fill(QPainter& painter, QPointF origin, double fontSize, const QColor& color) const;
    /// A line of `width`, in multiples of the font's size, along the outlines.
    void stroke(QPainter& painter, QPointF origin, double fontSize, const QColor& color,
                double width) const;

private:
    class Setter;

    QPainterPath m_outlines;
    std::vector<QGlyphRun> m_pictures;
    QSizeF m_size;
};

} // namespace vantroque
