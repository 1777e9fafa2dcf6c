#include "Draw/FramePainter.h"
#include "Framing/FrameShape.h"
#include "Tools/FrameExporter.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/OffscreenDrawing.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/StillOverlay.h"

#include <QBuffer>
#include <QImageReader>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The file that a still is written to when the call names none: beside the media, by its time.
std::string nameBeside(const ChosenFrame& frame)
{
    const auto& path = frame.media.url.path();
    return path.parent_path()
           / (path.stem().native() + " " + frame.time.fileSafeText().toStdString() + ".png");
}

/// The frame in the shape in which it is shown, with all of the overlay on it.
Result<QByteArray> drawnOn(const ChosenFrame& frame, const Overlay& overlay,
                           const std::filesystem::path& name)
{
    constexpr int mostMegabytes = 2000;
    const OffscreenDrawing drawing;
    QImageReader::setAllocationLimit(mostMegabytes);
    const QImage picture = QImage::fromData(
        TRY(FrameExporter::image(frame.media.url, frame.seconds, "still.png")), "PNG");
    const QSize shown(FrameShape::of(*frame.media.video).squareWidth(), picture.height());
    const QImage drawn = FramePainter::burnIn(picture, overlay, shown);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const QByteArray format = QByteArray::fromStdString(name.extension().native()).mid(1);
    if (drawn.isNull())
        return failure(u"this frame is too large to be drawn on"_s);
    if (!drawn.save(&buffer, format.constData()))
        return failure(u"a still that is drawn on is a PNG or JPEG file"_s);
    return bytes;
}

Result<void> writeStill(const Arguments& arguments)
{
    std::vector<std::string> inputs = arguments.files();
    if (arguments.has("captions"))
        inputs.push_back(arguments.value("captions", {}));
    TRY(OutputTarget::of(arguments, inputs));
    const auto frame = TRY(ChosenFrame::of(arguments, u"still"_s));
    const auto target = TRY(OutputTarget::of(arguments, inputs, nameBeside(frame)));
    // A pipe or device has no extension that would tell the format.
    const std::string name = target.isFile() ? target.name() : "still.png";
    const Overlay overlay = TRY(stillOverlay(arguments, frame));
    if (overlay.isEmpty())
        return target.write(TRY(FrameExporter::image(frame.media.url, frame.seconds, name)));
    return target.write(TRY(drawnOn(frame, overlay, name)));
}

} // namespace

ExitStatus still(const Arguments& arguments)
{
    const auto written = writeStill(arguments);
    if (written)
        return ExitStatus::passed;
    Output::complain(written.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque
