#pragma once

#include <QString>

class QAction;
class QMenu;

/// A line of a menu that names those under it.
namespace vantroque::MenuHeading {

/// Returns an entry that cannot be chosen.
QAction* add(QMenu& menu, const QString& text);
/// Of such an entry.
void setText(QAction& heading, const QString& text);

} // namespace vantroque::MenuHeading
