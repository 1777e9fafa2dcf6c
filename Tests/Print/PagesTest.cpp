#include "Print/Composition.h"

#include <QImage>
#include <QPainter>

#include <gmock/gmock.h>

#include <cmath>

// How blocks share pages.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

Block block(double height)
{
    return {height, false, [](QPainter&, double) {}};
}

Block heading(double height)
{
    return {height, true, [](QPainter&, double) {}};
}

Pages::Place at(int page, double top)
{
    return {page, top};
}

TEST(Pages, BlocksFollowEachOtherFromTheTop)
{
    EXPECT_THAT(Pages::places({block(100), block(50), block(7)}),
                ElementsAre(at(1, 48), at(1, 148), at(1, 198)));
}

TEST(Pages, ABlockMayReachDownTo728)
{
    EXPECT_THAT(Pages::places({block(600), block(80)}), ElementsAre(at(1, 48), at(1, 648)));
    EXPECT_THAT(Pages::places({block(600), block(80.5)}), ElementsAre(at(1, 48), at(2, 66)));
}

TEST(Pages, ABlockThatIsTallerThanAPageStandsAtTheTopOfANewOneAndTheNextOnTheOneAfter)
{
    EXPECT_THAT(Pages::places({block(10), block(5000), block(10)}),
                ElementsAre(at(1, 48), at(2, 66), at(3, 66)));
    EXPECT_THAT(Pages::places({block(5000), block(5000)}), ElementsAre(at(1, 48), at(2, 66)));
}

TEST(Pages, AHeadingThatWouldStandAloneAtTheFootMovesWithItsFirstBlock)
{
    EXPECT_THAT(Pages::places({block(640), heading(20), block(30)}),
                ElementsAre(at(1, 48), at(2, 66), at(2, 86)));
    EXPECT_THAT(Pages::places({block(630), heading(20), block(30)}),
                ElementsAre(at(1, 48), at(1, 678), at(1, 698)));
}

TEST(Pages, AHeadingOverAHeadingMovesWithBoth)
{
    EXPECT_THAT(Pages::places({block(620), heading(26), heading(20), block(30)}),
                ElementsAre(at(1, 48), at(2, 66), at(2, 92), at(2, 112)));
}

TEST(Pages, AHeadingWithNothingBelowStaysWhereItFits)
{
    EXPECT_THAT(Pages::places({block(600), heading(20)}), ElementsAre(at(1, 48), at(1, 648)));
}

TEST(Pages, NoBlocksNeedNoPlaces)
{
    EXPECT_THAT(Pages::places({}), SizeIs(0));
}

QString words(int count)
{
    QStringList all;
    for (int i = 0; i < count; ++i)
        all << QStringLiteral("word%1").arg(i);
    return all.join(u' ');
}

TEST(Composition, WhatFitsOnAPageIsOneBlock)
{
    Composition composition;
    composition.add(Paragraph(words(20), TextStyle::plain(10), 200), {48, 0});
    const auto blocks = std::move(composition).blocks(100, true);
    ASSERT_THAT(blocks, SizeIs(1));
    EXPECT_EQ(blocks[0].height, 100);
    EXPECT_TRUE(blocks[0].keepWithNext);
}

TEST(Composition, WhatFitsOnNoPageIsPartedBetweenLines)
{
    Composition composition;
    const Paragraph text(words(1000), TextStyle::plain(10), 200);
    const double bottom = composition.add(text, {48, 0});
    ASSERT_GT(bottom, 2 * Pages::room);
    const auto blocks = std::move(composition).blocks(bottom + 6);
    double sum = 0;
    for (const Block& part : blocks) {
        EXPECT_LE(part.height, Pages::room + 6);
        sum += part.height;
    }
    EXPECT_DOUBLE_EQ(sum, bottom + 6);
    const double lines = (blocks.front().height) / text.lineHeight();
    EXPECT_NEAR(lines, std::round(lines), 1e-6);
}

} // namespace
} // namespace vantroque
