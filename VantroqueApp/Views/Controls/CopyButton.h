#pragma once

#include <QPushButton>

class QTimer;

namespace vantroque {

/// Copies a text and says for a moment that it did.
class CopyButton : public QPushButton {
    Q_OBJECT

public:
    explicit CopyButton(const QString& title, QWidget* parent = nullptr);

    void setCopied(const QString& text) { m_copied = text; }
    const QString& copied() const { return m_copied; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    void copy();
    void offer() { setText(m_title); }

    const QString m_title;
    QString m_copied;
    QTimer* m_said;
};

} // namespace vantroque
