#pragma once

#include <QWidget>

class QPushButton;
class QTimer;

namespace vantroque {

/// A fix, and a button that copies what is of use in it.
class FixBox : public QWidget {
    Q_OBJECT

public:
    explicit FixBox(QString fix, QWidget* parent = nullptr);

protected:
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int textWidth(int width) const;
    void copy();
    void offer();

    const QString m_fix;
    QPushButton* m_copy;
    QTimer* m_copied;
};

} // namespace vantroque
