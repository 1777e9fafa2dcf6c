#include "VantroqueApp/Model/Playback/StillExport.h"

#include "Base/Files.h"
#include "Base/Timecode.h"
#include "Export/StillFrame.h"
#include "VantroqueApp/Model/Background/UntilStopped.h"

namespace vantroque {

using namespace Qt::StringLiterals;

StillExport::StillExport(const PlayedFile& file, Desktop& desktop)
    : m_times(std::make_shared<const FrameTimes>(file)), m_desktop(desktop)
{
}

StillExport::~StillExport()
{
    m_end.request_stop();
}

void StillExport::exportStill(std::int64_t frame, const Overlay& overlay)
{
    const PlayedFile& file = m_times->file();
    const QString time = Timecode(frame, file.workingRate()).fileSafeText();
    Q_EMIT begun();
    const auto target = m_desktop.chooseSaveFile(
        {u"Save Still"_s, file.url, file.url.stem() + u'_' + time + u".png"_s, u"PNG images"_s});
    if (!target)
        return;
    m_tasks.run(
        untilStopped(m_end.get_token(),
                     [times = m_times, frame, overlay, target = *target]() -> Result<void> {
                         return Files::writeAtomically(
                             target.path(),
                             TRY(StillFrame::image(times->file().url, times->secondsOf(frame),
                                                   times->file().shape(), overlay, "still.png")));
                     }),
        [this, target = *target](const Result<void>& written) {
            if (written)
                Q_EMIT saved(target);
            else
                Q_EMIT failed(u"Could not export the still: "_s + written.error().description);
        });
}

} // namespace vantroque
