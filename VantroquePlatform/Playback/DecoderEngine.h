#pragma once

#include "Playback/FillPlan.h"
#include "Playback/FrameShelf.h"
#include "Playback/PictureLayout.h"
#include "Playback/PlaybackEngine.h"
#include "VantroquePlatform/Playback/DecoderProcess.h"
#include "VantroquePlatform/Playback/SlotMemory.h"
#include "VantroquePlatform/Playback/SoundPlayer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

namespace vantroque {

/// Plays a file with a program of its own, vantroque-play, into memory that both share. It trusts
/// nothing that the program says. Needs the event loop of the thread on which it is made.
class DecoderEngine : public PlaybackEngine {
public:
    /// What tests replace.
    struct Settings {
        std::filesystem::path program = DecoderProcess::program();
        SoundOutputMaker sound = makeSdlOutput;
        std::size_t mostSlots = 400; ///< For frames, if there is the memory.
        /// How often the decoder is asked whether it is there while it has work.
        std::chrono::milliseconds pingEvery{250};
        int silentPings = 4;           ///< So many without an answer, and it is taken for dead;
        int answersOfHung = 32;        ///< so many answers without progress, and it hangs.
        std::chrono::seconds soon{10}; ///< A second death within that time is the last.
    };

    explicit DecoderEngine(const PlaybackSource& source);
    DecoderEngine(PlaybackSource source, Settings settings);
    ~DecoderEngine() override;

    State state() const override { return m_state; }
    Orientation orientation() const override { return m_orientation; }
    void aim(std::int64_t frame, double rate) override;
    std::shared_ptr<const PlayedFrame> frame(std::int64_t number) const override;
    std::shared_ptr<const PlayedFrame> nearest(std::int64_t number,
                                               std::int64_t reach) const override;
    bool isDecoding() const override { return m_plan && m_plan->isWaiting(); }
    std::optional<std::int64_t> lastFrame() const override { return m_lastFrame; }
    bool canPlay(double rate) const override;
    void startSound(double seconds) override;
    void stopSound() override;
    std::optional<double> soundSeconds() const override { return m_sound.seconds(); }

    /// Why it has failed, for a log.
    const QString& problem() const { return m_problem; }
    /// How far the loudspeakers have taken the sound, which is heard somewhat later.
    double takenSoundSeconds() const;
    /// The process that decodes now; below 0 without one.
    pid_t decoder() const { return m_process ? m_process->id() : -1; }

private:
    using Order = PlayProtocol::Order;
    using Told = PlayProtocol::Told;

    void start();
    void readAll();
    /// False when the decoder broke the rules.
    bool take(const Told& told);
    bool takeOpened(const Told& told);
    bool takeFrame(const Told& told);
    bool takeExtended(const Told& told);
    void takeEnd(const Told& told);
    bool takePong(const Told& told);
    bool isOfAWant(const Told& told) const;
    void fill();
    void makeRoom();
    void send(const Order& order, const FileDescriptor& along = {});
    void sendSound();
    void watch();
    void end();
    void die(const QString& problem);
    void fail(const QString& problem);
    void change(State state);

    PlaybackSource m_source;
    Settings m_settings;
    QObject m_context; ///< Ends what is still to be called.
    State m_state = State::opening;
    QString m_problem;
    std::optional<DecoderProcess> m_process;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_watch;
    QTimer m_change; ///< Tells of another state.
    QElapsedTimer m_lastDeath;
    bool m_hasOpened = false; ///< The decoder that runs now.
    bool m_hasAnswered = false;

    std::shared_ptr<SlotMemory> m_memory;
    FrameShelf m_shelf;
    std::optional<FillPlan> m_plan; ///< Once it is known how many frames there is room for.
    std::int64_t m_frame = 0;
    double m_rate = 0;
    Orientation m_orientation;
    std::optional<std::int64_t> m_lastFrame;
    std::int64_t m_extendable = -1; ///< The frame of the newest want that may yet be extended.

    std::uint64_t m_want = 0; ///< Token of the newest.
    std::uint64_t m_ping = 0;
    bool m_pingIsOut = false;
    int m_unanswered = 0;
    int m_withoutProgress = 0;
    std::uint64_t m_progress = 0;

    SoundPlayer m_sound;
};

} // namespace vantroque
