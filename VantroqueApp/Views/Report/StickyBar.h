#pragma once

#include "Records/Report.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace vantroque {

class ElidedLabel;
class Glyph;

/// The verdict in one line, for as long as its summary is scrolled out of sight.
class StickyBar : public QWidget {
    Q_OBJECT

public:
    static constexpr int high = 40;

    explicit StickyBar(QWidget* parent = nullptr);
    void show(const FileReport& report, std::size_t problems);

Q_SIGNALS:
    void stepPressed(bool forward);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fit();

    qint64 m_problems = 0;
    Glyph* m_sign;
    ElidedLabel* m_headline;
    QLabel* m_count;
    QToolButton* m_previous;
    QToolButton* m_next;
    QWidget* m_steps;
};

} // namespace vantroque
