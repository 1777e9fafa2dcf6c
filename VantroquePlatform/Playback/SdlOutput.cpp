#include "VantroquePlatform/Playback/SoundOutput.h"

#include <SDL.h>

#include <mutex>
#include <string_view>
#include <utility>

namespace vantroque {

namespace {

/// SDL's own lists are not made for several threads.
std::mutex sdl;

/// Its audio alone, for as long as the program runs: without windows, events or signals.
bool isInitialized()
{
    static const bool initialized = [] {
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Vantroque");
        if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
            return false;
        // These keep no time.
        const std::string_view driver = SDL_GetCurrentAudioDriver();
        return driver != "dummy" && driver != "disk";
    }();
    return initialized;
}

class SdlOutput : public SoundOutput {
public:
    explicit SdlOutput(Fill fill) : m_fill(std::move(fill)) {}
    ~SdlOutput() override
    {
        const std::scoped_lock lock(sdl);
        if (m_device != 0)
            SDL_CloseAudioDevice(m_device);
    }

    bool open()
    {
        SDL_AudioSpec wanted{};
        wanted.freq = SoundRing::samplesPerSecond;
        wanted.format = AUDIO_F32SYS;
        wanted.channels = 2;
        wanted.samples = 1024;
        wanted.userdata = this;
        wanted.callback = [](void* self, Uint8* bytes, int size) {
            const auto pairs = static_cast<std::size_t>(size) / sizeof(SoundRing::Pair);
            static_cast<SdlOutput*>(self)->m_fill(
                {reinterpret_cast<SoundRing::Pair*>(bytes), pairs});
        };
        m_device = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
        return m_device != 0;
    }
    void setRunning(bool isRunning) override { SDL_PauseAudioDevice(m_device, isRunning ? 0 : 1); }

private:
    Fill m_fill;
    SDL_AudioDeviceID m_device = 0;
};

} // namespace

std::unique_ptr<SoundOutput> makeSdlOutput(SoundOutput::Fill fill)
{
    auto output = std::make_unique<SdlOutput>(std::move(fill));
    {
        const std::scoped_lock lock(sdl);
        if (isInitialized() && output->open())
            return output;
    }
    return nullptr;
}

} // namespace vantroque
