#pragma once

class QPainter;
class QRect;
class QString;

/// What rows that open share.
namespace vantroque::RowParts {

constexpr int inset = 8;   ///< Of what a row shows, in the row: an open one is a card around it.
constexpr int indent = 32; ///< Of the words after the sign.
constexpr int chevron = 12;
constexpr int gap = 8;

/// Where words end before the chevron.
int wordsEnd(const QRect& row);
/// At the end of a line.
void drawChevron(QPainter& painter, const QRect& line, bool open);
/// A rounded surface: a card around what is open, or a fill under the pointer.
void drawSurface(QPainter& painter, const QRect& row, bool open, bool hovered);
int tagWidth(const QString& text);
/// A small outlined word, as wide as that; 18 high in the middle of a line.
void drawTag(QPainter& painter, int left, const QRect& line, const QString& text);

} // namespace vantroque::RowParts
