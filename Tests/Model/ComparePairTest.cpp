#include "VantroqueApp/Model/Compare/ComparePair.h"
#include "Model/CompareFixture.h"

namespace vantroque {
namespace {

class ComparedPair : public CompareTest {
protected:
    ~ComparedPair() override { m_pair.reset(); }

    ComparePair& openPair(const std::vector<VideoSummary>& videos)
    {
        m_pair.reset();
        m_pair = std::make_unique<ComparePair>(open(videos));
        return *m_pair;
    }
    ComparePair& pair() { return *m_pair; }
    bool soonCurrent()
    {
        return soon([this] { return pair().isCurrent(); });
    }
    /// The difference, grey, that the picture shows.
    int shown() { return qGreen(pair().difference()->picture.image.pixel(0, 0)); }

    std::unique_ptr<ComparePair> m_pair;
};

TEST_F(ComparedPair, IsTheFirstTwoOfThePage)
{
    openPair({video(4), video(4), video(4)});
    EXPECT_EQ(pair().a(), &tile(0));
    EXPECT_EQ(pair().b(), &tile(1));
}

TEST_F(ComparedPair, TheTwoThatWereClickedLastAreAAndB)
{
    openPair({video(4), video(4), video(4)});
    pair().choose(tile(2));
    EXPECT_EQ(pair().a(), &tile(1));
    EXPECT_EQ(pair().b(), &tile(2));
    pair().choose(tile(2));
    EXPECT_EQ(pair().a(), &tile(1)) << "twice the same";
    pair().choose(tile(1));
    EXPECT_EQ(pair().a(), &tile(2));
    EXPECT_EQ(pair().b(), &tile(1));
    pair().swap();
    EXPECT_EQ(pair().a(), &tile(1));
    EXPECT_EQ(pair().b(), &tile(2));
}

TEST_F(ComparedPair, OneVersionStaysAmongTheTiles)
{
    openPair({video(4)});
    EXPECT_FALSE(pair().isPair());
    pair().setMode(CompareMode::wipe);
    EXPECT_EQ(pair().mode(), CompareMode::tiles);
}

TEST_F(ComparedPair, TheEdgeStaysOnThePicture)
{
    openPair({video(4), video(4)});
    EXPECT_EQ(pair().wipeEdge(), 0.5);
    pair().setWipeEdge(-1);
    EXPECT_EQ(pair().wipeEdge(), 0);
    pair().setWipeEdge(7);
    EXPECT_EQ(pair().wipeEdge(), 1);
}

TEST_F(ComparedPair, EqualFramesHaveNoDifference)
{
    openPair({video(4), video(4)});
    EXPECT_FALSE(pair().difference());
    pair().setMode(CompareMode::difference);
    ASSERT_TRUE(soonCurrent());
    EXPECT_TRUE(pair().difference()->picture.isEqual);
    EXPECT_EQ(shown(), 0);
}

TEST_F(ComparedPair, ADifferenceIsTimesTheGain)
{
    openPair({video(4), video(4)});
    compare().scrub(id(1), 0.12); // three frames, and as many shades
    pair().setMode(CompareMode::difference);
    ASSERT_TRUE(soonCurrent());
    EXPECT_FALSE(pair().difference()->picture.isEqual);
    EXPECT_EQ(shown(), 12) << "with the gain of 4";
    pair().setGain(1);
    EXPECT_FALSE(pair().isCurrent());
    ASSERT_TRUE(soonCurrent());
    EXPECT_EQ(shown(), 3);
    pair().setGain(16);
    ASSERT_TRUE(soonCurrent());
    EXPECT_EQ(shown(), 48);
}

TEST_F(ComparedPair, IsOnlyOfFramesThatBelongTogether)
{
    openPair({video(4), video(4)});
    pair().setMode(CompareMode::difference);
    ASSERT_TRUE(soonCurrent());
    m_films[1].hasAll = false;
    m_films[1].atHand.clear();
    compare().seek(2);
    ASSERT_TRUE(soon([&] { return tile(0).pictures().shown()->frame == 50; }));
    EXPECT_FALSE(pair().isCurrent());
    EXPECT_TRUE(pair().difference()->picture.isEqual) << "of the frames before";
    EXPECT_EQ(pair().difference()->frameOfA, 0);
    m_films[1].arrive(50);
    ASSERT_TRUE(soonCurrent());
    EXPECT_EQ(pair().difference()->frameOfB, 50);
    EXPECT_TRUE(pair().difference()->picture.isEqual);
}

TEST_F(ComparedPair, FollowsThePositionAndTheSwap)
{
    openPair({video(4), video(4)});
    compare().scrub(id(1), 0.2);
    pair().setMode(CompareMode::difference);
    ASSERT_TRUE(soonCurrent());
    compare().seek(1);
    ASSERT_TRUE(soonCurrent());
    EXPECT_EQ(pair().difference()->frameOfA, 25);
    EXPECT_EQ(pair().difference()->frameOfB, 30);
    pair().swap();
    ASSERT_TRUE(soonCurrent());
    EXPECT_EQ(pair().difference()->frameOfA, 30);
    EXPECT_EQ(shown(), 20) << "the same both ways";
}

TEST_F(ComparedPair, StillsHaveNoSamplesToBeCompared)
{
    openPair({video(4), video(4)});
    pair().setMode(CompareMode::difference);
    ASSERT_TRUE(soonCurrent());
    EXPECT_EQ(pair().withoutSamples(), nullptr);
    m_films[1].become(HandFilm::State::failed);
    EXPECT_EQ(pair().withoutSamples(), &tile(1));
}

TEST_F(ComparedPair, SaysHowBWasBroughtToA)
{
    auto other = video(4);
    other.width = 9;
    other.height = 16;
    other.fullRange = false;
    openPair({video(4), other});
    EXPECT_EQ(pair().match().wipeWords(), u"fitted into A's picture"_s);
    EXPECT_EQ(pair().match().differenceWords(), u"fitted into A's picture, brought to A's range"_s);
}

TEST_F(ComparedPair, SaysWhatItCannotSee)
{
    const auto words = [this](const std::optional<QString>& chroma, std::optional<int> bits) {
        const auto file = [this](const std::string& name) {
            return PlayedFile{.url = anyFile(name), .video = video(4)};
        };
        PlayedFile other = file("b.mov");
        other.chroma = chroma;
        other.sampleBits = bits;
        m_pair.reset();
        m_pair = std::make_unique<ComparePair>(
            open({{.file = file("a.mov"), .name = u"a"_s}, {.file = other, .name = u"b"_s}}));
        return pair().reducedWords();
    };
    EXPECT_EQ(words({}, {}), std::nullopt);
    EXPECT_EQ(words(u"420"_s, 10), std::nullopt);
    EXPECT_EQ(words(u"422"_s, 10), u"compared as 4:2:0"_s);
    EXPECT_EQ(words(u"420"_s, 12), u"compared in 10 bits"_s);
    EXPECT_EQ(words(u"444"_s, 12), u"compared as 4:2:0 in 10 bits"_s);
}

} // namespace
} // namespace vantroque
