#pragma once

#include "Playback/PlaybackEngine.h"

#include <QImage>

#include <cstdlib>
#include <set>
#include <utility>
#include <vector>

namespace vantroque {

/// What an engine does, in the hands of a test, which keeps it longer than the player keeps the
/// engine. Its frames are small and grey, and their shade is their number.
class HandFilm {
public:
    using State = PlaybackEngine::State;

    /// Makes engines that do as this says; it must outlive them.
    PlaybackEngineMaker maker();

    /// Another state, as the engine would tell it.
    void become(State next)
    {
        state = next;
        if (tellState)
            tellState();
    }
    /// A frame comes to hand.
    void arrive(std::int64_t frame)
    {
        atHand.insert(frame);
        if (tellFrame)
            tellFrame(frame);
    }

    std::shared_ptr<const PlayedFrame> frame(std::int64_t number) const
    {
        if (!hasAll && !atHand.contains(number))
            return nullptr;
        auto pixels = std::make_shared<std::vector<std::uint8_t>>(width * height * 2, 128);
        std::fill_n(pixels->begin(), width * height, static_cast<std::uint8_t>(number % 256));
        auto frame = std::make_shared<PlayedFrame>();
        frame->frame = number;
        frame->picture = {.width = width,
                          .height = height,
                          .luma = pixels->data(),
                          .lumaStride = width,
                          .chroma = pixels->data() + width * height,
                          .chromaStride = width};
        frame->pixels = std::move(pixels);
        return frame;
    }
    std::shared_ptr<const PlayedFrame> nearest(std::int64_t number, std::int64_t reach) const
    {
        for (std::int64_t by = 0; by <= reach; ++by)
            for (const std::int64_t candidate : {number - by, number + by})
                if (const auto found = frame(candidate))
                    return found;
        return nullptr;
    }
    /// The number that a picture shows, in full range.
    static int numberIn(const QImage& picture) { return qGreen(picture.pixel(0, 0)); }

    State state = State::ready;
    Orientation orientation;
    int width = 16;
    int height = 8;
    bool hasAll = true; ///< Every frame is at hand; otherwise those that have arrived.
    std::set<std::int64_t> atHand;
    std::function<bool(double)> canPlay = [](double) { return true; };
    bool isDecoding = false;
    std::optional<std::int64_t> last;
    std::optional<double> heard;

    // What it was told.
    std::vector<PlaybackSource> opened;
    std::vector<std::pair<std::int64_t, double>> aims;
    std::vector<double> soundsFrom;
    bool isSounding = false;
    int engines = 0; ///< That there are.

    std::function<void()> tellState;
    std::function<void(std::int64_t)> tellFrame;
};

class HandEngine : public PlaybackEngine {
public:
    HandEngine(HandFilm& film, const PlaybackSource& source) : m_film(film)
    {
        ++film.engines;
        film.opened.push_back(source);
        film.tellState = [this] { stateChanged(); };
        film.tellFrame = [this](std::int64_t frame) { frameArrived(frame); };
    }
    ~HandEngine() override
    {
        --m_film.engines;
        m_film.tellState = nullptr;
        m_film.tellFrame = nullptr;
    }

    State state() const override { return m_film.state; }
    Orientation orientation() const override { return m_film.orientation; }
    void aim(std::int64_t frame, double rate) override { m_film.aims.emplace_back(frame, rate); }
    std::shared_ptr<const PlayedFrame> frame(std::int64_t number) const override
    {
        return m_film.frame(number);
    }
    std::shared_ptr<const PlayedFrame> nearest(std::int64_t number,
                                               std::int64_t reach) const override
    {
        return m_film.nearest(number, reach);
    }
    bool isDecoding() const override { return m_film.isDecoding; }
    std::optional<std::int64_t> lastFrame() const override { return m_film.last; }
    bool canPlay(double rate) const override { return m_film.canPlay(rate); }
    void startSound(double seconds) override
    {
        m_film.soundsFrom.push_back(seconds);
        m_film.isSounding = true;
    }
    void stopSound() override { m_film.isSounding = false; }
    std::optional<double> soundSeconds() const override { return m_film.heard; }

private:
    HandFilm& m_film;
};

inline PlaybackEngineMaker HandFilm::maker()
{
    return [this](const PlaybackSource& source) {
        return std::make_unique<HandEngine>(*this, source);
    };
}

} // namespace vantroque
