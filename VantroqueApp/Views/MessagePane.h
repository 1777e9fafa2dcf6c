#pragma once

#include <QWidget>

class QLabel;

namespace vantroque {

/// A heading and a sentence in the middle of the pane.
class MessagePane : public QWidget {
public:
    explicit MessagePane(QWidget* parent = nullptr);
    void show(const QString& heading, const QString& text);

private:
    QLabel* m_heading;
    QLabel* m_text;
};

} // namespace vantroque
