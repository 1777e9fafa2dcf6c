#pragma once

class QWidget;

/// How long things move.
namespace vantroque::Motion {

/// In milliseconds; 0 where the desktop wants no animation.
int duration(const QWidget& widget, int milliseconds);

} // namespace vantroque::Motion
