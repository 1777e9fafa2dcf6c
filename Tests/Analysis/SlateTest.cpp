#include "Analysis/TextOnTheRoad.h"

// What the slate says.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

TEST(Slate, IsReadAtHalfItsLength)
{
    MediaInfo media = measured();
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    Analyzer::readSlateIfNeeded(media, {withSlate(1), withSlate(3), bareProfile(), withSlate(2)},
                                &readers.pool);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"ABCD1234"_s)));
    ASSERT_THAT(tools.calls("ffmpeg"), SizeIs(1));
    const auto call = tools.calls("ffmpeg")[0];
    const auto place = std::ranges::find(call, "-ss");
    ASSERT_NE(place, call.end());
    EXPECT_EQ(*std::next(place), "1.500000") << "of the longest";
}

TEST(Slate, IsReadOnce)
{
    MediaInfo media = measured();
    Readers readers;
    ASSERT_TRUE(Analyzer::rescore(media, {withSlate(2)}, &readers.pool));
    ASSERT_TRUE(Analyzer::rescore(media, {withSlate(3)}, &readers.pool));
    EXPECT_EQ(readers.slates, 1);
    EXPECT_THAT(media.signal->slateTextLines, Optional(ElementsAre(u"ABCD1234"_s)));
}

TEST(Slate, ThatCannotBeReadHasNoLines)
{
    for (const auto& start : {FakeRecognizer::failing(), FakeRecognizer::notStarting()}) {
        MediaInfo media = measured();
        RecognizerPool pool(start);
        Analyzer::readSlateIfNeeded(media, {withSlate(2)}, &pool);
        EXPECT_THAT(media.signal->slateTextLines, Optional(IsEmpty()));
    }
}

TEST(Slate, IsNotReadUnlessAProfileDescribesOne)
{
    MediaInfo media = measured();
    Readers readers;
    Analyzer::readSlateIfNeeded(media, placement, &readers.pool);
    EXPECT_EQ(media.signal->slateTextLines, std::nullopt);
    media.signal.reset();
    Analyzer::readSlateIfNeeded(media, {withSlate(2)}, &readers.pool);
    EXPECT_EQ(media.signal, std::nullopt) << "without a decode";
    EXPECT_EQ(readers.slates, 0);
}

} // namespace
} // namespace vantroque
