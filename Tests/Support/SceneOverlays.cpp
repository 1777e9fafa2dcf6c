#include "Support/SceneChance.h"
#include "Support/SceneWords.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <algorithm>
#include <cmath>

// Supers and legal lines.

namespace vantroque::TextScenes {

using namespace Qt::StringLiterals;

namespace {

const QStringList& shortTexts(Set set)
{
    static const QStringList tuning = u"SALE|Now $9.99|50% OFF|New|Order now|TONIGHT|Only 2.49|"
                                      "Since 1984|Crunchy|Big Deal|FREE|Feel it"_s.split(u'|');
    static const QStringList heldOut = u"HURRY|From $49|25% LESS|Try it|Buy today|MONDAY|Just 1.99|"
                                       "Est. 1972|Refresh|Good Food|LIVE|Go further"_s.split(u'|');
    return set == Set::tuning ? tuning : heldOut;
}

const QStringList& legalTexts(Set set)
{
    static const QStringList tuning =
        u"Offer valid through 12/31 at participating dealers only. See store for details.|"
        "Professional driver on closed course. Do not attempt.|"
        "Not available in all states. Terms and conditions apply.|"
        "Paid actors. Results may vary from person to person.|"
        "Based on EPA estimates; actual mileage will vary with options and conditions.|"
        "Copyright 2024 Northfield Foods Company. All rights reserved."_s.split(u'|');
    static const QStringList heldOut =
        u"Dramatization. Use only as directed and read the label before use.|"
        "Subject to credit approval. Rates from 4.9% for qualified buyers.|"
        "Screen images simulated. Subscription required after 3 months.|"
        "Void where prohibited. Must be 18 or older to enter. No purchase necessary.|"
        "Compared with the leading national brand, sales data January to June.|"
        "While supplies last. Excludes tax, title, license and delivery fees."_s.split(u'|');
    return set == Set::tuning ? tuning : heldOut;
}

struct Light {
    double mean = 0;
    double spread = 0;
};

Light lightUnder(const QImage& picture, const QRectF& box)
{
    const QRect part = box.toAlignedRect() & picture.rect();
    double sum = 0;
    double squares = 0;
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); y += 2)
        for (int x = part.left(); x <= part.right(); x += 2, ++count) {
            const int gray = qGray(picture.pixel(x, y));
            sum += gray;
            squares += gray * gray;
        }
    const double mean = sum / std::max(count, 1);
    return {mean, std::sqrt(std::max(squares / std::max(count, 1) - mean * mean, 0.0))};
}

QRectF inkOf(const QImage& layer)
{
    constexpr int visible = 96;
    QRect box;
    for (int y = 0; y < layer.height(); ++y)
        for (int x = 0; x < layer.width(); ++x)
            if (qAlpha(layer.pixel(x, y)) >= visible)
                box |= QRect(x, y, 1, 1);
    return QRectF(box);
}

QColor textColor(const Light& light, Random& random)
{
    static const QList<QColor> bright{Qt::white,
                                      Qt::white,
                                      Qt::white,
                                      QColor(255, 230, 60),
                                      QColor(235, 240, 250),
                                      QColor(255, 200, 120)};
    static const QList<QColor> dim{Qt::black, Qt::black, QColor(20, 30, 70), QColor(110, 10, 15)};
    return light.mean < 135 ? pick(bright, random) : pick(dim, random);
}

/// Draws one line and says where its ink is, in pixels.
QRectF drawLine(QImage& image, const QString& text, const QFont& font, QPointF base,
                const QImage& behind, Random& random)
{
    QPainterPath path;
    path.addText(base, font, text);
    const QRectF box = path.boundingRect();
    const Light light = lightUnder(behind, box);
    const QColor color = textColor(light, random);
    const double contrast = std::abs(qGray(color.rgb()) - light.mean);
    const QColor opposite = qGray(color.rgb()) > 128 ? Qt::black : Qt::white;
    const double size = font.pixelSize();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    // What a person could not read without it gets a plate, an outline or a shadow.
    const bool hard = contrast < 100 || light.spread > 45;
    const int treatment = hard ? between(random, 0, 2) : between(random, 0, 7);
    if (treatment == 0) {
        QColor plate = opposite;
        plate.setAlpha(between(random, 170, 230));
        painter.fillRect(box.adjusted(-size / 3, -size / 4, size / 3, size / 4), plate);
    } else if (treatment == 1) {
        painter.strokePath(path, QPen(opposite, std::max(size / 9, 2.0), Qt::SolidLine,
                                      Qt::RoundCap, Qt::RoundJoin));
    } else if (treatment == 2) {
        QColor shadow = opposite;
        shadow.setAlpha(200);
        painter.strokePath(
            path.translated(size / 20, size / 20),
            QPen(shadow, std::max(size / 7, 2.0), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    painter.fillPath(path, color);
    QImage alone(image.size(), QImage::Format_ARGB32_Premultiplied);
    alone.fill(Qt::transparent);
    QPainter lonely(&alone);
    lonely.setRenderHint(QPainter::Antialiasing);
    lonely.fillPath(path, color);
    lonely.end();
    const QRect part = box.toAlignedRect().adjusted(-2, -2, 2, 2) & image.rect();
    return inkOf(alone.copy(part)).translated(part.topLeft());
}

/// The largest font of at most that size in which the text fits.
QFont fitted(const Face& face, bool italic, double size, const QString& text, double width)
{
    QFont font(face.family);
    font.setWeight(static_cast<QFont::Weight>(face.weight));
    font.setItalic(italic);
    font.setPixelSize(std::max(static_cast<int>(std::lround(size)), 6));
    while (font.pixelSize() > 8 && QFontMetricsF(font).horizontalAdvance(text) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

/// One block of text that is being laid out from a place downwards.
class Layout {
public:
    Layout(Overlay& overlay, const QImage& behind, Random& random)
        : m_overlay(overlay), m_behind(behind), m_random(random)
    {
    }

    void add(Kind kind, const QString& text, const Face& face, double size, double top)
    {
        const QSize picture = m_behind.size();
        const bool italic = kind != Kind::legal && chance(m_random, 0.1);
        const QFont font =
            fitted(face, italic, size * picture.height(), text, 0.86 * picture.width());
        const double width = QFontMetricsF(font).horizontalAdvance(text);
        const double free = picture.width() - width;
        const double left =
            kind == Kind::legal || chance(m_random, 0.5)
                ? free / 2
                : between(m_random, 0.05 * picture.width(),
                          std::max(free - 0.05 * picture.width(), 0.06 * picture.width()));
        const QRectF ink =
            drawLine(m_overlay.image, text, font, {left, top * picture.height() + font.pixelSize()},
                     m_behind, m_random);
        m_overlay.lines.push_back(
            {kind, text, static_cast<double>(font.pixelSize()) / picture.height(),
             QRectF(ink.x() / picture.width(), ink.y() / picture.height(),
                    ink.width() / picture.width(), ink.height() / picture.height())});
    }

private:
    Overlay& m_overlay;
    const QImage& m_behind;
    Random& m_random;
};

} // namespace

Overlay overlay(Set set, const Wanted& wanted, const Background& background, QSize size,
                Random& random)
{
    Overlay overlay{QImage(size, QImage::Format_ARGB32_Premultiplied), {}};
    overlay.image.fill(Qt::transparent);
    const QImage behind = background.frame(size, 0);
    const Face face = pick(faces(set), random);
    Layout layout(overlay, behind, random);
    if (wanted.super) {
        const double top = between(random, 0.08, 0.3);
        const double height = between(random, 0.032, 0.10);
        layout.add(Kind::super, phrase(set, random), face, height, top);
    }
    if (wanted.shortSuper) {
        const double top = between(random, 0.42, 0.6);
        const double height = between(random, 0.032, 0.10);
        layout.add(Kind::shortSuper, pick(shortTexts(set), random), face, height, top);
    }
    const double legalSize = between(random, wanted.smallestLegal, wanted.largestLegal);
    const Face legalFace = pick(faces(set), random);
    for (int i = 0; i < wanted.legalLines; ++i)
        layout.add(Kind::legal, pick(legalTexts(set), random), legalFace, legalSize,
                   0.93 - 1.5 * legalSize * (wanted.legalLines - i));
    return overlay;
}

} // namespace vantroque::TextScenes
