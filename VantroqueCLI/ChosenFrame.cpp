#include "VantroqueCLI/ChosenFrame.h"

#include "Probe/Prober.h"

namespace vantroque {

using namespace Qt::StringLiterals;

Result<ChosenFrame> ChosenFrame::of(const Arguments& arguments, const QString& command)
{
    if (arguments.files().size() != 1 || !arguments.has("at"))
        return failure(command + u" takes one file and --at TIME"_s);
    const FileUrl url = FileUrl::fromPath(arguments.files().front());
    MediaInfo media = TRY(Prober::probe(url));
    if (!media.video)
        return failure(url.fileName() + u": there is no picture in it"_s);
    const QString typed = QString::fromStdString(arguments.value("at", {}));
    const auto time = Timecode::parse(typed, media.video->nominalFrameRate);
    if (!time)
        return failure(u"\"%1\" is no time: seconds, hh:mm:ss or hh:mm:ss:ff"_s.arg(typed));
    const double start = Prober::pictureStart(url, media.video->specifier());
    return ChosenFrame{std::move(media), *time, start + time->seconds()};
}

} // namespace vantroque
