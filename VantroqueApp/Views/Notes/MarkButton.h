#pragma once

#include "Records/FileReview.h"

#include <QAbstractButton>

#include <variant>

namespace vantroque {

/// A small button of the row of drawing tools: an icon, or an ink. It is pressed with Return, since
/// the space bar plays.
class MarkButton : public QAbstractButton {
    Q_OBJECT

public:
    MarkButton(QString icon, const QString& help, QWidget* parent = nullptr);
    explicit MarkButton(AnnotationStroke::Ink ink, QWidget* parent = nullptr);

    QSize sizeHint() const override { return minimumSize(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void begin(const QString& help, const QSize& size);
    void paintIcon(QPainter& painter, const QString& icon) const;
    void paintInk(QPainter& painter, AnnotationStroke::Ink ink) const;

    const std::variant<QString, AnnotationStroke::Ink> m_sign;
};

} // namespace vantroque
