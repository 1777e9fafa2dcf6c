#pragma once

#include "VantroqueApp/Views/Report/ReportRows.h"

class QPainter;
class QRect;

/// How the row of a check looks: measured and expected side by side where there is room for both,
/// else expected on a second line. Open, it shows all of what is expected and the fix.
namespace vantroque::CheckRowPainter {

int closedHeight(const ReportRows& rows, const QModelIndex& index, bool wide);
int openHeight(const ReportRows& rows, const QModelIndex& index, int width);
void paint(QPainter& painter, const QRect& row, const ReportRows& rows, const QModelIndex& index,
           bool wide, bool hovered);

} // namespace vantroque::CheckRowPainter
