#pragma once

#include <QAbstractButton>

namespace vantroque {

/// The line of a row that opens when it is pressed. Return and the arrows open and close it as
/// well, and leave it for another row.
class FoldLine : public QAbstractButton {
    Q_OBJECT

public:
    explicit FoldLine(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void focused();
    void left(bool downward); ///< With an arrow key.
    void copyRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace vantroque
