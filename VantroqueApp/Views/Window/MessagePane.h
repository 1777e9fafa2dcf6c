#pragma once

#include <QScrollArea>

class QLabel;

namespace vantroque {

/// A heading and a sentence in the middle of the pane, and below them what a tool said, line by
/// line. A text that is longer than the pane scrolls.
class MessagePane : public QScrollArea {
    Q_OBJECT

public:
    explicit MessagePane(QWidget* parent = nullptr);
    void show(const QString& heading, const QString& text, const QString& detail = {});

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QLabel* m_heading;
    QLabel* m_text;
    QLabel* m_detail;
};

} // namespace vantroque
