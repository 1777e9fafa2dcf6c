#pragma once

class QString;
class QToolButton;
class QWidget;

/// Small buttons of the report that are an icon alone.
namespace vantroque::IconButton {

QToolButton* make(const QString& icon, const QString& name, const QString& help);
QToolButton* previousProblem();
QToolButton* nextProblem();
/// Both in one frame.
QWidget* steps(QToolButton& previous, QToolButton& next);

} // namespace vantroque::IconButton
