#include "Signal/LiveDisplay.h"

#include "Signal/LivePreviewReader.h"

namespace vantroque::SignalAnalyzer {

namespace {

/// One raw frame of the dump. On the way into it ffmpeg brings full-range pictures to video range,
/// so that is what the samples are, whatever the file is tagged.
RawPicture dumpedPicture(const MediaInfo& media, int width, int height, double rate)
{
    RawPicture picture{width, height, rate, false, ColorMatrix::bt709};
    if (media.video)
        picture.matrix = media.video->measuredMatrix().matrix;
    return picture;
}

} // namespace

LiveDisplay::LiveDisplay(AnalysisProgress& progress, const MediaInfo& media, const SignalPlan& plan)
    : m_log(progress, media.audio ? media.audio->measuredChannels() : 0),
      m_frames(progress, dumpedPicture(media, levelsWidth, levelsHeight, plan.levelsRate())),
      m_hasVideo(media.video.has_value())
{
    if (!plan.preview())
        return;
    const auto picture =
        dumpedPicture(media, plan.preview()->width, plan.preview()->height, plan.levelsRate());
    // A decode that is tried a second time writes into the FIFO a second time.
    m_preview =
        std::jthread([&progress, picture, fifo = plan.previewFifo()](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                LivePreviewReader reader(progress, picture, fifo);
                if (!reader.isOpen())
                    return;
                reader.read(stop);
            }
        });
}

FFTool::Observer LiveDisplay::observer()
{
    FFTool::Observer observer;
    observer.wordsLine = [this](std::string_view line) { feedLog(line); };
    if (m_hasVideo)
        observer.output = [this](std::string_view chunk) { m_frames.feed(chunk); };
    return observer;
}

void LiveDisplay::feedLog(std::string_view line)
{
    // What comes first is the file's own tags and a first, empty round of results.
    if (m_headers.holds(line))
        return;
    m_isDecoding = m_isDecoding || line == "Stream mapping:";
    if (m_isDecoding)
        m_log.feed(line);
}

void LiveDisplay::restart()
{
    m_headers = {};
    m_isDecoding = false;
    m_frames.restart();
}

void LiveDisplay::finish()
{
    m_log.flush();
    m_preview.request_stop();
    if (m_preview.joinable())
        m_preview.join();
}

} // namespace vantroque::SignalAnalyzer
