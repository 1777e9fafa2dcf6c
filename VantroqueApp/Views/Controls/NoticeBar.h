#pragma once

#include "VantroqueApp/Views/Controls/Notice.h"

#include <QLabel>
#include <QTimer>
#include <QWidget>

namespace vantroque {

/// A notice on a bar: icon, sentence, what can be done about it, and a cross.
class NoticeBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int lifetimeMilliseconds = 10'000;

    explicit NoticeBar(Notice notice, QWidget* parent = nullptr);

    const QString& subject() const { return m_notice.subject; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

Q_SIGNALS:
    void closed();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void act();
    int textWidth(int width) const;

    const Notice m_notice;
    QWidget* m_action = nullptr;
    QWidget* m_close;
    QLabel* m_text;
    QTimer m_end{this};
    int m_left = lifetimeMilliseconds; ///< While the end waits for the pointer.
};

} // namespace vantroque
