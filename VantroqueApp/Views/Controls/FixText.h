#pragma once

#include <QString>
#include <QTextLayout>

namespace vantroque {

/// A paragraph of a report that wraps, after a quieter label if there is one. The arguments of a
/// tool in it are set as they would be typed, and no hyphen is parted from its option.
class FixText {
public:
    FixText(const QString& text, int width, const QString& label = {});

    bool isEmpty() const { return m_layout.text().isEmpty(); }
    int height() const;
    /// What is to be read or typed exactly is drawn in `strong`.
    void draw(QPainter& painter, const QPointF& place, const QColor& color,
              const QColor& strong) const;

private:
    QTextLayout m_layout;
    QTextLayout::FormatRange m_strong;
};

} // namespace vantroque
