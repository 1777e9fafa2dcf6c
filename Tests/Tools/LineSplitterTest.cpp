#include "Tools/LineSplitter.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LineSplitterTest : public testing::Test {
protected:
    void feed(std::string_view bytes) { m_splitter.feed(bytes); }
    void feedSingly(std::string_view bytes)
    {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            feed(bytes.substr(i, 1));
    }

    std::vector<std::string> m_lines;
    LineSplitter m_splitter{[this](std::string_view line) { m_lines.emplace_back(line); }};
};

TEST_F(LineSplitterTest, BothLineEndsEndALineAndTheRestStaysPending)
{
    feed("a\rb\n\nc");
    EXPECT_THAT(m_lines, ElementsAre("a", "b"));
    EXPECT_EQ(m_splitter.pending(), "c");
    feed("\n");
    EXPECT_THAT(m_lines, ElementsAre("a", "b", "c"));
    EXPECT_EQ(m_splitter.pending(), "");
}

TEST_F(LineSplitterTest, CrLfIsOneLineEndEvenWhenCutBetween)
{
    feed("a\r\nb\r");
    feed("\nc\r\n");
    EXPECT_THAT(m_lines, ElementsAre("a", "b", "c"));
}

TEST_F(LineSplitterTest, ChunksMakeNoDifference)
{
    feedSingly("frame=1\rframe=2\r\nfin\xC3\xA9\n\n\nend");
    EXPECT_THAT(m_lines, ElementsAre("frame=1", "frame=2", "fin\xC3\xA9"));
    EXPECT_EQ(m_splitter.pending(), "end");
}

TEST_F(LineSplitterTest, ACharacterCutByAChunkIsDeliveredWhole)
{
    feed("a\xF0\x9F");
    feed("\x8E\xAC\n");
    EXPECT_THAT(m_lines, ElementsAre("a\xF0\x9F\x8E\xAC"));
}

TEST_F(LineSplitterTest, ALineThatIsNotUtf8IsDroppedAlone)
{
    feed("a\nb\xFF\nc\n\xC3\nd\n");
    EXPECT_THAT(m_lines, ElementsAre("a", "c", "d"));
}

TEST_F(LineSplitterTest, BlanksAndNulBytesAreContent)
{
    feed({" \na\0b\n", 6});
    EXPECT_THAT(m_lines, ElementsAre(" ", std::string("a\0b", 3)));
}

TEST_F(LineSplitterTest, NothingIsDeliveredOfNothing)
{
    feed("");
    feed("\r\n\n\r");
    EXPECT_THAT(m_lines, IsEmpty());
    EXPECT_EQ(m_splitter.pending(), "");
}

TEST_F(LineSplitterTest, ALineMayBeLong)
{
    const std::string line(5'000'000, 'x');
    feed(line.substr(0, 3'000'000));
    feed(line.substr(3'000'000) + '\n');
    EXPECT_TRUE(m_lines == std::vector{line});
}

} // namespace
} // namespace vantroque
