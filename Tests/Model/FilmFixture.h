#pragma once

#include "Model/PlayerFixture.h"
#include "Platform/NumberedImage.h"
#include "Platform/Playing.h"
#include "Probe/Prober.h"

namespace vantroque {

/// Of two seconds at 25 frames a second.
inline std::filesystem::path plainFilm()
{
    return NumberedClip::make("desk-h264.mp4", "25",
                              {"-c:v", "libx264", "-preset", "veryfast", "-g", "24", "-bf", "2"});
}

/// Players of real files, decoded by the program's own decoder. The pictures carry their numbers.
class Film : public PlayerTest {
protected:
    PlayerController& openFilm(const std::filesystem::path& path)
    {
        const FileUrl url = FileUrl::fromPath(path);
        const auto media = Prober::probe(url, Prober::Captions::leftOut);
        EXPECT_TRUE(media) << media.error().description.toStdString();
        const auto report = Analyzer::report(*media, {});
        return open(
            {.url = url, .video = *report.video, .stream = media->video->position.value_or(0)},
            maker());
    }
    /// On the machine's own clock.
    PlayerController& openInRealTime(const PlayedFile& file)
    {
        close();
        m_player = std::make_unique<PlayerController>(file, nullptr,
                                                      PlayerSurroundings{.defaults = m_settings,
                                                                         .reviews = m_book,
                                                                         .desktop = m_desktop,
                                                                         .clock = m_machine,
                                                                         .speller = m_speller,
                                                                         .makeEngine = maker()});
        return *m_player;
    }
    PlaybackEngineMaker maker()
    {
        return [this](const PlaybackSource& source) {
            auto engine = std::make_unique<DecoderEngine>(source, m_decoding);
            m_engine = engine.get();
            return engine;
        };
    }
    bool soonReady()
    {
        return soon([&] { return player().isReady() || player().usesFrameStepper(); });
    }
    /// Until the frame on screen is the one that the player stands on, and then whether the picture
    /// says so as well.
    bool soonAgrees()
    {
        return soon([&] { return player().shown() && player().shown()->frame == frame(); })
               && numberOn(player().shown()->picture) == frame();
    }

    /// Plays some frames or to the end. The clock is that of the sound until it is known that there
    /// is none.
    bool soonPlayedOn()
    {
        player().togglePlay();
        const std::int64_t end = frame() + 5;
        const bool hasPlayed = soon([&] {
            m_clock.pass(1.0 / 25);
            return rate() == 0 || frame() == end;
        });
        player().shuttle().stop();
        return hasPlayed;
    }

    DecoderEngine::Settings m_decoding = Playing::silent();
    SystemClock m_machine;
    DecoderEngine* m_engine = nullptr; ///< The newest; it may be gone.
};

} // namespace vantroque
