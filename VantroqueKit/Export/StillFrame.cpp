#include "Export/StillFrame.h"

#include "Draw/FramePainter.h"
#include "Tools/FrameExporter.h"

#include <QBuffer>

namespace vantroque::StillFrame {

using namespace Qt::StringLiterals;

Result<QByteArray> image(const FileUrl& media, double seconds, const FrameShape& shape,
                         const Overlay& overlay, const std::filesystem::path& name)
{
    if (overlay.isEmpty())
        return FrameExporter::image(media, seconds, name);
    const QImage picture =
        QImage::fromData(TRY(FrameExporter::image(media, seconds, "still.png")), "PNG");
    const QSize shown(shape.squareWidth(), picture.height());
    const QImage drawn = FramePainter::burnIn(picture, overlay, shown);
    if (drawn.isNull())
        return failure(u"this frame is too large to be drawn on"_s);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const QByteArray format = QByteArray::fromStdString(name.extension().native()).mid(1);
    if (!drawn.save(&buffer, format.constData()))
        return failure(u"a still that is drawn on is a PNG or JPEG file"_s);
    return bytes;
}

} // namespace vantroque::StillFrame
