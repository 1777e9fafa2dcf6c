#include "Model/FilmFixture.h"
#include "Tools/HeldByProcess.h"

#include <QElapsedTimer>

#include <algorithm>
#include <csignal>
#include <functional>
#include <malloc.h>
#include <unistd.h>

// What a player makes of files that are damaged, gone or something else than they say, and of a
// decoder that cannot be trusted: stills, and words that say so.

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using testing::Contains;

class TroubledFilm : public Film {
protected:
    FileUrl write(const std::string& name, const QByteArray& bytes)
    {
        return FileUrl::fromPath(m_folder.write(name, bytes));
    }
    PlayerController& openTwoSeconds(const FileUrl& url)
    {
        return open({.url = url, .video = video(25, 2)}, maker());
    }
    void expectStills()
    {
        ASSERT_TRUE(soon([&] { return player().usesFrameStepper(); }));
        EXPECT_THAT(player().notes(), Contains(PlayerController::stepperNote()));
        EXPECT_FALSE(player().isReady());
    }
};

TEST_F(TroubledFilm, OfNoBytesIsSaidSo)
{
    openTwoSeconds(write("empty.mov", {}));
    expectStills();
    EXPECT_FALSE(player().shown());
}

TEST_F(TroubledFilm, OfACodecThatNobodyKnowsIsSaidSo)
{
    openTwoSeconds(write("unknown.mov", contents(plainFilm()).replace("avc1", "zzzz")));
    expectStills();
    player().step(3);
    EXPECT_EQ(frame(), 3);
    EXPECT_FALSE(player().shown());
}

TEST_F(TroubledFilm, IsNotMistakenForItsCover)
{
    openFilm(Clips::coverAhead(plainFilm()));
    ASSERT_TRUE(soonReady());
    EXPECT_FALSE(player().usesFrameStepper());
    for (const std::int64_t number : {0, 33, 12}) {
        player().seek(number);
        EXPECT_TRUE(soonAgrees()) << number;
    }
}

TEST_F(TroubledFilm, ThatIsCutShortWhileItPlaysEndsSooner)
{
    m_decoding.mostSlots = 6;
    // Larger than what is read at once.
    const auto whole = NumberedClip::make(
        "padded.ts", "25",
        {"-c:v", "libx264", "-preset", "veryfast", "-g", "12", "-muxrate", "4M"});
    const FileUrl url = write("cut.ts", contents(whole));
    openTwoSeconds(url);
    ASSERT_TRUE(soonReady());
    player().seek(5);
    ASSERT_TRUE(soonAgrees());
    player().togglePlay();
    ASSERT_TRUE(soon([&] {
        m_clock.pass(1.0 / 25);
        return frame() > 10;
    }));
    fs::resize_file(url.path(), fs::file_size(url.path()) / 2);
    ASSERT_TRUE(soon([&] {
        m_clock.pass(1.0 / 25);
        return rate() == 0;
    }));
    ASSERT_TRUE(soon([&] { return player().shown()->frame == frame(); }));
    EXPECT_LT(frame(), 49);
    EXPECT_EQ(frame(), player().lastFrameIndex());
    player().seek(3);
    EXPECT_TRUE(soonAgrees());
    fs::remove(url.path());
    player().seek(14);
    EXPECT_TRUE(soonAgrees()) << "the decoder still has it open";
}

/// The lie is the name of the file.
class LiesOf : public TroubledFilm, public testing::WithParamInterface<std::string> {};

TEST_P(LiesOf, ADecoderLeaveExactStills)
{
    m_decoding.program = VANTROQUE_LYING_DECODER;
    m_decoding.pingEvery = std::chrono::milliseconds(20);
    m_decoding.answersOfHung = 4;
    openTwoSeconds(write(GetParam(), contents(plainFilm())));
    player().seek(21);
    expectStills();
    EXPECT_TRUE(soonAgrees());
    player().step(-4);
    EXPECT_TRUE(soonAgrees());
    EXPECT_EQ(frame(), 17);
    EXPECT_TRUE(comesTrue([] { return !hasChildren(); }));
}

INSTANTIATE_TEST_SUITE_P(OfManyKinds, LiesOf,
                         testing::Values("slot", "number", "size", "token", "floods", "is-silent",
                                         "hangs", "crashes"),
                         [](const auto& lie) {
                             std::string name = lie.param;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

/// Waits for nobody: not for a decoder, nor for a tool that makes a still or reads captions.
TEST_F(TroubledFilm, IsLeftAtOnceWhateverItIsAbout)
{
    constexpr qint64 atOnce = 100; // milliseconds
    constexpr int tries = 3;       // A loaded machine may be late once.
    const auto leaves = [&](const std::function<void()>& open) {
        for (int i = 0; i < tries; ++i) {
            open();
            QElapsedTimer timer;
            timer.start();
            close();
            if (timer.elapsed() <= atOnce)
                return true;
        }
        return false;
    };
    EXPECT_TRUE(leaves([&] { openFilm(plainFilm()); })) << "opening";
    EXPECT_TRUE(leaves([&] {
        openFilm(plainFilm());
        ASSERT_TRUE(soonReady());
        player().togglePlay();
    })) << "playing";
    EXPECT_TRUE(leaves([&] {
        openFilm(plainFilm());
        ASSERT_TRUE(soonReady());
        ::kill(m_engine->decoder(), SIGSTOP);
        player().seek(40);
    })) << "held by its decoder";
    EXPECT_TRUE(leaves([&] {
        openStills({.url = FileUrl::fromPath(plainFilm()), .video = video(25, 2)});
        player().seek(30);
    })) << "making a still";
    EXPECT_TRUE(leaves([&] {
        VideoSummary summary = video();
        summary.embeddedCaptions = {{.streamIndex = 2, .codec = u"subrip"_s, .language = u"eng"_s}};
        open({.url = file("subtitled.mkv", Clips::subtitled()), .video = summary}, maker());
        player().captions().showEmbedded(summary.embeddedCaptions->front());
    })) << "reading captions";
    EXPECT_TRUE(comesTrue([] { return !hasChildren(); }));
}

TEST_F(TroubledFilm, ManyOfThemLeaveNothingWhenTheyAreClosed)
{
    constexpr int openings = 40;
    const std::vector<FileUrl> files{
        FileUrl::fromPath(plainFilm()), write("noise.mov", QByteArray(5000, 'x')),
        FileUrl::fromPath(Clips::mpeg2InMxf()), FileUrl::fromPath(m_folder / "missing.mov"),
        FileUrl::fromPath(Clips::transportStream())};
    const auto openAndClose = [&](int i) {
        openTwoSeconds(files[static_cast<std::size_t>(i) % files.size()]);
        if (i % 3 == 0) // Some are closed while they open.
            return close();
        EXPECT_TRUE(soonReady());
        player().seek(i);
        if (i % 2 == 0)
            player().togglePlay();
        m_clock.pass(0.1);
        close();
    };
    for (int i = 0; i < 10; ++i) // What is made once.
        openAndClose(i);
    ASSERT_TRUE(comesTrue([] { return !hasChildren(); }));
    const HeldByProcess before;
    const auto bytes = ::mallinfo2().uordblks;
    for (int i = 0; i < openings; ++i)
        openAndClose(i);
    EXPECT_TRUE(comesTrue([&] { return HeldByProcess() == before; }));
    constexpr std::size_t slack = std::size_t{1} << 20U;
    EXPECT_LT(::mallinfo2().uordblks, bytes + slack) << "memory is where it was";
}

} // namespace
} // namespace vantroque
