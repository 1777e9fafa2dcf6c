#pragma once

#include <QScrollArea>

class QLabel;

namespace vantroque {

class SignChip;

/// A sign, a heading and a sentence in the middle of the pane. A text that is longer than the pane
/// scrolls.
class MessagePane : public QScrollArea {
    Q_OBJECT

public:
    explicit MessagePane(QWidget* parent = nullptr);
    /// Without an icon there is no sign.
    void show(const QString& icon, const QString& heading, const QString& text = {});

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    SignChip* m_sign;
    QLabel* m_heading;
    QLabel* m_text;
};

} // namespace vantroque
