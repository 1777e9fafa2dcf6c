#include "Base/Timecode.h"
#include "Probe/Prober.h"
#include "Tools/FrameExporter.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

Result<void> writeStill(const Arguments& arguments)
{
    if (arguments.files().size() != 1 || !arguments.has("at"))
        return failure(u"still takes one file and --at TIME"_s);
    const std::string& file = arguments.files().front();
    TRY(OutputTarget::of(arguments, {file}));
    const FileUrl url = FileUrl::fromPath(file);
    const auto media = TRY(Prober::probe(url));
    if (!media.video)
        return failure(url.fileName() + u": there is no picture in it"_s);
    const QString typed = QString::fromStdString(arguments.value("at", {}));
    const auto time = Timecode::parse(typed, media.video->nominalFrameRate);
    if (!time)
        return failure(u"\"%1\" is no time: seconds, hh:mm:ss or hh:mm:ss:ff"_s.arg(typed));
    const std::string beside =
        url.path().parent_path()
        / (url.path().stem().native() + " " + time->fileSafeText().toStdString() + ".png");
    const auto target = TRY(OutputTarget::of(arguments, {file}, beside));
    // A pipe or device has no extension that would tell the format.
    const std::string format = target.isFile() ? target.name() : "still.png";
    // Frames count from the first that is shown, as those of all findings do.
    const double start = Prober::pictureStart(url, media.video->specifier());
    return target.write(TRY(FrameExporter::image(url, start + time->seconds(), format)));
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
