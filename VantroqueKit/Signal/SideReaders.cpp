#include "Signal/SideReaders.h"

#include "Signal/FlashBranch.h"

#include <sys/stat.h>

namespace vantroque {

namespace {

/// The reader of a FIFO that is made for it; none when that is not possible.
template<typename Reader, typename... Arguments>
void open(std::optional<Reader>& reader, const std::filesystem::path& fifo,
          Arguments&&... arguments)
{
    if (::mkfifo(fifo.c_str(), 0600) != 0)
        return;
    reader.emplace(std::forward<Arguments>(arguments)..., fifo);
    if (!reader->isOpen())
        reader.reset();
}

} // namespace

SideReaders::SideReaders(SignalAnalyzer::SignalPlan& plan, const MediaInfo& source,
                         const SignalAnalyzer::Options& options, bool hasScratch)
    : m_source(source),
      m_plan(plan),
      m_isSoundAsked(plan.scansSound()),
      m_areFlashesAsked(plan.hasFlashes())
{
    if (m_isSoundAsked && hasScratch)
        open(m_sound, plan.soundFifo(), std::max(source.audio->measuredChannels(), 1),
             source.audio->sampleRate);
    if (m_areFlashesAsked && hasScratch)
        open(m_flashes, plan.flashFifo(), FlashBranch::sources(*source.video, options.flashes));
    if (!m_sound)
        plan.leaveOutSoundScan();
    if (!m_flashes)
        plan.leaveOutFlashes();
}

void SideReaders::restart()
{
    if (m_sound)
        m_sound->restart();
    if (m_flashes)
        m_flashes->restart();
}

void SideReaders::leaveOutOf(SignalLog& log)
{
    if (m_sound)
        log.leaveOut(static_cast<std::uint64_t>(m_sound->samples())
                     * static_cast<std::uint64_t>(m_source.audio->measuredChannels())
                     * sizeof(float));
}

void SideReaders::addTo(SignalInfo& info, const SignalLog& log)
{
    if (m_isSoundAsked) {
        info.soundScanAttempted = true;
        info.soundScan = soundScan(log, info.soundStart.value_or(0));
    }
    if (m_areFlashesAsked)
        info.flashes = m_flashes && m_plan.hasFlashes()
                           ? m_flashes->finish(std::ssize(log.lumaDifferences()))
                           : std::vector<FlashInfo>();
}

/// What was found, when all that was decoded was looked at: the levels are measured of the same
/// samples, in windows.
std::optional<SoundScan> SideReaders::soundScan(const SignalLog& log, double soundStart)
{
    constexpr std::int64_t window = 4'800;
    const auto levels = log.levelWindows().find(1);
    if (!m_sound || levels == log.levelWindows().end())
        return std::nullopt;
    const std::int64_t decoded = window * std::ssize(levels->second.rms);
    const std::int64_t missing = decoded - m_sound->samples();
    if (missing < 0 || missing >= window)
        return std::nullopt;
    return m_sound->finish(soundStart);
}

} // namespace vantroque
