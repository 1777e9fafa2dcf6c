#pragma once

#include <QString>
#include <QTextLayout>

namespace vantroque {

/// A paragraph of a report that wraps. The arguments of a tool in it are set as they would be
/// typed, and no hyphen is parted from its option.
class FixText {
public:
    FixText(const QString& text, int width);

    bool isEmpty() const { return m_layout.text().isEmpty(); }
    int height() const;
    void draw(QPainter& painter, const QPointF& place, const QColor& color) const;

private:
    QTextLayout m_layout;
};

} // namespace vantroque
