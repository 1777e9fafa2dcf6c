#pragma once

#include <QObject>

class QWidget;

namespace vantroque {

/// A widget hears that the pointer left it only while the pointer moves over its own window. This
/// tells those that a menu or a dialog keeps from hearing it. One for the application.
class HoverEnds : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace vantroque
