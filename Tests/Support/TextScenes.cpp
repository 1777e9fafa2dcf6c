#include "Support/TextScenes.h"

#include <QPainter>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace vantroque::TextScenes {

using namespace Qt::StringLiterals;

namespace {

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

} // namespace vantroque::TextScenes
