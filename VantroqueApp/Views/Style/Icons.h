#pragma once

#include "Records/Report.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

/// The program's own icons, drawn in the colour of their role and kept. Main thread.
namespace vantroque::Icons {

/// A tool's line icon in one colour. `size` is in logical pixels.
QPixmap tinted(const QString& name, const QColor& color, int size, double deviceRatio);
/// The same for a button: quieter while it cannot be pressed.
QIcon tool(const QString& name, int size = 16);
/// The icon of a primary button.
QIcon tool(const QString& name, const QColor& color, int size = 16);

/// The sign of a verdict, filled. Its shape differs from verdict to verdict.
void drawVerdict(QPainter& painter, const QRectF& rect, Verdict verdict);
/// The same as an outline, for a chip.
void drawVerdictOutline(QPainter& painter, const QRectF& rect, Verdict verdict);
void draw(QPainter& painter, const QRectF& rect, const QString& name, const QColor& color);

/// The sign of a file: its badge, or, where no platform was asked, what the sections say of it; the
/// neutral one when nothing does.
Verdict signOf(const FileReport& report);
/// What the sign says, for those who do not see it.
QString word(Verdict verdict);

} // namespace vantroque::Icons
