#include "Export/StillFrame.h"
#include "Framing/FrameShape.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/OffscreenDrawing.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/StillOverlay.h"

#include <QImageReader>

#include <optional>

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
    constexpr int mostMegabytes = 2000;
    QImageReader::setAllocationLimit(mostMegabytes);
    std::optional<OffscreenDrawing> drawing;
    if (!overlay.isEmpty())
        drawing.emplace();
    return target.write(TRY(StillFrame::image(frame.media.url, frame.seconds,
                                              FrameShape::of(*frame.media.video), overlay, name)));
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
