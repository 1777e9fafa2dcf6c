#include "VantroquePlatform/Playback/DecoderEngine.h"

#include "Base/Numbers.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace vantroque {

namespace {

constexpr std::size_t fewestSlots = 3;
/// Years of film at any rate; what lies beyond is no number of a frame.
constexpr std::int64_t mostFrames = std::int64_t{1} << 40U;

bool isNumber(std::int64_t frame)
{
    return frame >= 0 && frame < mostFrames;
}

PictureLayout layoutOf(const PlayProtocol::Told& told)
{
    return {told.width, told.height, told.sampleBits};
}

BiPlanarPicture pictureIn(const PictureLayout& layout, const std::uint8_t* bytes)
{
    const auto stride = static_cast<std::ptrdiff_t>(layout.stride());
    return {layout.width, layout.height, layout.sampleBits,
            bytes,        stride,        bytes + layout.lumaBytes(),
            stride};
}

} // namespace

DecoderEngine::DecoderEngine(const PlaybackSource& source) : DecoderEngine(source, Settings())
{
}

DecoderEngine::DecoderEngine(PlaybackSource source, Settings settings)
    : m_source(std::move(source)), m_settings(std::move(settings)), m_sound(m_settings.sound)
{
    m_watch.setInterval(m_settings.pingEvery);
    QObject::connect(&m_watch, &QTimer::timeout, &m_context, [this] { watch(); });
    m_change.setSingleShot(true);
    QObject::connect(&m_change, &QTimer::timeout, &m_context, [this] {
        if (stateChanged)
            stateChanged();
    });
    start();
}

DecoderEngine::~DecoderEngine() = default;

void DecoderEngine::start()
{
    auto process = DecoderProcess::start(m_settings.program, m_source);
    if (!process)
        return fail(process.error().description);
    m_process = *std::move(process);
    m_notifier = std::make_unique<QSocketNotifier>(m_process->socket(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context,
                     [this] { readAll(); });
    m_hasOpened = m_hasAnswered = m_pingIsOut = false;
    m_unanswered = m_withoutProgress = 0;
    m_watch.start();
}

void DecoderEngine::change(State state)
{
    m_state = state;
    m_change.start(0); // Never from within a call of the owner.
}

void DecoderEngine::fail(const QString& problem)
{
    m_problem = problem;
    m_watch.stop();
    end();
    m_sound.stop();
    change(State::failed);
}

void DecoderEngine::end()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // It may be what calls this.
    }
    m_process.reset();
}

void DecoderEngine::die(const QString& problem)
{
    end();
    m_shelf.clear();
    m_memory.reset();
    if (m_plan)
        m_plan->forget();
    const std::chrono::milliseconds soon = m_settings.soon;
    const bool isSecond = m_lastDeath.isValid() && !m_lastDeath.hasExpired(soon.count());
    if (isSecond)
        return fail(problem);
    m_lastDeath.start();
    start();
}

void DecoderEngine::readAll()
{
    constexpr int mostAtOnce = 200; // So that the window answers meanwhile.
    const QPointer<QSocketNotifier> reading = m_notifier.get();
    for (int i = 0; i < mostAtOnce; ++i) {
        Told told;
        const auto received = m_process->receive(told);
        if (received == DecoderProcess::Received::nothing)
            return;
        if (received == DecoderProcess::Received::broken)
            return die(QStringLiteral("the decoder has ended"));
        const QPointer<QObject> alive = &m_context;
        const bool isTrue = take(told);
        if (!alive || m_notifier.get() != reading)
            return;
        if (!isTrue)
            return die(QStringLiteral("the decoder broke the rules"));
    }
}

bool DecoderEngine::isOfAWant(const Told& told) const
{
    return m_hasOpened && told.token > 0 && told.token <= m_want;
}

bool DecoderEngine::take(const Told& told)
{
    if (m_plan && told.group > 0)
        m_plan->setLongestGroup(told.group);
    switch (told.kind) {
    case Told::Kind::opened: return takeOpened(told);
    case Told::Kind::failed:
        if (m_hasOpened)
            return false;
        fail(QString::fromUtf8(told.words.data()));
        return true;
    case Told::Kind::frame: return takeFrame(told);
    case Told::Kind::extended: return takeExtended(told);
    case Told::Kind::end:
        if (!isOfAWant(told) || !isNumber(told.first) || !isNumber(told.last)
            || told.last < told.first)
            return false;
        takeEnd(told);
        return true;
    case Told::Kind::done:
        if (!isOfAWant(told))
            return false;
        if (told.token == m_want) {
            m_plan->finished();
            fill();
        }
        return true;
    case Told::Kind::pong: return takePong(told);
    }
    return false;
}

bool DecoderEngine::takeOpened(const Told& told)
{
    const PictureLayout layout = layoutOf(told);
    if (m_hasOpened || !layout.isPossible() || told.quarterTurns < 0 || told.quarterTurns > 3
        || told.isFlipped < 0 || told.isFlipped > 1)
        return false;
    if (fewestSlots * layout.bytes() > PlaybackSource::mostMemory) {
        fail(QStringLiteral("the picture is too large"));
        return true;
    }
    const std::size_t slots =
        std::clamp(m_source.memory / layout.bytes(), fewestSlots, m_settings.mostSlots);
    auto memory = SlotMemory::make(layout.bytes(), static_cast<std::uint32_t>(slots));
    if (!memory) {
        fail(memory.error().description);
        return true;
    }
    m_hasOpened = true;
    m_memory = *std::move(memory);
    m_orientation = {.isFlipped = told.isFlipped == 1, .quarterTurns = told.quarterTurns};
    m_plan.emplace(m_source.rate, static_cast<int>(slots));
    m_plan->setLongestGroup(told.group);
    if (m_lastFrame)
        m_plan->setLastFrame(*m_lastFrame);
    send({.kind = Order::Kind::slots,
          .slot = m_memory->slots(),
          .first = static_cast<std::int64_t>(m_memory->slotBytes())},
         m_memory->descriptor());
    if (m_state == State::opening)
        change(State::ready);
    if (const auto heard = m_sound.seconds())
        startSound(*heard); // A device that has gone away is left alone.
    m_plan->aim(m_frame, m_rate);
    fill();
    return true;
}

bool DecoderEngine::takeFrame(const Told& told)
{
    const PictureLayout layout = layoutOf(told);
    if (!isOfAWant(told) || !isNumber(told.first) || told.last != told.first || !layout.isPossible()
        || layout.bytes() > m_memory->slotBytes())
        return false;
    auto pixels = m_memory->take(told.slot);
    if (!pixels)
        return false;
    const auto* const bytes = m_memory->bytesOf(told.slot);
    m_shelf.put(std::make_shared<PlayedFrame>(
        PlayedFrame{told.first, pictureIn(layout, bytes), std::move(pixels)}));
    if (told.token == m_want) {
        m_plan->received(told.first, told.first);
        m_extendable = told.first;
    }
    const QPointer<QObject> alive = &m_context;
    if (frameArrived)
        frameArrived(told.first);
    if (alive)
        makeRoom();
    return true;
}

bool DecoderEngine::takeExtended(const Told& told)
{
    if (!isOfAWant(told) || !isNumber(told.first) || !isNumber(told.last)
        || told.last <= told.first)
        return false;
    if (told.token != m_want)
        return true;
    // Each frame once, as long as it is the newest.
    if (told.first != std::exchange(m_extendable, -1))
        return false;
    m_shelf.extend(told.first, told.last);
    m_plan->received(told.first, told.last);
    if (frameArrived && told.first < m_frame && m_frame <= told.last)
        frameArrived(m_frame);
    return true;
}

void DecoderEngine::takeEnd(const Told& told)
{
    m_shelf.extend(told.first, told.last);
    m_plan->setLastFrame(told.last);
    if (std::exchange(m_lastFrame, told.last) != told.last && frameArrived)
        frameArrived(told.last);
}

bool DecoderEngine::takePong(const Told& told)
{
    if (told.token != m_ping || !std::exchange(m_pingIsOut, false))
        return false;
    m_unanswered = 0;
    m_hasAnswered = true;
    const bool waitsForRoom = m_memory && m_memory->ofDecoder() == 0;
    const bool isGettingOn = told.progress != std::exchange(m_progress, told.progress);
    m_withoutProgress = isGettingOn || waitsForRoom ? 0 : m_withoutProgress + 1;
    return m_withoutProgress < m_settings.answersOfHung;
}

void DecoderEngine::watch()
{
    if (m_hasOpened && !m_plan->isWaiting()) {
        m_watch.stop();
        m_unanswered = m_withoutProgress = 0;
        return;
    }
    // To be loaded from a slow disk takes longer than to answer.
    constexpr int start = 10;
    const int most = m_settings.silentPings * (m_hasOpened || m_hasAnswered ? 1 : start);
    if (m_pingIsOut && ++m_unanswered >= most)
        return die(QStringLiteral("the decoder does not answer"));
    if (!std::exchange(m_pingIsOut, true))
        send({.kind = Order::Kind::ping, .token = ++m_ping});
    if (m_hasOpened && m_process)
        makeRoom(); // Frames may have been let go elsewhere.
}

void DecoderEngine::send(const Order& order, const FileDescriptor& along)
{
    // One that no longer takes orders is found by the watch, or by the end of its socket.
    if (m_process)
        static_cast<void>(m_process->send(order, along));
}

void DecoderEngine::makeRoom()
{
    const auto giveBack = [&] {
        for (const std::uint32_t slot : m_memory->returned())
            send({.kind = Order::Kind::giveSlot, .slot = slot});
    };
    giveBack();
    while (m_plan->isWaiting() && m_memory->ofDecoder() < m_plan->beingFilled()
           && m_shelf.dropCostliest([&](std::int64_t number) { return m_plan->costOf(number); }))
        giveBack();
}

void DecoderEngine::fill()
{
    if (!m_hasOpened)
        return;
    if (const auto request = m_plan->next(m_shelf)) {
        m_extendable = -1;
        send({.kind = Order::Kind::want,
              .token = ++m_want,
              .first = request->first,
              .last = request->last,
              .stride = request->stride,
              .isPassing = request->isPassing ? 1U : 0U,
              .isBackward = request->isBackward ? 1U : 0U});
        if (!m_watch.isActive())
            m_watch.start();
    }
    makeRoom();
}

void DecoderEngine::aim(std::int64_t frame, double rate)
{
    m_frame = std::clamp<std::int64_t>(frame, 0, mostFrames - 1);
    m_rate = rate;
    if (m_state == State::failed || !m_plan)
        return;
    m_plan->aim(m_frame, m_rate);
    fill();
}

std::shared_ptr<const PlayedFrame> DecoderEngine::frame(std::int64_t number) const
{
    return m_shelf.frame(number);
}

std::shared_ptr<const PlayedFrame> DecoderEngine::nearest(std::int64_t number,
                                                          std::int64_t reach) const
{
    return m_shelf.nearest(number, reach);
}

bool DecoderEngine::canPlay(double rate) const
{
    return m_state == State::ready && m_plan && m_plan->canPlay(rate);
}

void DecoderEngine::startSound(double seconds)
{
    auto feed = SoundFeed::make(seconds);
    if (!feed || m_state == State::failed)
        return;
    m_sound.play(*std::move(feed));
    sendSound();
}

void DecoderEngine::sendSound()
{
    const auto feed = m_sound.feed();
    if (!feed || !m_hasOpened)
        return;
    constexpr double nanoseconds = 1e9;
    send({.kind = Order::Kind::playSound,
          .first = Numbers::roundedToInt(feed->startSeconds() * nanoseconds)},
         feed->descriptor());
}

double DecoderEngine::takenSoundSeconds() const
{
    const auto feed = m_sound.feed();
    return feed ? feed->takenSeconds() : 0;
}

void DecoderEngine::stopSound()
{
    m_sound.stop();
    if (m_hasOpened)
        send({.kind = Order::Kind::stopSound});
}

} // namespace vantroque
