#pragma once

#include "Base/UserDefaults.h"

#include <optional>

class QWidget;

/// Where the window was, under "window.place" of the user defaults.
namespace vantroque::WindowMemory {

void keep(const QWidget& window, UserDefaults& defaults);
/// Before the window is shown. No larger than the screen that it was on, and where that screen is
/// gone, on the first one. False where nothing was kept, or nothing that makes sense.
bool restore(QWidget& window, const UserDefaults& defaults);

/// The width of a part of the window that the operator chose: text of one whole number.
void keepWidth(UserDefaults& defaults, const QString& key, int width);
std::optional<int> width(const UserDefaults& defaults, const QString& key, int least, int most);

} // namespace vantroque::WindowMemory
