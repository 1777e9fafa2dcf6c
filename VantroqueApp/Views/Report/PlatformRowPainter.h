#pragma once

#include "VantroqueApp/Views/Report/ReportRows.h"

class QPainter;
class QRect;

/// How the row of a platform looks, what is folded in it, and a heading over several.
namespace vantroque::PlatformRowPainter {

int height(const ReportRows& rows, const QModelIndex& index);
/// `wide`: there is room for what is wrong beside the name of an open platform.
void paint(QPainter& painter, const QRect& row, const ReportRows& rows, const QModelIndex& index,
           bool wide, bool hovered);

} // namespace vantroque::PlatformRowPainter
