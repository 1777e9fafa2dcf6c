#include "Model/PlayerFixture.h"

#include "Probe/Prober.h"

// Files that cannot be played, as stills that ffmpeg makes of real media.

namespace vantroque {
namespace {

using testing::IsEmpty;
using Media::operator+;
namespace fs = std::filesystem;

/// 25 frames, each in a shade of its own: ten codes from one to the next.
fs::path counted(const std::string& name, const std::vector<std::string>& output)
{
    return Media::make(
        {name, std::vector<std::string>{"-f", "lavfi", "-i",
                                        "color=black:s=64x36:r=25:d=1,format=yuv420p,"
                                        "geq=lum='10*N':cb=128:cr=128"}
                   + output});
}

std::vector<std::string> lossless()
{
    return {"-c:v", "libx264", "-qp", "0", "-preset", "ultrafast", "-color_range", "pc"};
}

fs::path mp4()
{
    return counted("counted.mp4", lossless());
}

/// The same, half a second late: sound comes first.
fs::path late()
{
    return Media::make({"counted-late.mp4",
                        std::vector<std::string>{"-f", "lavfi", "-i", "sine=d=2", "-itsoffset",
                                                 "0.5", "-i", mp4().native(), "-map", "0:a", "-map",
                                                 "1:v", "-c:v", "copy", "-c:a", "aac"}});
}

class Stills : public PlayerTest {
protected:
    PlayerController& openFile(const fs::path& path)
    {
        const FileUrl url = FileUrl::fromPath(path);
        const auto media = Prober::probe(url, Prober::Captions::leftOut);
        EXPECT_TRUE(media) << media.error().description.toStdString();
        const auto report = Analyzer::report(*media, {});
        return openStills(
            {.url = url, .video = *report.video, .stream = media->video->position.value_or(0)});
    }
    /// The frame that the picture is, by its shade.
    std::int64_t shade() const { return (qGreen(player().shown()->picture.pixel(5, 5)) + 5) / 10; }
    bool soonShown(std::int64_t number)
    {
        return soon([&] { return player().shown() && player().shown()->frame == number; });
    }
    PlayerController& player() const { return *m_player; }
};

TEST_F(Stills, AreShownWhereNothingCanBePlayed)
{
    openFile(mp4());
    EXPECT_TRUE(player().usesFrameStepper());
    EXPECT_FALSE(player().isReady());
    ASSERT_TRUE(soonShown(0));
    EXPECT_EQ(player().shown()->picture.width(), 960) << "brought to one width";
}

TEST_F(Stills, AreTheFramesOfTheirNumbers)
{
    openFile(mp4());
    ASSERT_EQ(player().lastFrameIndex(), 24);
    for (const int number : {0, 7, 1, 24, 12, 13, 23}) {
        player().seek(number);
        ASSERT_TRUE(soonShown(number));
        EXPECT_EQ(shade(), number);
        EXPECT_EQ(player().timecode().frame(), number);
    }
}

TEST_F(Stills, CountFromTheFirstFrameOfAPictureThatBeginsLate)
{
    openFile(late());
    for (const int number : {0, 9, 20}) {
        player().seek(number);
        ASSERT_TRUE(soonShown(number));
        EXPECT_EQ(shade(), number);
    }
}

TEST_F(Stills, AreExactInAStreamWithoutAnIndex)
{
    openFile(counted("counted.ts", lossless() + std::vector<std::string>{"-g", "12"}));
    for (const int number : {17, 3}) {
        player().seek(number);
        ASSERT_TRUE(soonShown(number));
        EXPECT_EQ(shade(), number);
    }
}

TEST_F(Stills, OfTheChosenPictureAndNotOfItsCover)
{
    openFile(Clips::coverAhead(mp4()));
    player().seek(11);
    ASSERT_TRUE(soonShown(11));
    EXPECT_EQ(shade(), 11);
}

TEST_F(Stills, PlayWalksAndWaitsForASlowStill)
{
    openFile(mp4());
    player().togglePlay();
    EXPECT_TRUE(player().shuttle().isWalking());
    m_clock.pass(0.5);
    EXPECT_EQ(frame(), 0) << "the first still is not there yet";
    EXPECT_EQ(rate(), 1) << "and the walk goes on";
    ASSERT_TRUE(soonShown(0));
    m_clock.pass(0.0667);
    EXPECT_EQ(frame(), 1);
    m_clock.pass(1);
    EXPECT_EQ(frame(), 1) << "one at a time";
    ASSERT_TRUE(soonShown(1));
    EXPECT_EQ(shade(), 1);
}

TEST_F(Stills, AWalkEndsAtTheLastFrame)
{
    openFile(mp4());
    player().seek(23);
    ASSERT_TRUE(soonShown(23));
    pressL();
    m_clock.pass(0.1);
    ASSERT_TRUE(soonShown(24));
    m_clock.pass(1);
    EXPECT_EQ(frame(), 24);
    EXPECT_EQ(rate(), 0);
}

TEST_F(Stills, OfManySeeksTheNewestWins)
{
    openFile(mp4());
    int pictures = 0;
    QObject::connect(m_player.get(), &PlayerController::pictureChanged, m_player.get(),
                     [&] { ++pictures; });
    for (int number = 1; number <= 20; ++number)
        player().seek(number);
    ASSERT_TRUE(soonShown(20));
    EXPECT_EQ(shade(), 20);
    EXPECT_LE(pictures, 2) << "those between were never made";
}

TEST_F(Stills, OfAMissingFileThereAreNone)
{
    openStills({.url = FileUrl::fromPath(m_folder / "gone.mov"), .video = video()});
    player().seek(40);
    EXPECT_EQ(frame(), 40);
    ASSERT_TRUE(soon([&] { return player().captions().isIdle(); }));
    player().step(1);
    EXPECT_EQ(frame(), 41);
    EXPECT_FALSE(player().shown());
}

TEST_F(Stills, AFileThatVanishesLeavesItsLastPicture)
{
    const FileUrl url = file("own.mp4", mp4());
    openStills({.url = url, .video = video(25, 1)});
    ASSERT_TRUE(soonShown(0));
    fs::remove(url.path());
    player().togglePlay();
    m_clock.pass(0.2);
    EXPECT_TRUE(soon([&] {
        m_clock.pass(0.1);
        return rate() == 0;
    })) << "the walk goes on over frames that cannot be had";
    ASSERT_TRUE(player().shown());
    EXPECT_EQ(player().shown()->frame, 0);
}

TEST_F(Stills, ClosingStopsTheToolAtHand)
{
    openFile(mp4());
    player().seek(3);
    close();
    EXPECT_EQ(m_player, nullptr);
}

TEST_F(Stills, ScopesAreOfTheFrameOnScreen)
{
    openFile(mp4());
    player().scopes().setScopeOptions({.waveform = true});
    ASSERT_TRUE(soonShown(0));
    m_clock.pass(0.1);
    ASSERT_TRUE(soon([&] { return !player().scopes().scopeImages().waveform.isNull(); }));
    const QImage black = player().scopes().scopeImages().waveform;
    EXPECT_EQ(black.size(), QSize(256, 128));
    player().seek(20);
    ASSERT_TRUE(soonShown(20));
    m_clock.pass(0.1);
    EXPECT_TRUE(soon([&] { return player().scopes().scopeImages().waveform != black; }));
}

} // namespace
} // namespace vantroque
