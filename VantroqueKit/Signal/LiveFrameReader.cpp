#include "Signal/LiveFrameReader.h"

#include <algorithm>
#include <array>

namespace vantroque {

namespace {

/// The first value at which that share of all samples is reached.
int percentile(const std::array<std::size_t, 256>& histogram, std::size_t count, double share)
{
    const auto wanted = static_cast<std::size_t>(share * static_cast<double>(count));
    std::size_t seen = 0;
    for (std::size_t value = 0; value < histogram.size(); ++value) {
        seen += histogram[value];
        if (seen >= wanted)
            return static_cast<int>(value);
    }
    return 255;
}

} // namespace

void LiveFrameReader::feed(std::string_view data)
{
    std::unique_lock lock(m_mutex);
    m_pending.append(data);
    std::size_t used = 0;
    while (m_picture.bytes() > 0 && m_pending.size() - used >= m_picture.bytes()) {
        auto frame = m_picture.frame(std::string_view(m_pending).substr(used, m_picture.bytes()));
        used += m_picture.bytes();
        const double time = static_cast<double>(m_index++) / m_picture.rate;
        lock.unlock();
        if (frame)
            m_progress.append(sample(*std::move(frame), time));
        lock.lock();
    }
    m_pending.erase(0, used);
}

void LiveFrameReader::restart()
{
    const std::scoped_lock lock(m_mutex);
    m_pending.clear();
    m_index = 0;
}

AnalysisProgress::FrameSample LiveFrameReader::sample(ScopeFrame frame, double time)
{
    std::array<std::size_t, 256> histogram{};
    std::size_t sum = 0;
    int lowest = 255;
    int highest = 0;
    for (const std::uint8_t value : frame.y) {
        ++histogram[value];
        sum += value;
        lowest = std::min<int>(lowest, value);
        highest = std::max<int>(highest, value);
    }
    const std::size_t count = frame.y.size();
    const int mean = count > 0 ? static_cast<int>(sum / count) : 0;
    const auto percent = [&](int value) {
        const auto code = static_cast<float>(value);
        return frame.fullRange ? code * 100.0F / 255.0F : (code - 16.0F) * 100.0F / 219.0F;
    };
    AnalysisProgress::FrameSample result;
    result.time = time;
    result.yMinPercent = percent(lowest);
    result.yMaxPercent = percent(highest);
    result.yMeanPercent = percent(mean);
    result.yLowPercent = percent(percentile(histogram, count, 0.05));
    result.yHighPercent = percent(percentile(histogram, count, 0.95));
    result.frame = std::make_shared<const ScopeFrame>(std::move(frame));
    return result;
}

} // namespace vantroque
