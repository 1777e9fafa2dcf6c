#include "VantroqueApp/Views/Style/Type.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPainter>

namespace vantroque::Type {

using namespace Qt::StringLiterals;

namespace {

QFont font(const QStringList& families, int pixels, QFont::Weight weight)
{
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    // Inter would turn the x of "1920x1080" into a multiplication sign.
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

} // namespace

QFont text(int pixels, QFont::Weight weight)
{
    return font({u"Inter"_s, u"Noto Sans"_s, u"DejaVu Sans"_s}, pixels, weight);
}

QFont mono(int pixels, QFont::Weight weight)
{
    return font({u"JetBrains Mono"_s, u"DejaVu Sans Mono"_s}, pixels, weight);
}

QFont caps()
{
    constexpr double spacing = 0.7;
    QFont font = text(badge, QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    return font;
}

QLabel* label(const QString& text, int pixels, QFont::Weight weight, Ink ink, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setFont(Type::text(pixels, weight));
    label->setTextFormat(Qt::PlainText);
    // The style sheet has the colour of each ink.
    constexpr const char* names[] = {"text1", "text2", "text3"};
    label->setProperty("ink", QString::fromLatin1(names[static_cast<int>(ink)]));
    return label;
}

void draw(QPainter& painter, const QRect& rect, const QString& text, const QFont& font,
          const QColor& color, Qt::Alignment alignment, Qt::TextElideMode elide)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, elide, rect.width()));
}

} // namespace vantroque::Type
