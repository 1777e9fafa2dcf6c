#include "Support/TextScenes.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace vantroque::TextScenes {

using namespace Qt::StringLiterals;

namespace {

int between(Random& random, int low, int high)
{
    return std::uniform_int_distribution(low, high)(random);
}

double between(Random& random, double low, double high)
{
    return std::uniform_real_distribution(low, high)(random);
}

bool chance(Random& random, double likelihood)
{
    return between(random, 0.0, 1.0) < likelihood;
}

template<typename List>
auto pick(const List& list, Random& random)
{
    return list[between(random, 0, static_cast<int>(std::size(list)) - 1)];
}

// Backgrounds.

QColor natural(Random& random, int low = 20, int high = 220)
{
    return QColor::fromHsv(between(random, 0, 359), between(random, 20, 160),
                           between(random, low, high));
}

QImage canvas(QSize size)
{
    return QImage(size, QImage::Format_RGB32);
}

/// Smooth noise of several sizes; `shape` bends each of them.
QImage noise(QSize size, Random& random, const std::function<double(double)>& shape)
{
    std::vector<QImage> octaves;
    for (int cells = 6; cells <= 384; cells *= 2) {
        QImage octave(std::max(cells * size.width() / size.height(), 2), cells,
                      QImage::Format_Grayscale8);
        for (int y = 0; y < octave.height(); ++y)
            for (int x = 0; x < octave.width(); ++x)
                octave.scanLine(y)[x] = static_cast<uchar>(between(random, 0, 255));
        octaves.push_back(octave.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .convertToFormat(QImage::Format_Grayscale8));
    }
    const QColor dark = natural(random, 0, 90);
    const QColor light = natural(random, 120, 255);
    QImage image = canvas(size);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            double sum = 0;
            double weight = 1;
            double total = 0;
            for (const QImage& octave : octaves) {
                sum += weight * shape(octave.constScanLine(y)[x] / 255.0);
                total += weight;
                weight *= 0.62;
            }
            const double t = std::clamp((sum / total - 0.3) / 0.4, 0.0, 1.0);
            const auto mix = [t](int a, int b) { return static_cast<int>(a + t * (b - a)); };
            image.setPixel(x, y,
                           qRgb(mix(dark.red(), light.red()), mix(dark.green(), light.green()),
                                mix(dark.blue(), light.blue())));
        }
    return image;
}

QImage gradient(QSize size, Random& random)
{
    QImage image = canvas(size);
    QLinearGradient colors(0, 0, size.width() * between(random, 0.0, 1.0), size.height());
    for (const double place : {0.0, 0.5, 1.0})
        colors.setColorAt(place, natural(random));
    QPainter(&image).fillRect(image.rect(), colors);
    return image;
}

QImage flat(QSize size, Random& random)
{
    QImage image = canvas(size);
    image.fill(natural(random, 0, 255));
    return image;
}

/// Iterates z = z * z + c; `julia` moves z over the picture and not c.
QImage fractal(QSize size, Random& random, bool julia)
{
    const double left = julia ? -1.2 : between(random, -1.5, -0.8);
    const double top = julia ? -0.8 : between(random, -0.4, 0.0);
    const double width = julia ? 2.4 : between(random, 0.3, 1.0);
    const int hue = between(random, 0, 359);
    QImage image = canvas(size);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const double px = left + width * x / size.width();
            const double py = top + width * y / size.width();
            const double cx = julia ? -0.79 : px;
            const double cy = julia ? 0.15 : py;
            double zx = julia ? px : 0;
            double zy = julia ? py : 0;
            int count = 0;
            for (; count < 64 && zx * zx + zy * zy < 4; ++count) {
                const double next = zx * zx - zy * zy + cx;
                zy = 2 * zx * zy + cy;
                zx = next;
            }
            image.setPixel(
                x, y,
                QColor::fromHsv((hue + 3 * count) % 360, 140, std::min(30 + 4 * count, 230)).rgb());
        }
    return image;
}

/// Cells that a rule makes from the three above them: small marks everywhere.
QImage automaton(QSize size, Random& random, int rule)
{
    const int cell = between(random, 5, 12);
    const int columns = size.width() / cell + 1;
    const int rows = size.height() / cell + 1;
    const QColor on = natural(random, 90, 230);
    const QColor off = natural(random, 10, 120);
    QImage image(columns, rows, QImage::Format_RGB32);
    std::vector<int> state(columns);
    for (int& each : state)
        each = between(random, 0, 1);
    for (int y = 0; y < rows; ++y) {
        std::vector<int> next(columns);
        for (int x = 0; x < columns; ++x) {
            image.setPixel(x, y, (state[x] != 0 ? on : off).rgb());
            const int above =
                4 * state[(x + columns - 1) % columns] + 2 * state[x] + state[(x + 1) % columns];
            next[x] = rule >> above & 1;
        }
        state = next;
    }
    return image.scaled(columns * cell, rows * cell).copy(QRect({}, size));
}

/// Fills a picture with many small drawings.
QImage scattered(QSize size, Random& random, int count, QColor ground,
                 const std::function<void(QPainter&)>& draw)
{
    QImage image = canvas(size);
    image.fill(ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < count; ++i) {
        painter.save();
        painter.translate(between(random, 0, size.width()), between(random, 0, size.height()));
        draw(painter);
        painter.restore();
    }
    return image;
}

QImage shapes(QSize size, Random& random)
{
    return scattered(size, random, 400, natural(random), [&](QPainter& painter) {
        painter.setBrush(natural(random, 10, 240));
        painter.rotate(between(random, 0, 359));
        const QRectF box(0, 0, between(random, 10, 260), between(random, 6, 160));
        if (chance(random, 0.5))
            painter.drawRect(box);
        else
            painter.drawEllipse(box);
    });
}

QImage foliage(QSize size, Random& random)
{
    const int hue = between(random, 60, 140);
    return scattered(size, random, 9000, QColor::fromHsv(hue, 160, 40), [&](QPainter& painter) {
        painter.setBrush(QColor::fromHsv(hue + between(random, -15, 15), between(random, 80, 200),
                                         between(random, 30, 190)));
        painter.rotate(between(random, 0, 359));
        painter.drawEllipse(QRectF(0, 0, between(random, 15, 60), between(random, 5, 20)));
    });
}

QImage wood(QSize size, Random& random)
{
    QImage grain = noise(QSize(size.width() / 16, size.height() * 2), random,
                         [](double value) { return value; });
    grain = grain.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter painter(&grain);
    painter.setOpacity(0.55);
    painter.fillRect(grain.rect(), QColor(205, 170, 125));
    painter.setOpacity(1);
    for (int y = 0; y < size.height(); y += between(random, 90, 180))
        painter.fillRect(0, y, size.width(), 4, QColor(70, 45, 25));
    return grain;
}

QImage crowd(QSize size, Random& random)
{
    return scattered(size, random, 1600, QColor(60, 60, 70), [&](QPainter& painter) {
        const int radius = between(random, 12, 30);
        painter.setBrush(natural(random, 20, 230));
        painter.drawRoundedRect(-radius * 2, radius, radius * 4, radius * 5, radius, radius);
        painter.setBrush(QColor::fromHsv(between(random, 10, 30), between(random, 60, 150),
                                         between(random, 90, 240)));
        painter.drawEllipse(QPoint(0, 0), radius, radius + 4);
        painter.setBrush(QColor::fromHsv(between(random, 15, 35), 120, between(random, 20, 120)));
        painter.drawChord(QRect(-radius, -radius - 4, 2 * radius, 2 * radius), 0, 180 * 16);
    });
}

QImage grass(QSize size, Random& random)
{
    return scattered(size, random, 12000, QColor(50, 70, 25), [&](QPainter& painter) {
        painter.setPen(QPen(QColor::fromHsv(between(random, 50, 110), between(random, 90, 200),
                                            between(random, 50, 220)),
                            between(random, 2, 5)));
        painter.drawLine(0, 0, between(random, -25, 25), -between(random, 30, 110));
    });
}

QImage city(QSize size, Random& random)
{
    QImage image = gradient(size, random);
    QPainter painter(&image);
    for (int x = 0; x < size.width();) {
        const int width = between(random, 60, 200);
        const int height = between(random, size.height() / 4, size.height());
        painter.fillRect(x, size.height() - height, width, height, natural(random, 20, 150));
        const QColor window = natural(random, 120, 250);
        const int pitch = between(random, 14, 34);
        for (int wx = x + 8; wx < x + width - pitch / 2; wx += pitch)
            for (int wy = size.height() - height + 8; wy < size.height(); wy += pitch + 6)
                if (chance(random, 0.6))
                    painter.fillRect(wx, wy, pitch / 2, pitch * 2 / 3, window);
        x += width;
    }
    return image;
}

struct Texture {
    QString name;
    std::function<QImage(QSize, Random&)> make;
};

const std::vector<Texture>& textures(Set set)
{
    static const std::vector<Texture> tuning{
        {u"flat"_s, flat},
        {u"clouds"_s,
         [](QSize size, Random& random) {
             return noise(size, random, [](double value) { return value; });
         }},
        {u"mandelbrot"_s, [](QSize size, Random& random) { return fractal(size, random, false); }},
        {u"rule 30"_s, [](QSize size, Random& random) { return automaton(size, random, 30); }},
        {u"shapes"_s, shapes},
        {u"foliage"_s, foliage},
        {u"wood"_s, wood},
    };
    static const std::vector<Texture> heldOut{
        {u"gradient"_s, gradient},
        {u"ridges"_s,
         [](QSize size, Random& random) {
             return noise(size, random, [](double value) { return std::abs(2 * value - 1); });
         }},
        {u"julia"_s, [](QSize size, Random& random) { return fractal(size, random, true); }},
        {u"rule 110"_s, [](QSize size, Random& random) { return automaton(size, random, 110); }},
        {u"crowd"_s, crowd},
        {u"grass"_s, grass},
        {u"city"_s, city},
    };
    return set == Set::tuning ? tuning : heldOut;
}

// Text.

struct Face {
    QString family;
    int weight = QFont::Normal;
};

const std::vector<Face>& faces(Set set)
{
    static const std::vector<Face> tuning{
        {u"DejaVu Sans"_s},     {u"DejaVu Sans"_s, QFont::Bold}, {u"DejaVu Serif"_s},
        {u"Liberation Sans"_s}, {u"Liberation Serif"_s},         {u"Liberation Sans Narrow"_s},
        {u"Roboto"_s},          {u"Roboto"_s, QFont::Black},     {u"Roboto Condensed"_s},
    };
    static const std::vector<Face> heldOut{
        {u"Lato"_s},
        {u"Lato"_s, QFont::Bold},
        {u"Lato"_s, QFont::Light},
        {u"Open Sans"_s},
        {u"Open Sans"_s, QFont::Bold},
        {u"Open Sans Condensed"_s, QFont::Bold},
        {u"FreeSans"_s},
        {u"FreeSerif"_s},
        {u"FreeSans"_s, QFont::Bold},
    };
    return set == Set::tuning ? tuning : heldOut;
}

const QStringList& words(Set set)
{
    static const QStringList tuning =
        u"fresh coffee every morning drive home happy save today only best price new season colors "
        "feel the difference made for you family dinner in minutes power that lasts clean energy "
        "better sleep starts here limited offer join us now trusted by millions"_s.split(u' ');
    static const QStringList heldOut =
        u"discover your next adventure with great taste zero sugar call before friday free "
        "delivery this weekend enjoy quality built strong inside every kitchen shop online brand "
        "visit our stores more smiles less work summer sale begins watch live tonight"_s.split(
            u' ');
    return set == Set::tuning ? tuning : heldOut;
}

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

QString phrase(Set set, Random& random)
{
    QStringList chosen;
    for (int i = between(random, 3, 6); i > 0; --i)
        chosen << pick(words(set), random);
    QString text = chosen.join(u' ');
    text[0] = text[0].toUpper();
    return chance(random, 0.35) ? text.toUpper() : text;
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

QByteArray ffmpeg(const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(u"ffmpeg"_s,
                  QStringList{u"-hide_banner"_s, u"-loglevel"_s, u"error"_s, u"-y"_s} + arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(-1);
    if (process.exitCode() != 0)
        qFatal("ffmpeg: %s", process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

/// The pictures as they are after coding for delivery and scaling for the scan.
std::vector<QImage> delivered(const std::vector<QImage>& pictures)
{
    const QTemporaryDir folder;
    const QString clip = folder.filePath(u"clip.mp4"_s);
    QByteArray raw;
    for (const QImage& picture : pictures)
        raw.append(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
    const QSize size = pictures.front().size();
    ffmpeg({u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s, u"bgra"_s, u"-s"_s,
            u"%1x%2"_s.arg(size.width()).arg(size.height()), u"-r"_s, u"25"_s, u"-i"_s, u"-"_s,
            u"-c:v"_s, u"libx264"_s, u"-preset"_s, u"veryfast"_s, u"-crf"_s, u"23"_s, u"-pix_fmt"_s,
            u"yuv420p"_s, clip},
           raw);
    const QSize small =
        size.width() <= 960 ? size : QSize(960, (960 * size.height() / size.width() + 1) / 2 * 2);
    const QByteArray decoded =
        ffmpeg({u"-i"_s, clip, u"-vf"_s, u"scale=%1:%2"_s.arg(small.width()).arg(small.height()),
                u"-f"_s, u"rawvideo"_s, u"-pix_fmt"_s, u"rgb24"_s, u"-"_s});
    std::vector<QImage> images;
    const qsizetype bytes = qsizetype(3) * small.width() * small.height();
    for (qsizetype at = 0; at + bytes <= decoded.size(); at += bytes)
        images.push_back(QImage(reinterpret_cast<const uchar*>(decoded.constData()) + at,
                                small.width(), small.height(), 3 * small.width(),
                                QImage::Format_RGB888)
                             .copy());
    return images;
}

} // namespace

QImage Background::frame(QSize size, int index) const
{
    const QPoint corner = (step * index).toPoint();
    return texture.copy(QRect(corner, size));
}

int backgroundCount(Set set)
{
    return static_cast<int>(textures(set).size());
}

Background background(Set set, int kind, QSize size, bool moves, Random& random)
{
    const Texture& chosen = textures(set)[static_cast<std::size_t>(kind)];
    QImage texture = chosen.make(size * 5 / 4, random);
    // A lens blurs what a computer draws.
    texture =
        texture.scaled(texture.size() * 2 / 3, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .scaled(texture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QPointF step =
        moves ? QPointF(between(random, 8.0, 40.0), between(random, 2.0, 20.0)) : QPointF(0, 0);
    return {chosen.name, texture, step};
}

Overlay overlay(Set set, const Wanted& wanted, const Background& background, QSize size,
                Random& random)
{
    Overlay overlay{QImage(size, QImage::Format_ARGB32_Premultiplied), {}};
    overlay.image.fill(Qt::transparent);
    const QImage behind = background.frame(size, 0);
    const Face face = pick(faces(set), random);
    Layout layout(overlay, behind, random);
    if (wanted.super)
        layout.add(Kind::super, phrase(set, random), face, between(random, 0.032, 0.10),
                   between(random, 0.08, 0.3));
    if (wanted.shortSuper)
        layout.add(Kind::shortSuper, pick(shortTexts(set), random), face,
                   between(random, 0.032, 0.10), between(random, 0.42, 0.6));
    const double legalSize = between(random, 0.0155, 0.025);
    const Face legalFace = pick(faces(set), random);
    for (int i = 0; i < wanted.legalLines; ++i)
        layout.add(Kind::legal, pick(legalTexts(set), random), legalFace, legalSize,
                   0.93 - 1.5 * legalSize * (wanted.legalLines - i));
    return overlay;
}

Scene scene(Set set, int kind, QSize size, bool moves, const Wanted& wanted, int frames,
            Random& random)
{
    const Background behind = background(set, kind, size, moves, random);
    Overlay text = overlay(set, wanted, behind, size, random);
    std::vector<QImage> pictures;
    for (int i = 0; i < frames; ++i) {
        QImage picture = behind.frame(size, i).convertToFormat(QImage::Format_RGB32);
        QPainter(&picture).drawImage(0, 0, text.image);
        pictures.push_back(picture);
    }
    return {behind.name, delivered(pictures), std::move(text.lines)};
}

// Slates.

Slate slate(Set set, Random& random)
{
    static constexpr std::array sizes{QSize(1280, 720), QSize(1920, 1080), QSize(2560, 1440),
                                      QSize(3840, 2160)};
    static constexpr std::array lengths{6, 10, 15, 20, 30, 45, 60, 90, 120};
    const QSize size = pick(sizes, random);
    Slate slate{canvas(size), {}, pick(lengths, random), {}};
    for (int i = 0; i < 4; ++i)
        slate.adID += QChar(u'A' + between(random, 0, 25));
    for (int i = 0; i < 7; ++i)
        slate.adID += QChar(u'0' + between(random, 0, 9));
    slate.adID += u'H';

    const bool light = chance(random, 0.25);
    const int gray = light                 ? between(random, 170, 225)
                     : chance(random, 0.5) ? 0
                                           : between(random, 10, 60);
    slate.image.fill(QColor(gray, gray, gray));
    const Face face = pick(faces(set), random);
    const auto two = [](int number) { return u"%1"_s.arg(number, 2, 10, QChar(u'0')); };
    const QString minutes = QString::number(slate.seconds / 60);
    const QString clock =
        slate.seconds < 60
            ? pick(QStringList{u":"_s + two(slate.seconds), u":"_s + two(slate.seconds),
                               u"0:"_s + two(slate.seconds), u"00:"_s + two(slate.seconds),
                               QString::number(slate.seconds) + u" SEC"_s},
                   random)
            : pick(QStringList{minutes + u":"_s + two(slate.seconds % 60),
                               u"0"_s + minutes + u":"_s + two(slate.seconds % 60),
                               u":"_s + QString::number(slate.seconds)},
                   random);
    slate.length = clock;
    const int place = between(random, 0, 3);
    const QString label =
        pick(QStringList{u"LENGTH"_s, u"DURATION"_s, u"TRT"_s, u"Length"_s}, random);
    QList<std::pair<QString, QString>> fields{
        {pick(QStringList{u"AD-ID"_s, u"ISCI"_s, u"Ad-ID"_s}, random), slate.adID},
        {u"CLIENT"_s, phrase(set, random)},
        {u"TITLE"_s, phrase(set, random)},
        {u"AGENCY"_s, phrase(set, random)},
        {u"DATE"_s, u"03/14/2024"_s},
    };
    if (place <= 1)
        fields.insert(between(random, 1, 5), {label, clock});
    const double height = between(random, 0.022, 0.055) * size.height();
    QFont font(face.family);
    font.setWeight(static_cast<QFont::Weight>(face.weight));
    font.setPixelSize(static_cast<int>(height));
    QPainter painter(&slate.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(light ? Qt::black : QColor(235, 235, 235));
    double y = 0.2 * size.height();
    const bool columns = chance(random, 0.5);
    for (const auto& [name, value] : fields) {
        if (columns) {
            painter.drawText(QPointF(0.12 * size.width(), y), name + u':');
            painter.drawText(QPointF(0.35 * size.width(), y), value);
        } else {
            painter.drawText(QPointF(0.15 * size.width(), y), name + u": "_s + value);
        }
        y += 2.1 * height;
    }
    if (place == 2) // Alone in a corner, larger.
        font.setPixelSize(static_cast<int>(1.6 * height));
    painter.setFont(font);
    if (place == 2)
        painter.drawText(QPointF(0.78 * size.width(), 0.88 * size.height()), clock);
    if (place == 3) // Alone on a line of the list.
        painter.drawText(QPointF(0.15 * size.width(), y), clock);
    return slate;
}

} // namespace vantroque::TextScenes
