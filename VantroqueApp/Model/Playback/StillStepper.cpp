#include "VantroqueApp/Model/Playback/StillStepper.h"

#include "Base/Text.h"
#include "Tools/FrameExporter.h"
#include "VantroqueApp/Model/Background/UntilStopped.h"

namespace vantroque {

StillStepper::StillStepper(const PlayedFile& file, int wide)
    : m_times(std::make_shared<const FrameTimes>(file)), m_width(wide)
{
}

StillStepper::~StillStepper()
{
    m_end.request_stop();
}

void StillStepper::aim(std::int64_t frame, double)
{
    if (std::exchange(m_asked, frame) == frame)
        return;
    m_stills.run(untilStopped(m_end.get_token(),
                              [times = m_times, frame, wide = m_width] {
                                  const auto png = FrameExporter::frameData(
                                      times->file().url, times->secondsOf(frame), wide);
                                  return png ? QImage::fromData(*png, "PNG") : QImage();
                              }),
                 [this, frame](const QImage& picture) {
                     m_isWithoutPicture = picture.isNull() && !shown();
                     if (!picture.isNull())
                         show(frame, picture);
                     else if (m_isWithoutPicture)
                         Q_EMIT readyChanged();
                 });
}

/// ffmpeg brings the samples to video range, whatever the file is tagged.
FrameSource::Sampling StillStepper::sampling(QSize size) const
{
    if (!shown())
        return nullptr;
    return untilStopped(
        m_end.get_token(),
        [times = m_times, frame = shown()->frame, size]() -> std::optional<ScopeFrame> {
            const PlayedFile& file = times->file();
            const auto bytes = FrameExporter::rawFrame(file.url, times->secondsOf(frame),
                                                       size.width(), size.height());
            if (!bytes)
                return std::nullopt;
            return ScopeFrame::fromYuv444(Text::view(*bytes), size.width(), size.height(), false,
                                          file.video.matrix.value_or(ColorMatrix::bt709));
        });
}

} // namespace vantroque
