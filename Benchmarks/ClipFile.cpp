#include "ClipFile.h"

#include <QProcess>

namespace vantroque::TextQuality {

using namespace Qt::StringLiterals;

void writeClip(const QString& path, const std::function<QImage(int)>& frame)
{
    QProcess process;
    process.start(u"ffmpeg"_s, {u"-hide_banner"_s,
                                u"-loglevel"_s,
                                u"error"_s,
                                u"-y"_s,
                                u"-f"_s,
                                u"rawvideo"_s,
                                u"-pix_fmt"_s,
                                u"bgra"_s,
                                u"-s"_s,
                                u"%1x%2"_s.arg(clipSize.width()).arg(clipSize.height()),
                                u"-r"_s,
                                QString::number(clipRate),
                                u"-i"_s,
                                u"-"_s,
                                u"-c:v"_s,
                                u"libx264"_s,
                                u"-preset"_s,
                                u"veryfast"_s,
                                u"-crf"_s,
                                u"23"_s,
                                u"-pix_fmt"_s,
                                u"yuv420p"_s,
                                path});
    for (int i = 0; i < clipFrames; ++i) {
        const QImage picture = frame(i);
        process.write(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
        process.waitForBytesWritten(-1);
    }
    process.closeWriteChannel();
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("ffmpeg: %s", process.readAllStandardError().constData());
}

} // namespace vantroque::TextQuality
