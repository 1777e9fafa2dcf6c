#include "Progress/AnalysisProgress.h"

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;
using std::chrono::duration;

namespace {

/// The fraction keeps moving while nothing happens.
constexpr std::chrono::milliseconds heartbeatInterval{100};
constexpr duration<double> shortestDelay{0.001};

} // namespace

AnalysisProgress::AnalysisProgress(OnUpdate onUpdate, Options options)
    : m_options(std::move(options)),
      m_onUpdate(std::move(onUpdate)),
      m_timekeeper([this](const std::stop_token& stop) { keepTime(stop); })
{
}

AnalysisProgress::~AnalysisProgress() = default;

QString AnalysisProgress::label(Stage stage)
{
    static const std::array labels{u"Waiting"_s,
                                   u"Reading the file"_s,
                                   u"Measuring picture and sound"_s,
                                   u"Reading on-screen text"_s,
                                   u"Reading the slate"_s,
                                   u"Measuring the 2-pop"_s,
                                   u"Checking against the platforms"_s,
                                   u"Done"_s};
    return labels.at(static_cast<std::size_t>(stage));
}

AnalysisProgress::Snapshot AnalysisProgress::snapshot()
{
    const std::scoped_lock lock(m_mutex);
    refreshFraction();
    return m_state;
}

void AnalysisProgress::setOnUpdate(OnUpdate onUpdate)
{
    const std::scoped_lock lock(m_mutex);
    m_onUpdate = std::move(onUpdate);
}

template<typename Change>
void AnalysisProgress::change(bool force, Change change)
{
    std::unique_lock lock(m_mutex);
    change();
    notify(lock, force);
}

void AnalysisProgress::set(Stage stage)
{
    std::unique_lock lock(m_mutex);
    const bool changed = m_state.stage != stage;
    m_state.stage = stage;
    if (stage == Stage::probing) {
        m_timing.started = m_timing.started.value_or(m_options.now());
        m_heartbeat = true;
        m_wake.notify_all();
    } else if (stage == Stage::decoding) {
        m_timing.decodeStarted = m_timing.decodeStarted.value_or(m_options.now());
    } else if (stage == Stage::done) {
        m_heartbeat = false;
    }
    if (changed)
        notify(lock, true);
}

void AnalysisProgress::set(const MediaInfo& probed)
{
    change(true, [&] {
        m_state.duration = m_timing.duration = probed.durationSeconds;
        m_state.pictureWidth = probed.video ? probed.video->width : 0;
        m_state.pictureHeight = probed.video ? probed.video->height : 0;
        m_state.rotation = probed.video ? probed.video->rotation.value_or(0) : 0;
        m_state.pixelAspect = probed.video ? probed.video->pixelAspect() : 1;
        m_state.summaryLine = probed.summaryLine();
        m_state.channelCount = probed.audio ? probed.audio->measuredChannels() : 0;
        m_state.channelLayout = probed.audio ? probed.audio->measuredLayout() : std::nullopt;
    });
}

void AnalysisProgress::setDuration(double seconds)
{
    change(false, [&] { m_state.duration = m_timing.duration = seconds; });
}

void AnalysisProgress::setPreview(ScopeFrame frame, double time)
{
    auto shared = std::make_shared<const ScopeFrame>(std::move(frame));
    change(false, [&] {
        m_state.preview = std::move(shared);
        m_state.previewTime = time;
        reach(time);
    });
}

void AnalysisProgress::noteMediaTime(double seconds)
{
    std::unique_lock lock(m_mutex);
    if (seconds <= m_state.mediaSeconds)
        return;
    reach(seconds);
    notify(lock, false);
}

void AnalysisProgress::append(FrameSample sample)
{
    constexpr float darkest = 10; // percent
    change(false, [&] {
        reach(sample.time);
        if (sample.yHighPercent > darkest)
            noteLight(sample.time);
        m_state.frames.push_back(std::move(sample));
    });
}

void AnalysisProgress::append(AudioSample sample)
{
    change(false, [&] {
        reach(sample.time);
        m_state.audio.push_back(std::move(sample));
    });
}

void AnalysisProgress::append(LiveEvent event)
{
    change(true, [&] {
        if (event.kind == LiveEvent::Kind::blackStart) {
            event.end = m_light.firstAfter(event.time);
            if (!event.end)
                m_openBlack.push_back(m_state.events.size());
        }
        m_state.events.push_back(event);
    });
}

void AnalysisProgress::expectText(int frames, int step)
{
    const std::scoped_lock lock(m_mutex);
    m_timing.textExpected = frames;
    m_timing.textStep = std::max(step, 1);
}

void AnalysisProgress::noteTextFrames(int read, int extracted, std::optional<double> seconds,
                                      int lines)
{
    change(false, [&] {
        m_state.textFramesRead = m_timing.textFramesRead = std::max(m_timing.textFramesRead, read);
        m_state.textFramesExtracted = m_timing.textFramesExtracted =
            std::max(m_timing.textFramesExtracted, extracted);
        if (seconds) {
            m_timing.textReadSeconds += *seconds;
            ++m_timing.textReads;
        }
        m_timing.graphicsSeen += std::max(lines - m_timing.lastLines, 0);
        m_timing.lastLines = lines;
    });
}

void AnalysisProgress::startTextEdges(int units)
{
    change(false, [&] {
        m_timing.edgesStarted = m_options.now();
        m_timing.edgeUnitsTotal = std::max(units, 1);
        m_timing.edgeUnitsDone = 0;
    });
}

void AnalysisProgress::noteTextEdgeUnit()
{
    change(false, [&] {
        ++m_timing.edgeUnitsDone;
        m_timing.edgeUnitsTotal = std::max(m_timing.edgeUnitsTotal, m_timing.edgeUnitsDone);
    });
}

void AnalysisProgress::finishTextEdges()
{
    change(false, [&] { m_timing.edgeUnitsDone = m_timing.edgeUnitsTotal; });
}

void AnalysisProgress::reach(double mediaSeconds)
{
    m_timing.mediaSeconds = std::max(m_timing.mediaSeconds, mediaSeconds);
    m_state.mediaSeconds = m_timing.mediaSeconds;
}

void AnalysisProgress::noteLight(double time)
{
    if (!m_light.note(time))
        return;
    std::erase_if(m_openBlack, [&](std::size_t index) {
        LiveEvent black = m_state.events[index];
        if (time <= black.time)
            return false;
        black.end = time;
        m_state.events.replace(index, black);
        return true;
    });
}

void AnalysisProgress::refreshFraction()
{
    const TimePoint now = m_options.now();
    m_state.fraction = ProgressEstimate::refreshed(m_state.fraction, now, m_state.stage, m_timing);
    m_state.secondsRemaining = ProgressEstimate::estimateRemaining(now, m_state.stage, m_timing);
}

/// Tells the listener now, or leaves it to the timekeeper when the last time was too short ago.
void AnalysisProgress::notify(std::unique_lock<std::mutex>& lock, bool force)
{
    if (!m_onUpdate)
        return;
    if (!force && m_lastNotify && m_options.now() - *m_lastNotify < m_options.minimumInterval) {
        if (!std::exchange(m_pendingNotify, true))
            m_wake.notify_all();
        return;
    }
    deliver(lock);
}

/// Comes with the lock held and leaves it released.
void AnalysisProgress::deliver(std::unique_lock<std::mutex>& lock)
{
    m_lastNotify = m_options.now();
    m_pendingNotify = false;
    if (!m_onUpdate)
        return;
    refreshFraction();
    const Snapshot state = m_state;
    const OnUpdate listener = m_onUpdate;
    lock.unlock();
    listener(state);
}

void AnalysisProgress::keepTime(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        const auto due = [this] { return m_pendingNotify || m_heartbeat; };
        if (!m_wake.wait(lock, stop, due))
            return;
        const bool late = m_pendingNotify;
        duration<double> delay = heartbeatInterval;
        if (late && m_lastNotify)
            delay = std::max<duration<double>>(
                m_options.minimumInterval - (m_options.now() - *m_lastNotify), shortestDelay);
        const auto woken = [&] { return m_pendingNotify != late; };
        if (m_wake.wait_for(lock, stop, delay, woken))
            continue; // a delivery fell due, or was made, in the meantime
        if (stop.stop_requested())
            return;
        if (m_pendingNotify)
            deliver(lock);
        else if (m_heartbeat)
            notify(lock, false);
        if (!lock.owns_lock())
            lock.lock();
    }
}

} // namespace vantroque
