#include "Support/SceneChance.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>

// What text stands over.

namespace vantroque::TextScenes {

using namespace Qt::StringLiterals;

namespace {

QColor natural(Random& random, int low = 20, int high = 220)
{
    const int value = between(random, low, high);
    const int saturation = between(random, 20, 160);
    return QColor::fromHsv(between(random, 0, 359), saturation, value);
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
        const int y = between(random, 0, size.height());
        painter.translate(between(random, 0, size.width()), y);
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
        const int height = between(random, 6, 160);
        const QRectF box(0, 0, between(random, 10, 260), height);
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
        const int value = between(random, 30, 190);
        const int saturation = between(random, 80, 200);
        painter.setBrush(QColor::fromHsv(hue + between(random, -15, 15), saturation, value));
        painter.rotate(between(random, 0, 359));
        const int height = between(random, 5, 20);
        painter.drawEllipse(QRectF(0, 0, between(random, 15, 60), height));
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
        const int skin = between(random, 90, 240);
        const int saturation = between(random, 60, 150);
        painter.setBrush(QColor::fromHsv(between(random, 10, 30), saturation, skin));
        painter.drawEllipse(QPoint(0, 0), radius, radius + 4);
        const int hair = between(random, 20, 120);
        painter.setBrush(QColor::fromHsv(between(random, 15, 35), 120, hair));
        painter.drawChord(QRect(-radius, -radius - 4, 2 * radius, 2 * radius), 0, 180 * 16);
    });
}

QImage grass(QSize size, Random& random)
{
    return scattered(size, random, 12000, QColor(50, 70, 25), [&](QPainter& painter) {
        const int width = between(random, 2, 5);
        const int value = between(random, 50, 220);
        const int saturation = between(random, 90, 200);
        painter.setPen(QPen(QColor::fromHsv(between(random, 50, 110), saturation, value), width));
        const int height = between(random, 30, 110);
        painter.drawLine(0, 0, between(random, -25, 25), -height);
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
    if (!moves)
        return {chosen.name, texture, {}};
    const double down = between(random, 2.0, 20.0);
    return {chosen.name, texture, QPointF(between(random, 8.0, 40.0), down)};
}

} // namespace vantroque::TextScenes
