#include "Views/GuideFilms.h"

#include "Support/Media.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace vantroque::GuideFilms {

using namespace Qt::StringLiterals;
using Path = std::filesystem::path;

namespace {

constexpr int framesPerSecond = 25;
/// The picture moves by a pixel a frame over the drawing, so that no frame equals another.
constexpr int room = 400;

struct Title {
    std::string text;
    int size = 0;
    std::string place; ///< As `drawtext` takes it.
    int from = 0;      ///< Seconds, as `to`.
    int to = 0;
};

struct Film {
    std::string name;
    QSize size;
    int seconds = 0;
    std::vector<Title> titles;
    std::string volume;
    std::string more; ///< Filters for the picture, each with a comma in front.
};

/// Dawn over hills.
void paintView(QPainter& painter, const QSize& size)
{
    const double width = size.width();
    const double height = size.height();
    QLinearGradient sky(0, 0, 0, 0.7 * height);
    sky.setColorAt(0, QColor(38, 52, 92));
    sky.setColorAt(0.55, QColor(170, 112, 112));
    sky.setColorAt(1, QColor(222, 166, 106));
    painter.fillRect(QRect({}, size), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(226, 204, 164));
    painter.drawEllipse(QPointF(0.3 * width, 0.56 * height), 0.07 * height, 0.07 * height);
    for (int i = 0; i < 3; ++i) {
        QPolygonF hills{QPointF(0, height)};
        for (double x = 0; x <= width; x += 8)
            hills << QPointF(x,
                             (0.6 + 0.06 * i) * height
                                 + 0.03 * height * std::sin(4.5 * (i + 1) * x / width + 2.1 * i));
        hills << QPointF(width, height);
        painter.setBrush(QColor(118 - 30 * i, 78 - 18 * i, 92 - 20 * i));
        painter.drawPolygon(hills);
    }
}

void paintSteam(QPainter& painter, const QPointF& from, double length)
{
    painter.setBrush(Qt::NoBrush);
    for (int i = -1; i <= 1; ++i) {
        QPainterPath steam(from + QPointF(0.22 * length * i, 0));
        const QPointF foot = steam.currentPosition();
        steam.cubicTo(foot + QPointF(0.25 * length, -0.35 * length),
                      foot + QPointF(-0.25 * length, -0.65 * length),
                      foot + QPointF(0.1 * length, -length));
        painter.setPen(QPen(QColor(230, 225, 220, 60), 0.07 * length, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(steam);
    }
    painter.setPen(Qt::NoPen);
}

/// A cup on a table.
void paintCup(QPainter& painter, const QSize& size)
{
    const double unit = 0.01 * std::min(size.width(), size.height());
    const QPointF top(0.66 * size.width(), 0.62 * size.height());
    const double table = top.y() + 17 * unit;
    QLinearGradient wood(0, table, 0, size.height());
    wood.setColorAt(0, QColor(112, 70, 44));
    wood.setColorAt(1, QColor(58, 34, 24));
    painter.fillRect(QRectF(0, table, size.width(), size.height() - table), wood);
    painter.setBrush(QColor(30, 18, 14, 130));
    painter.drawEllipse(top + QPointF(0, 24 * unit), 26 * unit, 4.5 * unit);
    painter.setBrush(QColor(206, 196, 182));
    painter.drawEllipse(top + QPointF(0, 23 * unit), 24 * unit, 4 * unit);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(214, 206, 194), 2.6 * unit));
    painter.drawEllipse(top + QPointF(17 * unit, 9 * unit), 6 * unit, 6.5 * unit);
    painter.setPen(Qt::NoPen);
    QLinearGradient china(top.x() - 17 * unit, 0, top.x() + 17 * unit, 0);
    china.setColorAt(0, QColor(226, 218, 206));
    china.setColorAt(0.6, QColor(206, 196, 182));
    china.setColorAt(1, QColor(150, 138, 126));
    QPainterPath body(top + QPointF(-17 * unit, 0));
    body.cubicTo(top + QPointF(-16 * unit, 18 * unit), top + QPointF(-9 * unit, 23 * unit),
                 top + QPointF(0, 23 * unit));
    body.cubicTo(top + QPointF(9 * unit, 23 * unit), top + QPointF(16 * unit, 18 * unit),
                 top + QPointF(17 * unit, 0));
    painter.setBrush(china);
    painter.drawPath(body);
    painter.setBrush(QColor(224, 216, 204));
    painter.drawEllipse(top, 17 * unit, 4.6 * unit);
    painter.setBrush(QColor(64, 36, 22));
    painter.drawEllipse(top + QPointF(0, 0.6 * unit), 15 * unit, 3.6 * unit);
    paintSteam(painter, top - QPointF(0, 3 * unit), 20 * unit);
}

void paint(const Path& file, const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintView(painter, size);
    paintCup(painter, size);
    painter.end();
    image.save(QString::fromStdString(file.native()));
}

std::string written(const Title& title)
{
    return ",drawtext=font=Inter:text='" + title.text + "':fontsize=" + std::to_string(title.size)
           + ":fontcolor=0xE6E2DA:" + title.place + ":enable='between(t,"
           + std::to_string(title.from) + "," + std::to_string(title.to) + ")'";
}

std::string picture(const Film& film)
{
    std::string filter = "[0:v]crop=" + std::to_string(film.size.width()) + ":"
                         + std::to_string(film.size.height())
                         + ":n:0:exact=1,scale=out_color_matrix=bt709:out_range=tv,format=yuv420p";
    for (const Title& title : film.titles)
        filter += written(title);
    return filter + film.more + "[v]";
}

/// A chord that breathes, with a beat, left and right not quite alike.
std::string music(const Film& film)
{
    const auto side = [](const std::string& phase) {
        return "0.16*(sin(1382*t)+0.8*sin(1742*t)+0.6*sin(2073*t))*(0.7+0.3*sin(1.3*t+" + phase
               + "))+0.5*sin(380*t)*exp(-9*mod(t,0.6))+0.5*(random(" + phase
               + ")-0.5)*exp(-34*mod(t+0.3,0.6))";
    };
    return "aevalsrc='" + side("0") + "|" + side("1")
           + "':s=48000:d=" + std::to_string(film.seconds) + ",volume=" + film.volume;
}

void encode(const Film& film, const Path& path)
{
    const Path drawing = path.string() + ".png";
    paint(drawing, film.size + QSize(room, 0));
    Media::ffmpeg({"-loop",
                   "1",
                   "-framerate",
                   std::to_string(framesPerSecond),
                   "-i",
                   drawing.native(),
                   "-f",
                   "lavfi",
                   "-i",
                   music(film),
                   "-filter_complex",
                   picture(film),
                   "-map",
                   "[v]",
                   "-map",
                   "1:a",
                   "-t",
                   std::to_string(film.seconds),
                   "-c:v",
                   "libx264",
                   "-preset",
                   "veryfast",
                   "-b:v",
                   "20M",
                   "-minrate",
                   "20M",
                   "-maxrate",
                   "20M",
                   "-bufsize",
                   "10M",
                   "-x264-params",
                   "nal-hrd=cbr",
                   "-color_range",
                   "tv",
                   "-colorspace",
                   "bt709",
                   "-color_primaries",
                   "bt709",
                   "-color_trc",
                   "bt709",
                   "-c:a",
                   "aac",
                   "-b:a",
                   "256k",
                   "-ac",
                   "2",
                   "-movflags",
                   "+faststart",
                   path.native()});
    std::filesystem::remove(drawing);
}

FileUrl made(const Film& film)
{
    return FileUrl::fromPath(
        Media::make(film.name, {"1", picture(film), music(film), std::to_string(film.seconds)},
                    [&](const Path& path) { encode(film, path); }));
}

Film wide(std::string name, std::string volume, std::string offer, std::string more)
{
    return {.name = std::move(name),
            .size = {1920, 1080},
            .seconds = 12,
            .titles = {{"Slow roast", 120, "x=200:y=170", 1, 5},
                       {"Northlight", 130, "x=200:y=250", 7, 12},
                       {"Offer ends 30 June", 44, std::move(offer), 8, 12}},
            .volume = std::move(volume),
            .more = std::move(more)};
}

} // namespace

FileUrl faulty()
{
    return made(wide("Northlight_SlowRoast_12s_16x9_v07.mp4", "0.5dB", "x=70:y=1030",
                     ",drawbox=c=black:t=fill:enable='between(t,6,6.3)'"));
}

FileUrl mended()
{
    return made(wide("Northlight_SlowRoast_12s_16x9_v08.mp4", "-9.4dB", "x=204:y=430", ""));
}

FileUrl vertical()
{
    return made({.name = "Northlight_SlowRoast_8s_9x16_v05.mp4",
                 .size = {1080, 1920},
                 .seconds = 8,
                 .titles = {{"Slow roast", 110, "x=130:y=380", 1, 4},
                            {"Northlight", 130, "x=130:y=420", 5, 8},
                            {"Offer ends 30 June", 54, "x=134:y=620", 5, 8}},
                 .volume = "-9.4dB",
                 .more = {}});
}

FileUrl square()
{
    return made({.name = "Northlight_SlowRoast_6s_1x1_v02.mp4",
                 .size = {1080, 1080},
                 .seconds = 6,
                 .titles = {{"Northlight", 120, "x=120:y=180", 3, 6}},
                 .volume = "0.5dB",
                 .more = {}});
}

FileUrl cutOff()
{
    return FileUrl::fromPath(
        Media::make("Northlight_cutdown_export.mov", {"1"}, [](const Path& path) {
            Media::ffmpeg({"-f", "lavfi", "-i", "testsrc2=duration=2", "-f", "mov", path.native()});
            std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
        }));
}

} // namespace vantroque::GuideFilms
