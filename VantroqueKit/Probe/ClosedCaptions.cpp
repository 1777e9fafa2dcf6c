#include "Base/Numbers.h"
#include "Probe/Prober.h"
#include "Tools/FFTool.h"

#include <QStringList>

namespace vantroque::Prober {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

const QString frames = u"%+#%1"_s.arg(captionFramesAtHead);
/// Seconds. A file that takes longer over a few frames is made to.
constexpr double longestSearch = 60;

/// ffprobe's closed_captions field is not filled in by this kind of probe, the frames' side data
/// is.
bool showsCaptions(const fs::path& ffprobe, const FileUrl& url, const std::string& stream,
                   const QString& intervals, FFTool::Shortage* shortage)
{
    bool found = false;
    std::string tail; // so that words cut in two by the end of a chunk are found
    FFTool::Observer observer;
    observer.keepStdout = false;
    observer.stdout = [&](std::string_view chunk) {
        static constexpr std::string_view sideData =
            R"("side_data_type": "ATSC A53 Part 4 Closed Captions")";
        tail.append(chunk);
        found = found || tail.find(sideData) != tail.npos;
        if (tail.size() >= sideData.size())
            tail.erase(0, tail.size() - sideData.size() + 1);
    };
    const auto ran =
        FFTool::run(ffprobe,
                    {"-v", "error", "-print_format", "json", "-show_frames", "-read_intervals",
                     intervals.toStdString(), "-select_streams", stream, url.path().native()},
                    {.allowFailure = true,
                     .timeout = longestSearch,
                     .observer = observer,
                     .shortage = shortage});
    return ran && found;
}

} // namespace

bool hasClosedCaptions(const fs::path& ffprobe, const FileUrl& url, double duration,
                       const std::string& stream, FFTool::Shortage* shortage)
{
    if (showsCaptions(ffprobe, url, stream, frames, shortage))
        return true;
    QStringList later;
    for (const double share : {0.2, 0.4, 0.6, 0.8})
        later << Numbers::fixed(duration * share, 3) + frames;
    return duration > 0 && showsCaptions(ffprobe, url, stream, later.join(u','), shortage);
}

} // namespace vantroque::Prober
