#include "Signal/LiveLogReader.h"

#include "Signal/LogText.h"

#include <algorithm>
#include <array>

namespace vantroque {

using LogText::after;

void LiveLogReader::feed(std::string_view line)
{
    if (const auto time = after(line, "pts_time:"))
        feedTime(*time);
    else if (const auto level = after(line, "lavfi.astats."))
        feedLevel(*level);
    else
        feedEvent(line);
}

void LiveLogReader::flush()
{
    const std::scoped_lock lock(m_mutex);
    flushWindowLocked();
}

void LiveLogReader::feedTime(std::string_view text)
{
    const auto time = LogText::number(text);
    if (!time)
        return;
    m_progress.noteMediaTime(*time);
    const std::scoped_lock lock(m_mutex);
    flushWindowLocked();
    m_windowTime = time;
}

void LiveLogReader::feedLevel(std::string_view text)
{
    const auto level = LogText::windowLevel(text);
    if (!level)
        return;
    const std::scoped_lock lock(m_mutex);
    const bool isRms = level->kind == LogText::WindowLevel::Kind::rms;
    (isRms ? m_windowRMS : m_windowPeak)[level->channel] = level->dbfs;
}

void LiveLogReader::feedEvent(std::string_view line)
{
    static constexpr std::array<std::string_view, 6> keys{
        "black_start:", "black_end:",    "silence_start:",
        "silence_end:", "freeze_start:", "freeze_end:"};
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (const auto text = after(line, keys[i])) {
            if (const auto time = LogText::number(*text))
                m_progress.append(AnalysisProgress::LiveEvent{
                    static_cast<AnalysisProgress::LiveEvent::Kind>(i), *time});
            return;
        }
}

void LiveLogReader::flushWindowLocked()
{
    const auto whole = static_cast<std::size_t>(std::max(m_channels, 0));
    if (!m_windowTime || m_windowRMS.size() < whole || m_windowPeak.size() < whole)
        return;
    AnalysisProgress::ChannelLevels levels;
    for (int channel = 1; channel <= m_channels; ++channel) {
        const auto of = [&](const std::map<int, float>& window) {
            const auto found = window.find(channel);
            return found == window.end() ? LogText::silence : found->second;
        };
        levels.rms.push_back(of(m_windowRMS));
        levels.peak.push_back(of(m_windowPeak));
    }
    const double time = *m_windowTime;
    m_windowRMS.clear();
    m_windowPeak.clear();
    m_windowTime.reset();
    m_progress.append(AnalysisProgress::AudioSample{
        time, std::make_shared<const AnalysisProgress::ChannelLevels>(std::move(levels))});
}

} // namespace vantroque
