#pragma once

#include "Records/Report.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

class QAbstractButton;
class QPainter;
class QRectF;

/// The program's own icons, drawn in the colour of their role and kept. Main thread.
namespace vantroque::Icons {

/// A tool's line icon in one colour. `size` is in logical pixels.
QPixmap tinted(const QString& name, const QColor& color, int size, double deviceRatio);
/// The same for a button, in the look of the moment: quieter while it cannot be pressed.
QIcon tool(const QString& name, QColor Theme::*ink = &Theme::text1);
/// Gives a button an icon, which keeps its distance from the words.
void give(QAbstractButton& button, const QString& name, int size = 16,
          QColor Theme::*ink = &Theme::text1);

/// The sign of the program, for its windows.
QIcon application();

/// The sign of a verdict, filled. Its shape differs from verdict to verdict.
void drawVerdict(QPainter& painter, const QRectF& rect, Verdict verdict);
/// The same as an outline, for a chip.
void drawVerdictOutline(QPainter& painter, const QRectF& rect, Verdict verdict);
void draw(QPainter& painter, const QRectF& rect, const QString& name, const QColor& color);

/// The sign of a file: its badge, or, where no platform was asked, the trouble that the sections
/// have with it. Without any it is the neutral one: nobody has passed it.
Verdict signOf(const FileReport& report);
/// What the sign says, for those who do not see it.
QString word(Verdict verdict);

} // namespace vantroque::Icons
