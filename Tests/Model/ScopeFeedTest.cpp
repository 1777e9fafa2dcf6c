#include "Model/PlayerFixture.h"

namespace vantroque {
namespace {

/// Samples as the test lets them, one frame a call.
class ScopedFrames : public FrameSource {
public:
    void aim(std::int64_t frame, double) override
    {
        show(frame, QImage(2, 2, QImage::Format_RGB32));
    }
    bool canPlay(double) const override { return true; }
    Sampling sampling(QSize size) const override
    {
        if (!shown())
            return nullptr;
        return [this, size, code = shown()->frame]() -> std::optional<ScopeFrame> {
            ++sampled;
            std::unique_lock lock(mutex);
            wake.wait(lock, [this] { return !isHeld; });
            const auto count = static_cast<std::size_t>(size.width() * size.height());
            const std::vector<std::uint8_t> luma(count, static_cast<std::uint8_t>(code));
            const std::vector<std::uint8_t> chroma(count, 128);
            return ScopeFrame{.width = size.width(),
                              .height = size.height(),
                              .y = luma,
                              .cb = chroma,
                              .cr = chroma,
                              .fullRange = true};
        };
    }

    void hold(bool held)
    {
        const std::scoped_lock lock(mutex);
        isHeld = held;
        wake.notify_all();
    }

    mutable std::atomic<int> sampled = 0;
    mutable std::mutex mutex;
    mutable std::condition_variable wake;
    bool isHeld = false;
};

constexpr double poll = 1.0 / 30;
const ScopeOptions all{.waveform = true, .parade = true, .vectorscope = true, .outOfRange = true};

class Scopes : public PlayerTest {
protected:
    ~Scopes() override
    {
        m_frames.hold(false);
        m_feed.use(nullptr);
    }

    /// Whether the waveform is one line at that level.
    bool soonAtRow(std::uint8_t code)
    {
        const int row = static_cast<int>((110 - code * 100.0 / 255) / 120 * 127 + 0.5);
        return soon([&] {
            const QImage& image = m_feed.scopeImages().waveform;
            return !image.isNull() && qRed(image.pixel(7, row)) > 200;
        });
    }

    ScopedFrames m_frames;
    ScopeFeed m_feed{m_settings, m_clock, {320, 180}, ColorMatrix::bt709};
};

TEST_F(Scopes, AreOffUntilTheyAreAskedFor)
{
    m_feed.use(&m_frames);
    m_frames.aim(100, 0);
    m_clock.pass(1);
    EXPECT_FALSE(m_clock.isTicking());
    EXPECT_EQ(m_frames.sampled, 0);
}

TEST_F(Scopes, HaveTheirSizes)
{
    m_frames.aim(255, 0);
    m_feed.use(&m_frames);
    m_feed.setScopeOptions(all);
    ASSERT_TRUE(soon([&] { return !m_feed.scopeImages().waveform.isNull(); }));
    EXPECT_EQ(m_feed.scopeImages().waveform.size(), QSize(256, 128));
    EXPECT_EQ(m_feed.scopeImages().parade.size(), QSize(384, 128));
    EXPECT_EQ(m_feed.scopeImages().vectorscope.size(), QSize(128, 128));
    EXPECT_EQ(m_feed.scopeImages().zebra.size(), QSize(320, 180));
}

TEST_F(Scopes, FollowTheFrameOnScreenAndRestWithIt)
{
    m_feed.use(&m_frames);
    m_feed.setScopeOptions({.waveform = true});
    m_frames.aim(40, 0);
    m_clock.pass(poll);
    ASSERT_TRUE(soonAtRow(40));
    m_frames.aim(200, 0);
    m_clock.pass(poll);
    ASSERT_TRUE(soonAtRow(200));
    m_clock.pass(1);
    EXPECT_EQ(m_frames.sampled, 2) << "a still picture is sampled once";
}

TEST_F(Scopes, OneRenderAtATimeSkipsFramesRatherThanStackThem)
{
    m_feed.use(&m_frames);
    m_feed.setScopeOptions({.waveform = true});
    m_frames.hold(true);
    for (int number = 1; number <= 30; ++number) {
        m_frames.aim(number, 1);
        m_clock.pass(poll);
    }
    ASSERT_TRUE(soon([&] { return m_frames.sampled == 1; }));
    m_frames.hold(false);
    ASSERT_TRUE(soonAtRow(1));
    m_clock.pass(poll);
    ASSERT_TRUE(soonAtRow(30));
    EXPECT_EQ(m_frames.sampled, 2);
}

TEST_F(Scopes, AnotherChoiceIsDrawnAtRest)
{
    m_frames.aim(80, 0);
    m_feed.use(&m_frames);
    m_feed.setScopeOptions({.waveform = true});
    ASSERT_TRUE(soonAtRow(80));
    m_feed.setScopeOptions({.waveform = true, .vectorscope = true});
    m_clock.pass(poll);
    EXPECT_TRUE(soon([&] { return !m_feed.scopeImages().vectorscope.isNull(); }));
}

TEST_F(Scopes, AllOffLeavesNothing)
{
    m_frames.aim(80, 0);
    m_feed.use(&m_frames);
    m_feed.setScopeOptions(all);
    ASSERT_TRUE(soonAtRow(80));
    m_frames.hold(true);
    m_frames.aim(90, 0);
    m_clock.pass(poll);
    m_feed.setScopeOptions({});
    EXPECT_TRUE(m_feed.scopeImages().waveform.isNull());
    EXPECT_TRUE(m_feed.scopeImages().zebra.isNull());
    EXPECT_FALSE(m_clock.isTicking());
    m_frames.hold(false);
    ASSERT_TRUE(soon([&] { return m_frames.sampled == 2; }));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_feed.scopeImages().waveform.isNull()) << "what was on its way is dropped";
}

TEST_F(Scopes, AreRemembered)
{
    m_feed.setScopeOptions({.parade = true, .outOfRange = true});
    const ScopeFeed next(m_settings, m_clock, {320, 180}, ColorMatrix::bt709);
    EXPECT_EQ(next.scopeOptions(), (ScopeOptions{.parade = true, .outOfRange = true}));
}

TEST_F(Scopes, OfAPlayerAreThoseOfItsDecodedFrame)
{
    open();
    player().scopes().setScopeOptions({.waveform = true});
    player().seek(99);
    ASSERT_TRUE(soonOnScreen(99));
    m_clock.pass(poll);
    const int row = static_cast<int>((110 - 99 * 100.0 / 255) / 120 * 127 + 0.5);
    EXPECT_TRUE(soon([&] {
        m_clock.pass(poll);
        const QImage& image = player().scopes().scopeImages().waveform;
        return !image.isNull() && qRed(image.pixel(7, row)) > 200;
    }));
}

} // namespace
} // namespace vantroque
