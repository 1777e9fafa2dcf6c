#include "Analysis/BesideDecode.h"

#include "Base/ThreadPriority.h"
#include "Probe/Prober.h"
#include "Signal/SignalAnalyzer.h"
#include "Text/SlateReader.h"
#include "Tools/ToolContext.h"

#include <algorithm>
#include <system_error>

namespace vantroque {

namespace {

/// Does the work beside the decode when there is room; else, and when it gets no thread, as soon as
/// it is asked for, after the decode.
template<typename Work>
auto started(bool hasRoom, Work work)
{
    if (hasRoom) {
        try {
            return std::async(std::launch::async, [work, context = ToolContext()] {
                ThreadPriority::giveWay();
                const ToolContext::Scope scope(context);
                return work();
            });
        } catch (const std::system_error&) {
            // It is done later.
        }
    }
    return std::async(std::launch::deferred, work);
}

} // namespace

BesideDecode::BesideDecode(const MediaInfo& media, const std::vector<Profile>& profiles,
                           RecognizerPool* recognizers)
{
    if (!media.video)
        return;
    const bool hasRoom = SignalAnalyzer::leavesRoom(*media.video);
    if (!media.video->closedCaptions)
        m_captions = started(hasRoom, [url = media.url, video = *media.video] {
            return Prober::hasClosedCaptions(url, video);
        });
    if (const auto slate = slateSeconds(profiles); slate && recognizers != nullptr)
        m_slate = started(hasRoom, [media, seconds = *slate, recognizers] {
            return slateLines(media, seconds, 0, *recognizers);
        });
}

Result<void> BesideDecode::addTo(MediaInfo& media)
{
    if (m_captions.valid())
        media.video->closedCaptions = TRY(m_captions.get());
    // It was looked for where it is in a picture that begins with the file.
    if (m_slate.valid() && media.signal && media.signal->pictureStart.value_or(0) == 0)
        media.signal->slateTextLines = m_slate.get();
    return {};
}

std::optional<double> slateSeconds(const std::vector<Profile>& profiles)
{
    std::optional<double> longest;
    for (const Profile& profile : profiles)
        if (const auto& content = profile.content; content && content->slateSeconds)
            longest = std::max(longest.value_or(0), *content->slateSeconds);
    return longest;
}

std::vector<QString> slateLines(const MediaInfo& media, double seconds, double pictureStart,
                                RecognizerPool& recognizers)
{
    if (!media.video)
        return {};
    // A picture that ends before the slate's middle has no such frame.
    const double end = std::max(media.durationSeconds, media.video->durationSeconds);
    if (end > 0 && seconds / 2 > end)
        return {};
    const auto read = SlateReader::readText(media.url, seconds / 2 + pictureStart, recognizers);
    const QStringList lines = read.value_or(QStringList());
    return {lines.begin(), lines.end()};
}

} // namespace vantroque
