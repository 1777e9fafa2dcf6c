#pragma once

#include <QIcon>
#include <QWidget>

namespace vantroque {

class CopyButton;

/// A fix, and a button that copies what is of use in it.
class FixBox : public QWidget {
public:
    explicit FixBox(QString fix, QWidget* parent = nullptr);

protected:
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int copyWidth(int width) const;
    int textWidth(int width) const;

    const QString m_fix;
    CopyButton* m_copy;
    QIcon m_sign;
    int m_copyWidth = 0;
};

} // namespace vantroque
