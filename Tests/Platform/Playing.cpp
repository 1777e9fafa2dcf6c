#include "Platform/Playing.h"

#include "Platform/NumberedClip.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace vantroque {

namespace {

/// Event loops want one, and a test program may have made its own.
void needApplication()
{
    if (QCoreApplication::instance() != nullptr)
        return;
    static int count = 1;
    static std::array<char, 6> name{"tests"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static const QCoreApplication application(count, arguments.data());
}

} // namespace

bool runUntil(const std::function<bool()>& condition)
{
    constexpr std::chrono::seconds patience{30};
    needApplication();
    QTimer deadline;
    bool isLate = false;
    QObject::connect(&deadline, &QTimer::timeout, [&] { isLate = true; });
    deadline.setSingleShot(true);
    deadline.start(patience);
    while (!isLate) {
        if (condition())
            return true;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return false;
}

DecoderEngine::Settings Playing::silent()
{
    needApplication();
    DecoderEngine::Settings settings;
    settings.sound = [](const SoundOutput::Fill&) { return nullptr; };
    return settings;
}

Playing::Playing(const std::filesystem::path& file, double rate, DecoderEngine::Settings settings)
{
    needApplication();
    PlaybackSource source;
    source.url = FileUrl::fromPath(file);
    source.rate = FrameRate::of(rate).value_or(FrameRate::television());
    m_engine = std::make_unique<DecoderEngine>(source, std::move(settings));
    m_engine->frameArrived = [this](std::int64_t number) { arrived.push_back(number); };
    m_engine->stateChanged = [this] { ++stateChanges; };
}

PlaybackEngine::State Playing::opened()
{
    runUntil([&] { return stateChanges > 0; });
    return m_engine->state();
}

std::shared_ptr<const PlayedFrame> Playing::frame(std::int64_t number, double rate)
{
    m_engine->aim(number, rate);
    runUntil([&] {
        return m_engine->frame(number) || m_engine->state() == PlaybackEngine::State::failed
               || m_engine->lastFrame().value_or(number) < number;
    });
    return m_engine->frame(number);
}

std::optional<int> Playing::shown(std::int64_t number, double rate)
{
    const auto found = frame(number, rate);
    if (!found || found->frame != number)
        return std::nullopt;
    return NumberedClip::numberIn(found->picture);
}

} // namespace vantroque
