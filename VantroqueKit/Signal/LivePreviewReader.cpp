#include "Signal/LivePreviewReader.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>

namespace vantroque {

LivePreviewReader::LivePreviewReader(AnalysisProgress& progress, const RawPicture& picture,
                                     const std::filesystem::path& fifo)
    : m_progress(progress),
      m_picture(picture),
      m_fifo(::open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
{
}

void LivePreviewReader::read(const std::stop_token& stop)
{
    constexpr int pollMilliseconds = 20;
    std::string picture(m_picture.bytes(), '\0');
    std::size_t filled = 0;
    std::int64_t index = 0;
    while (!picture.empty()) {
        pollfd ready{m_fifo.get(), POLLIN, 0};
        const int events = ::poll(&ready, 1, pollMilliseconds);
        if (events == 0 && stop.stop_requested())
            return;
        if (events <= 0)
            continue;
        const ssize_t count =
            ::read(m_fifo.get(), picture.data() + filled, picture.size() - filled);
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (count <= 0)
            return;
        filled += static_cast<std::size_t>(count);
        if (filled < picture.size())
            continue;
        filled = 0;
        if (auto frame = m_picture.frame(picture))
            m_progress.setPreview(*std::move(frame), static_cast<double>(index++) / m_picture.rate);
    }
}

} // namespace vantroque
