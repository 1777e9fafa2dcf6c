#pragma once

class QObject;

/// What opens over the windows for a moment: menus and tips.
namespace vantroque::Popups {

/// Dresses all that are to come. Once; `application` owns what does it.
void dress(QObject& application);

} // namespace vantroque::Popups
