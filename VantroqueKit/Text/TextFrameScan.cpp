#include "Text/TextFrameScan.h"

#include "Base/Numbers.h"
#include "Base/ThreadPriority.h"
#include "Text/TextPlacement.h"

#include <cmath>

namespace vantroque {

namespace fs = std::filesystem;

namespace {

bool isThere(const fs::path& file)
{
    std::error_code error;
    return fs::exists(file, error);
}

} // namespace

TextFrameScan::TextFrameScan(SignalAnalyzer::TextFrameRequest request, const MediaInfo& media,
                             RecognizerPool& recognizers, AnalysisProgress* progress)
    : m_request(std::move(request)),
      m_media(media),
      m_recognizers(recognizers),
      m_progress(progress)
{
    const double frames = media.durationSeconds * m_request.sourceRate;
    if (m_progress != nullptr && media.durationSeconds > 0 && m_request.sourceRate > 0)
        m_progress->expectText(
            static_cast<int>(std::min(std::ceil(frames / m_request.step()), 1e9)),
            m_request.step());
}

void TextFrameScan::start()
{
    if (!m_worker.joinable())
        m_worker = std::jthread([this](const std::stop_token& stop) { work(stop); });
}

void TextFrameScan::restart()
{
    m_worker = {}; // ends it after the frame at hand
    m_samples.clear();
    m_whole = 0;
    m_ahead.reset();
    std::error_code ignored;
    for (const auto& frame : fs::directory_iterator(m_request.directory, ignored))
        fs::remove(frame.path(), ignored);
    start();
}

std::optional<std::vector<TextRegion>> TextFrameScan::finish(double pictureStart)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_decodeFinished = true;
    }
    m_wake.notify_all();
    start();
    m_worker.join();
    if (m_samples.empty() || Cancellation::isRequested())
        return std::nullopt;
    if (m_ahead)
        m_ahead->finish();
    return TextPlacementReader::narrowEdges(TextPlacement::track(std::move(m_samples)), m_media,
                                            pictureStart, interval(), m_recognizers, m_progress,
                                            m_ahead ? &*m_ahead : nullptr);
}

void TextFrameScan::work(const std::stop_token& stop)
{
    ThreadPriority::giveWay();
    const ToolContext::Scope scope(m_context);
    const auto recognizer = m_recognizers.take();
    for (int frame = 1; waitFor(frame, stop); ++frame) {
        if (recognizer)
            readFrame(frame, **recognizer);
        // From here on it only takes room: the frames of a film fill many gigabytes.
        std::error_code ignored;
        fs::remove(m_request.path(frame), ignored);
    }
}

/// Until the frame is whole, which the next one proves, or no more will come. Whether it is there.
bool TextFrameScan::waitFor(int frame, const std::stop_token& stop)
{
    constexpr std::chrono::milliseconds pause{40};
    std::unique_lock lock(m_mutex);
    while (!m_decodeFinished && !stop.stop_requested() && !isThere(m_request.path(frame + 1)))
        m_wake.wait_for(lock, stop, pause, [this] { return m_decodeFinished; });
    return !stop.stop_requested() && !Cancellation::isRequested() && isThere(m_request.path(frame));
}

void TextFrameScan::readFrame(int frame, TextRecognizer& recognizer)
{
    const fs::path file = m_request.path(frame);
    const auto started = std::chrono::steady_clock::now();
    TextSample sample{m_request.time(frame), TextPlacementReader::detectBoxes(
                                                 QImage(QString::fromStdString(file.native())),
                                                 recognizer, TextRecognizer::Subject::frame)};
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - started;
    const int lines = static_cast<int>(TextPlacement::mergeLines(sample.boxes).size());
    m_samples.push_back(std::move(sample));
    lookAheadForEdges();
    if (m_progress != nullptr)
        m_progress->noteTextFrames(frame, frame, spent.count(), lines);
}

/// No text goes on over a frame without any, so what stood before one is known whole.
void TextFrameScan::lookAheadForEdges()
{
    if (!m_samples.back().boxes.empty())
        return;
    const auto first = m_samples.begin() + static_cast<std::ptrdiff_t>(m_whole);
    const auto regions = TextPlacement::track({first, m_samples.end()});
    m_whole = m_samples.size();
    if (regions.empty() || m_media.durationSeconds <= 0 || interval() <= 0)
        return;
    if (!m_ahead)
        m_ahead.emplace(m_media, interval(), m_recognizers);
    m_ahead->add(regions);
}

} // namespace vantroque
