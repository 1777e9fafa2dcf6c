#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QTextLayout>

#include <list>

class QPainter;

namespace vantroque {

/// The text of a row, wrapped: all of it, or as much as a list needs to be read quickly, with an
/// ellipsis at its end. Each paragraph runs in the direction of its own script.
class RowText {
public:
    enum class Extent { brief, whole };
    static constexpr int lineHeight = 18;
    static constexpr int briefLines = 4;

    RowText(const QString& text, int width, Extent extent);

    /// In which a text that somebody wrote is set. Emoji are joined of parts, so they are shaped.
    static QFont fontFor(const QString& text);

    int height() const { return m_lines * lineHeight; }
    void draw(QPainter& painter, const QPointF& place, const QColor& color) const;

private:
    void add(const QString& paragraph, int mostLines);
    bool isFull(int mostLines) const { return m_lines >= mostLines; }
    void endEarly(int mostLines);

    const QFont m_font;
    const int m_width;
    std::list<QTextLayout> m_paragraphs; ///< They cannot be moved.
    int m_lines = 0;
};

} // namespace vantroque
