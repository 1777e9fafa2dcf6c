#include "Export/FramesAhead.h"

#include "Base/Cancellation.h"
#include "Probe/Prober.h"
#include "Tools/FrameExporter.h"

#include <algorithm>
#include <thread>

namespace vantroque {

namespace {

QImage frameAt(const FileUrl& media, double seconds, int width)
{
    const auto png = FrameExporter::frameData(media, seconds, width);
    return png ? QImage::fromData(*png) : QImage();
}

std::size_t workers()
{
    constexpr unsigned most = 4; // each decodes on several threads
    return std::clamp(std::thread::hardware_concurrency(), 1U, most);
}

/// Starts it now where a thread can be had, and otherwise when somebody asks for it.
template<typename Work>
auto started(Work work)
{
    return std::async(std::launch::async | std::launch::deferred,
                      [work = std::move(work), token = Cancellation::token()] {
                          const Cancellation::Scope scope(token);
                          return work();
                      });
}

} // namespace

FramesAhead::FramesAhead(std::vector<FrameWish> wishes,
                         std::map<std::filesystem::path, std::string> streams)
    : m_wishes(std::move(wishes)), m_streams(std::move(streams))
{
}

QImage FramesAhead::take()
{
    while (m_started < m_wishes.size() && m_coming.size() < workers())
        startNext();
    if (m_coming.empty())
        return {};
    std::future<QImage> next = std::move(m_coming.front());
    m_coming.pop_front();
    QImage frame = next.get();
    // While the page is drawn.
    if (m_started < m_wishes.size())
        startNext();
    return frame;
}

void FramesAhead::startNext()
{
    const FrameWish& wish = m_wishes[m_started++];
    m_coming.push_back(started([wish, start = pictureStart(wish.media)] {
        return wish.grant(
            [&](double seconds) { return frameAt(wish.media, start.get() + seconds, wish.width); });
    }));
}

std::shared_future<double> FramesAhead::pictureStart(const FileUrl& media)
{
    const auto [start, isNew] = m_starts.try_emplace(media.path());
    if (isNew) {
        const auto stream = m_streams.find(media.path());
        start->second = started([media, name = stream == m_streams.end() ? std::string("v:0")
                                                                         : stream->second] {
                            return Prober::pictureStart(media, name);
                        }).share();
    }
    return start->second;
}

} // namespace vantroque
