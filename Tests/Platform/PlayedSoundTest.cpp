#include "Platform/NumberedClip.h"
#include "Platform/Playing.h"
#include "Support/Clips.h"
#include "Support/Media.h"
#include "VantroquePlatform/Playback/SoundFeed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <sys/mman.h>

// The sound of a player: what is heard, and when.

namespace vantroque {
namespace {

using Media::operator+;
using Pair = SoundRing::Pair;
using Words = std::vector<std::string>;
using testing::Optional;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Loudspeakers that the test drives. They may be closed after it.
class Cranked {
public:
    SoundOutputMaker maker() const
    {
        return [state = m_state](SoundOutput::Fill fill) -> std::unique_ptr<SoundOutput> {
            const std::scoped_lock lock(state->mutex);
            state->fill = std::move(fill);
            return std::make_unique<Output>(state);
        };
    }
    bool isRunning() const
    {
        const std::scoped_lock lock(m_state->mutex);
        return m_state->isRunning;
    }
    /// Takes what is there, and silence after it.
    void crank()
    {
        std::array<Pair, 480> pairs{};
        const std::scoped_lock lock(m_state->mutex);
        if (m_state->isRunning)
            m_state->fill(pairs);
        heard.insert(heard.end(), pairs.begin(), pairs.end());
    }

    std::vector<Pair> heard;

private:
    struct State {
        std::mutex mutex;
        SoundOutput::Fill fill;
        bool isRunning = false;
    };
    struct Output : SoundOutput {
        explicit Output(std::shared_ptr<State> owner) : state(std::move(owner)) {}
        ~Output() override { Output::setRunning(false); }
        void setRunning(bool isRunning) override
        {
            const std::scoped_lock lock(state->mutex);
            state->isRunning = isRunning;
        }
        std::shared_ptr<State> state;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

DecoderEngine::Settings through(const Cranked& loudspeakers)
{
    auto settings = Playing::silent();
    settings.sound = loudspeakers.maker();
    return settings;
}

/// Has the event loop look at its condition again.
void goRound()
{
    QTimer::singleShot(0, [] {});
}

/// Two seconds of pictures with a click after one second.
fs::path clicking(const std::string& name, const Words& encoder)
{
    return Media::make(
        {name, Words{"-f", "lavfi", "-i", "aevalsrc='if(between(t,1,1.02),0.5,0)':s=48000:d=2"}
                   + NumberedClip::input("25", "2") + encoder});
}

const Words x264{"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p"};

/// Plays from there and returns the seconds of the file that a click is heard at. The loudspeakers
/// begin with what is there, so the first chunks may be silent; `soundSeconds` tells by how much.
std::optional<double> heardClick(const fs::path& file, double from, double until = 3)
{
    Cranked loudspeakers;
    Playing player(file, 25, through(loudspeakers));
    player.opened();
    player.engine().startSound(from);
    EXPECT_EQ(player.engine().soundSeconds(), from);
    const auto isLoud = [](const Pair& pair) { return std::abs(pair.left) > 0.1F; };
    double at = 0;
    const bool isHeard = runUntil([&] {
        if (!loudspeakers.isRunning())
            return false;
        const double before = player.engine().takenSoundSeconds();
        loudspeakers.heard.clear();
        loudspeakers.crank();
        const auto loud = std::ranges::find_if(loudspeakers.heard, isLoud);
        at = before + static_cast<double>(loud - loudspeakers.heard.begin()) / 48000;
        goRound();
        return loud != loudspeakers.heard.end() || at > until;
    });
    return isHeard ? std::optional(at) : std::nullopt;
}

void expectClick(const fs::path& file)
{
    for (const double from : {0.0, 0.52, 0.96}) {
        const auto click = heardClick(file, from);
        ASSERT_TRUE(click) << file << " from " << from;
        EXPECT_NEAR(*click, 1, 0.005) << file << " from " << from;
    }
}

TEST(PlayedSound, IsThatOfThePicture)
{
    expectClick(clicking("pcm.mov", x264 + Words{"-c:a", "pcm_s24le"}));
    expectClick(clicking("aac.mp4", x264 + Words{"-c:a", "aac", "-b:a", "192k"}));
    expectClick(clicking("mp2.ts", x264 + Words{"-c:a", "mp2", "-b:a", "256k"}));
    expectClick(clicking("late.ts", x264 + Words{"-c:a", "mp2", "-output_ts_offset", "7.7"}));
    expectClick(clicking("44100.mkv", x264 + Words{"-c:a", "flac", "-ar", "44100"}));
}

TEST(PlayedSound, BeginsWithSilenceWhereItComesLate)
{
    const auto late = [](const std::string& name, const std::string& codec) {
        return Media::make(
            {name, NumberedClip::input("25", "2")
                       + Words{"-itsoffset", "0.6", "-f", "lavfi", "-i",
                               "aevalsrc='if(between(t,0.4,0.42),0.5,0)':s=48000:d=1"}
                       + x264 + Words{"-c:a", codec}});
    };
    expectClick(late("late-sound.mov", "pcm_s16le"));
    expectClick(late("late-sound.mkv", "pcm_s16le"));
    expectClick(late("late-sound.mp4", "aac"));
    expectClick(late("late-sound.ts", "mp2"));
}

TEST(PlayedSound, IsNotHeardTooEarlyWhereItComesVeryLate)
{
    const auto file =
        Media::make({"very-late-sound.mkv", NumberedClip::input("25", "1")
                                                + Words{"-itsoffset", "25", "-f", "lavfi", "-i",
                                                        "aevalsrc='0.5':s=48000:d=1"}
                                                + x264 + Words{"-c:a", "pcm_s16le"}});
    const auto click = heardClick(file, 0, 26);
    ASSERT_TRUE(click);
    EXPECT_NEAR(*click, 25, 0.2);
}

/// The loudest that is heard on each side of a file whose sound is that expression.
Pair peaks(const std::string& name, const std::string& sound, const Words& more = {})
{
    const auto file = Media::make({name, Words{"-f", "lavfi", "-i", "aevalsrc='" + sound}
                                             + NumberedClip::input("25", "1") + x264
                                             + Words{"-c:a", "pcm_s24le"} + more});
    Cranked loudspeakers;
    Playing player(file, 25, through(loudspeakers));
    player.opened();
    player.engine().startSound(0);
    runUntil([&] {
        if (loudspeakers.isRunning())
            loudspeakers.crank();
        goRound();
        return player.engine().takenSoundSeconds() > 0.5;
    });
    Pair peak;
    for (const Pair& pair : loudspeakers.heard)
        peak = {std::max(peak.left, std::abs(pair.left)),
                std::max(peak.right, std::abs(pair.right))};
    return peak;
}

TEST(PlayedSound, OfSixChannelsIsMixedDownToTwo)
{
    const std::string tone = "0.25*sin(2*PI*500*t)";
    const std::string shape = "':c=5.1:s=48000:d=1";
    constexpr float full = 0.25F;
    constexpr float lower = 0.177F; // By 3 dB.
    constexpr float near = 0.01F;
    const Pair left = peaks("left.mov", tone + "|0|0|0|0|0" + shape);
    EXPECT_NEAR(left.left, full, near);
    EXPECT_NEAR(left.right, 0, near);
    const Pair centre = peaks("centre.mov", "0|0|" + tone + "|0|0|0" + shape);
    EXPECT_NEAR(centre.left, lower, near);
    EXPECT_NEAR(centre.right, lower, near);
    const Pair low = peaks("low.mov", "0|0|0|" + tone + "|0|0" + shape);
    EXPECT_NEAR(low.left, 0, near);
    const Pair surround = peaks("surround.mov", "0|0|0|0|0|" + tone + shape);
    EXPECT_NEAR(surround.left, 0, near);
    EXPECT_NEAR(surround.right, lower, near);
}

TEST(PlayedSound, OfTwoMonoTracksIsLeftAndRight)
{
    const Pair peak = peaks("tracks.mov", "0.25*sin(2*PI*500*t)|0.1*sin(2*PI*500*t)':s=48000:d=1",
                            {"-filter_complex", "[0:a]channelsplit[l][r]", "-map", "1:v", "-map",
                             "[l]", "-map", "[r]"});
    EXPECT_NEAR(peak.left, 0.25, 0.01);
    EXPECT_NEAR(peak.right, 0.1, 0.01);
}

TEST(PlayedSound, IsNoneWhereTheFileOrTheMachineHasNone)
{
    Playing mute(Clips::plain());
    mute.opened();
    mute.engine().startSound(0);
    EXPECT_TRUE(runUntil([&] {
        goRound();
        return !mute.engine().soundSeconds();
    }));
    Cranked loudspeakers;
    Playing silent(NumberedClip::make("silent.mp4", "25", x264), 25, through(loudspeakers));
    silent.opened();
    silent.engine().startSound(0);
    EXPECT_TRUE(runUntil([&] {
        goRound();
        return !silent.engine().soundSeconds();
    }));
}

TEST(PlayedSound, StopsAndGoesOnElsewhere)
{
    Cranked loudspeakers;
    Playing player(clicking("pcm.mov", x264 + Words{"-c:a", "pcm_s24le"}), 25,
                   through(loudspeakers));
    player.opened();
    for (const double from : {1.5, 0.25}) {
        player.engine().startSound(from);
        EXPECT_TRUE(runUntil([&] {
            if (loudspeakers.isRunning())
                loudspeakers.crank();
            goRound();
            return player.engine().soundSeconds().value_or(0) > from;
        }));
        player.engine().stopSound();
        EXPECT_EQ(player.engine().soundSeconds(), std::nullopt);
        EXPECT_FALSE(loudspeakers.isRunning());
    }
}

TEST(PlayedSound, GoesOnWhenTheDecoderIsReplaced)
{
    Cranked loudspeakers;
    Playing player(clicking("pcm.mov", x264 + Words{"-c:a", "pcm_s24le"}), 25,
                   through(loudspeakers));
    const auto crankTo = [&](double seconds) {
        return runUntil([&] {
            if (loudspeakers.isRunning())
                loudspeakers.crank();
            goRound();
            return player.engine().soundSeconds().value_or(0) > seconds;
        });
    };
    player.opened();
    player.engine().startSound(0.5);
    ASSERT_TRUE(crankTo(0.6));
    const pid_t old = player.engine().decoder();
    ::kill(old, SIGKILL);
    ASSERT_TRUE(runUntil([&] { return player.engine().decoder() != old; }));
    EXPECT_TRUE(crankTo(0.9));
}

/// A card that is pulled out asks for nothing more.
TEST(PlayedSound, OfACardThatGoesAwayHoldsNothingUp)
{
    Cranked loudspeakers;
    Playing player(clicking("pcm.mov", x264 + Words{"-c:a", "pcm_s24le"}), 25,
                   through(loudspeakers));
    player.opened();
    player.engine().startSound(0.25);
    ASSERT_TRUE(runUntil([&] {
        if (loudspeakers.isRunning())
            loudspeakers.crank();
        goRound();
        return player.engine().soundSeconds().value_or(0) > 0.25;
    }));
    EXPECT_TRUE(runUntil([&] {
        QTimer::singleShot(10, [] {});
        return !player.engine().soundSeconds();
    }));
    const pid_t old = player.engine().decoder();
    ::kill(old, SIGKILL);
    ASSERT_TRUE(runUntil([&] { return player.engine().decoder() != old; }));
    EXPECT_EQ(player.shown(30, 1), 30);
    EXPECT_EQ(player.engine().soundSeconds(), std::nullopt) << "nor does another decoder";
    EXPECT_EQ(player.engine().state(), PlaybackEngine::State::ready);
    player.engine().stopSound();
    player.engine().startSound(0.5);
    EXPECT_EQ(player.engine().soundSeconds(), 0.5) << "the next start tries again";
}

/// A feed that the test fills as a decoder does.
class Feed : public testing::Test {
protected:
    Feed()
        : m_feed(*SoundFeed::make(10)),
          m_ring(static_cast<SoundRing*>(::mmap(nullptr, sizeof(SoundRing), PROT_READ | PROT_WRITE,
                                                MAP_SHARED, m_feed->descriptor().get(), 0)))
    {
    }
    ~Feed() override { ::munmap(m_ring, sizeof(SoundRing)); }

    std::vector<Pair> fill(std::size_t count, std::chrono::milliseconds when)
    {
        std::vector<Pair> pairs(count, Pair{9, 9});
        m_feed->fill(pairs, SoundFeed::Clock::time_point(when));
        return pairs;
    }
    std::optional<double> heard(std::chrono::milliseconds when) const
    {
        return m_feed->heardSeconds(SoundFeed::Clock::time_point(when));
    }

    std::shared_ptr<SoundFeed> m_feed;
    SoundRing* m_ring;
};

TEST_F(Feed, IsHeardOneChunkAfterItIsTaken)
{
    EXPECT_EQ(heard(0ms), std::nullopt);
    fill(480, 0ms);
    EXPECT_EQ(heard(5ms), std::nullopt) << "nothing has come yet";
    m_ring->written = 4800;
    fill(480, 10ms);
    EXPECT_THAT(heard(15ms), Optional(10.0));
    fill(480, 20ms);
    EXPECT_THAT(heard(20ms), Optional(testing::DoubleNear(10, 1e-9)));
    EXPECT_THAT(heard(26ms), Optional(testing::DoubleNear(10.006, 1e-9)));
    fill(480, 30ms);
    EXPECT_THAT(heard(30ms), Optional(testing::DoubleNear(10.01, 1e-9)));
    // A device that stalls does not let the picture run on.
    EXPECT_THAT(heard(500ms), Optional(testing::DoubleNear(10.02, 1e-9)));
}

TEST_F(Feed, OfADeviceThatHasGoneAwayIsGivenUp)
{
    m_ring->at(480) = m_ring->at(960) = {0.5F, 0.5F};
    m_ring->written = 4800;
    fill(480, 0ms);
    EXPECT_EQ(fill(480, 1990ms)[0].left, 0.5F) << "late, and still there";
    EXPECT_THAT(heard(3980ms), Optional(testing::DoubleNear(10.01, 1e-9)));
    EXPECT_EQ(heard(4000ms), std::nullopt) << "the picture goes on without it";
    EXPECT_EQ(fill(480, 4000ms)[0].left, 0) << "what comes back now would be late";
    EXPECT_EQ(heard(4005ms), std::nullopt);
}

TEST_F(Feed, IsSilentWhereNothingHasCome)
{
    m_ring->at(0) = {0.5F, -0.5F};
    m_ring->written = 1;
    const auto pairs = fill(3, 0ms);
    EXPECT_EQ(pairs[0].left, 0.5F);
    EXPECT_EQ(pairs[0].right, -0.5F);
    EXPECT_EQ(pairs[1].left, 0);
    EXPECT_EQ(pairs[2].right, 0);
}

TEST_F(Feed, TrustsNoDecoder)
{
    m_ring->at(0) = {NAN, 1e30F};
    m_ring->at(1) = {-INFINITY, -7};
    m_ring->written = 2;
    const auto pairs = fill(2, 0ms);
    EXPECT_EQ(pairs[0].left, 0);
    EXPECT_EQ(pairs[0].right, 1);
    EXPECT_EQ(pairs[1].left, 0);
    EXPECT_EQ(pairs[1].right, -1);
    m_ring->written = UINT64_MAX;
    EXPECT_EQ(fill(1, 10ms)[0].left, 0);
    m_ring->written = 0;
    m_ring->read = 12345;
    EXPECT_EQ(fill(1, 20ms)[0].left, 0);
}

} // namespace
} // namespace vantroque
