#pragma once

class QString;
class QToolButton;
class QWidget;

/// Small buttons that are an icon alone.
namespace vantroque::IconButton {

QToolButton* make(const QString& icon, const QString& name, const QString& help,
                  QWidget* parent = nullptr);
QToolButton* previousProblem();
QToolButton* nextProblem();
/// Both in one frame.
QWidget* steps(QToolButton& previous, QToolButton& next);

} // namespace vantroque::IconButton
