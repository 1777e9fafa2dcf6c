#include "Draw/TextShape.h"

#include <QFont>
#include <QFontMetricsF>
#include <QRawFont>
#include <QTextLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Text is set in this size and scaled when it is drawn, so that it has the same shape at any.
constexpr int setSize = 100;

enum class Type { interface, figures };

/// Whether glyphs of the text join or stack. Type for interfaces also makes other signs of Latin
/// text, a multiplication sign of the x in "1920x1080", and captions must show what they hold.
bool needsShaping(const QString& text)
{
    return std::ranges::any_of(text, [](QChar c) {
        return c.isSurrogate()
               || (c.unicode() >= 0x0300 && c.script() != QChar::Script_Latin
                   && c.script() != QChar::Script_Common);
    });
}

/// Chinese characters have another form in each of the languages that use them.
QString ideographFamily(const QString& text)
{
    QString family = u"Noto Sans CJK SC"_s;
    for (const QChar c : text) {
        if (c.script() == QChar::Script_Hiragana || c.script() == QChar::Script_Katakana)
            return u"Noto Sans CJK JP"_s;
        if (c.script() == QChar::Script_Hangul)
            family = u"Noto Sans CJK KR"_s;
    }
    return family;
}

QFont font(Type type, const QString& text, QFont::Weight weight, bool italic)
{
    QStringList families{type == Type::figures ? u"JetBrains Mono"_s : u"Inter"_s};
    families << u"Noto Sans"_s << ideographFamily(text) << u"Noto Sans Arabic"_s
             << u"Noto Sans Hebrew"_s << u"Noto Sans Devanagari"_s << u"Noto Sans Thai"_s
             << u"Noto Color Emoji"_s << u"DejaVu Sans"_s;
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(setSize);
    font.setWeight(weight);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (!needsShaping(text))
        font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

bool isPictures(const QRawFont& font)
{
    return !font.fontTable("CBDT").isEmpty() || !font.fontTable("sbix").isEmpty()
           || !font.fontTable("COLR").isEmpty();
}

/// A part of a paragraph in one font.
struct Piece {
    QString text;
    QFont font;
};

using Paragraph = std::vector<Piece>;

/// One paragraph a line feed.
std::vector<Paragraph> paragraphs(const std::vector<CaptionCue::Run>& runs)
{
    // More than fits in a picture of any shape.
    constexpr qsizetype mostCharacters = 5000;
    qsizetype left = mostCharacters;
    std::vector<Paragraph> all(1);
    for (const CaptionCue::Run& run : runs) {
        const QString text = run.text.left(left);
        left -= text.size();
        QFont type =
            font(Type::interface, text, run.bold ? QFont::Bold : QFont::DemiBold, run.italic);
        type.setUnderline(run.underline);
        const QStringList lines = text.split(u'\n');
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (i > 0)
                all.emplace_back();
            all.back().push_back({lines[i], type});
        }
    }
    return all;
}

} // namespace

/// Sets paragraphs one under the other.
class TextShape::Setter {
public:
    explicit Setter(double spacing) : m_spacing(spacing) {}

    /// Without a width in one line, from the left.
    void add(const Paragraph& paragraph, std::optional<double> width)
    {
        QString text;
        QList<QTextLayout::FormatRange> formats;
        for (const Piece& piece : paragraph) {
            QTextCharFormat format;
            format.setFont(piece.font);
            formats.append(
                {static_cast<int>(text.size()), static_cast<int>(piece.text.size()), format});
            text += piece.text;
        }
        QTextLayout layout(text, paragraph.front().font);
        QTextOption option;
        option.setTextDirection(Qt::LayoutDirectionAuto);
        option.setAlignment(width ? Qt::AlignHCenter : Qt::AlignLeft | Qt::AlignAbsolute);
        option.setWrapMode(width ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.setFormats(formats);
        layout.beginLayout();
        const QFontMetricsF metrics(paragraph.front().font);
        while (place(layout, metrics, width)) {
        }
        layout.endLayout();
        for (const QGlyphRun& run : layout.glyphRuns())
            add(run);
    }

    TextShape shape(std::optional<double> width)
    {
        m_shape.m_outlines.setFillRule(Qt::WindingFill);
        m_shape.m_size = QSizeF(width.value_or(m_widest), m_bottom) / setSize;
        return m_shape;
    }

private:
    /// All lines have the height of the first font, whatever fonts help out in one of them. False
    /// when there is no more to place.
    bool place(QTextLayout& layout, const QFontMetricsF& metrics, std::optional<double> width)
    {
        constexpr double endless = 1e6;
        QTextLine line = layout.createLine();
        if (!line.isValid())
            return false;
        line.setLineWidth(width.value_or(endless));
        m_widest = std::max(m_widest, line.naturalTextWidth());
        m_bottom += metrics.height() * m_spacing;
        line.setPosition({0, m_bottom - metrics.descent() - line.ascent()});
        return true;
    }

    void add(const QGlyphRun& run)
    {
        const QRawFont font = run.rawFont();
        if (isPictures(font)) {
            m_shape.m_pictures.push_back(run);
            return;
        }
        const auto glyphs = run.glyphIndexes();
        const auto positions = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i)
            m_shape.m_outlines.addPath(font.pathForGlyph(glyphs[i]).translated(positions[i]));
        if (run.underline()) {
            const QRectF bounds = run.boundingRect();
            const double thick = font.lineThickness();
            m_shape.m_outlines.addRect(bounds.x(), positions.front().y() + font.underlinePosition(),
                                       bounds.width(), thick);
        }
    }

    double m_spacing;
    double m_bottom = 0;
    double m_widest = 0;
    TextShape m_shape;
};

TextShape TextShape::label(const QString& text)
{
    Setter setter(1);
    setter.add({{text, font(Type::figures, text, QFont::Normal, false)}}, {});
    return setter.shape({});
}

TextShape TextShape::tag(const QString& text)
{
    Setter setter(1);
    setter.add({{text, font(Type::interface, text, QFont::Bold, false)}}, {});
    return setter.shape({});
}

TextShape TextShape::centred(const std::vector<CaptionCue::Run>& runs, double width, double spacing)
{
    Setter setter(spacing);
    for (const Paragraph& paragraph : paragraphs(runs))
        if (!paragraph.empty())
            setter.add(paragraph, width * setSize);
    return setter.shape(width * setSize);
}

void TextShape::fill(QPainter& painter, QPointF origin, double fontSize, const QColor& color) const
{
    painter.save();
    painter.translate(origin);
    painter.scale(fontSize / setSize, fontSize / setSize);
    painter.fillPath(m_outlines, color);
    for (const QGlyphRun& run : m_pictures)
        painter.drawGlyphRun({}, run);
    painter.restore();
}

void TextShape::stroke(QPainter& painter, QPointF origin, double fontSize, const QColor& color,
                       double width) const
{
    painter.save();
    painter.translate(origin);
    painter.scale(fontSize / setSize, fontSize / setSize);
    painter.strokePath(m_outlines,
                       QPen(color, width * setSize, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.restore();
}

} // namespace vantroque
