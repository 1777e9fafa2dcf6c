#pragma once

#include <QLabel>

namespace vantroque {

/// A label of one line that is shortened where there is no room, and then shows all of it as its
/// tooltip, unless it was given another.
class ElidedLabel : public QLabel {
public:
    /// `ink` is a role of text in the style sheet.
    ElidedLabel(const QFont& font, Qt::TextElideMode elide, const QString& ink,
                QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    const Qt::TextElideMode m_elide;
};

} // namespace vantroque
