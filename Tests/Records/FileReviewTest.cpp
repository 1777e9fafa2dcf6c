#include "Records/FileReview.h"

#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"

#include <ctime>
#include <limits>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using Limits = std::numeric_limits<std::int64_t>;

AnnotationStroke stroke(std::uint32_t number)
{
    AnnotationStroke stroke;
    stroke.id = QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1);
    return stroke;
}

ReviewComment comment(std::int64_t frame, const QString& text)
{
    ReviewComment comment;
    comment.frame = frame;
    comment.frameRate = 25;
    comment.text = text;
    return comment;
}

FileReview reviewOf(const std::vector<ReviewComment>& comments)
{
    FileReview review;
    review.comments = comments;
    return review;
}

std::vector<std::string> texts(const std::vector<ReviewComment>& comments)
{
    std::vector<std::string> found;
    for (const ReviewComment& comment : comments)
        found.push_back(comment.text.toStdString());
    return found;
}

ReviewSignOff approvalOver(const std::vector<QString>& failing)
{
    ReviewSignOff signOff;
    signOff.decidedAt = QDateTime({2026, 3, 1}, {13, 5}, Qt::UTC);
    signOff.qcVerdictWhenSigned = Verdict::fail;
    signOff.failingWhenSigned = failing;
    return signOff;
}

/// American English in a zone three hours before UTC.
class DetailLine : public testing::Test {
protected:
    DetailLine()
    {
        ::tzset();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    ~DetailLine() override { QLocale::setDefault(QLocale::system()); }

private:
    const ScopedVariable m_zone{"TZ", "XXX-3"};
};

TEST(ReviewComment, OfNoRateCountsAt25)
{
    ReviewComment note = comment(50, u""_s);
    for (const double rate : {0.0, -30.0}) {
        note.frameRate = rate;
        EXPECT_EQ(note.seconds(), 2);
        EXPECT_EQ(note.timecode().text(), u"00:00:02:00"_s);
    }
}

TEST(ReviewComment, CountsAtItsOwnRate)
{
    ReviewComment note = comment(61, u""_s);
    note.frameRate = 30000.0 / 1001;
    EXPECT_DOUBLE_EQ(note.seconds(), 61 * 1001 / 30000.0);
    EXPECT_EQ(note.timecode().text(), u"00:00:02:01"_s);
}

TEST(FileReview, SortsCommentsByFrameAndKeepsTheOrderOfAddingOnOne)
{
    const auto review =
        reviewOf({comment(9, u"a"_s), comment(3, u"b"_s), comment(9, u"c"_s), comment(3, u"d"_s)});
    EXPECT_THAT(texts(review.sortedComments()), ElementsAre("b", "d", "a", "c"));
    EXPECT_THAT(texts(review.comments), ElementsAre("a", "b", "c", "d"));
}

TEST(FileReview, AToleranceOf0MatchesOnlyTheExactFrame)
{
    const auto review = reviewOf({comment(9, u"a"_s), comment(10, u"b"_s), comment(11, u"c"_s)});
    EXPECT_THAT(texts(review.commentsAt(10, 0)), ElementsAre("b"));
    EXPECT_THAT(texts(review.commentsAt(12, 0)), IsEmpty());
}

TEST(FileReview, AToleranceReachesToBothSidesInclusive)
{
    const auto review = reviewOf({comment(13, u"a"_s), comment(7, u"b"_s), comment(8, u"c"_s),
                                  comment(12, u"d"_s), comment(10, u"e"_s)});
    EXPECT_THAT(texts(review.commentsAt(10, 2)), ElementsAre("c", "d", "e"));
    EXPECT_THAT(texts(review.commentsAt(10, -1)), IsEmpty());
}

TEST(FileReview, FindsCommentsOnAnyFrameThatAFileMayHold)
{
    const auto review = reviewOf({comment(Limits::min(), u"a"_s), comment(Limits::max(), u"b"_s)});
    EXPECT_THAT(texts(review.commentsAt(0, 10)), IsEmpty());
    EXPECT_THAT(texts(review.commentsAt(Limits::max(), 1)), ElementsAre("b"));
    EXPECT_THAT(texts(review.commentsAt(Limits::min(), Limits::max())), ElementsAre("a"));
}

TEST(FileReview, GivesTheStrokesOfThoseCommentsInOrder)
{
    auto review = reviewOf({comment(11, u"a"_s), comment(50, u"b"_s), comment(10, u"c"_s)});
    review.comments[0].strokes = {stroke(1), stroke(2)};
    review.comments[1].strokes = {stroke(3)};
    review.comments[2].strokes = {stroke(4)};
    EXPECT_THAT(review.strokesAt(10, 1), ElementsAre(stroke(1), stroke(2), stroke(4)));
}

TEST(AnnotationStroke, InksHaveNames)
{
    using Ink = AnnotationStroke::Ink;
    EXPECT_EQ(AnnotationStroke::displayName(Ink::red), u"Red"_s);
    EXPECT_EQ(AnnotationStroke::displayName(Ink::amber), u"Amber"_s);
    EXPECT_EQ(AnnotationStroke::displayName(Ink::white), u"White"_s);
}

TEST(ReviewSignOff, DecisionsHaveLabels)
{
    using Decision = ReviewSignOff::Decision;
    EXPECT_EQ(ReviewSignOff::label(Decision::approved), u"Approved"_s);
    EXPECT_EQ(ReviewSignOff::actionLabel(Decision::approved), u"Approve"_s);
    EXPECT_EQ(ReviewSignOff::label(Decision::needsRevisions), u"Needs revisions"_s);
    EXPECT_EQ(ReviewSignOff::actionLabel(Decision::needsRevisions), u"Needs revisions"_s);
}

TEST(ReviewSignOff, AnApprovalOfAFailingFileCountsThePlatforms)
{
    EXPECT_TRUE(approvalOver({}).overrodeFailure());
    EXPECT_EQ(approvalOver({u"A"_s}).overrideNote(), u"over 1 failing platform"_s);
    EXPECT_EQ(approvalOver({u"A"_s, u"B"_s}).overrideNote(), u"over 2 failing platforms"_s);
}

TEST_F(DetailLine, AnApprovalOverAReportWithoutProfilesHasNoSuffix)
{
    EXPECT_EQ(approvalOver({}).overrideNote(), u"over a failing check"_s);
    EXPECT_EQ(approvalOver({}).detailLine(QLocale::ShortFormat), u"3/1/26, 4:05 PM"_s);
}

TEST_F(DetailLine, NamesTheFailingPlatforms)
{
    EXPECT_EQ(approvalOver({u"TikTok"_s, u"Test TV"_s}).detailLine(QLocale::LongFormat),
              u"Sunday, March 1, 2026, 4:05 PM, signed when it failed TikTok, Test TV"_s);
}

TEST_F(DetailLine, OfADecisionThatOverrodeNothingNamesNone)
{
    ReviewSignOff signOff = approvalOver({u"TikTok"_s});
    signOff.decision = ReviewSignOff::Decision::needsRevisions;
    EXPECT_EQ(signOff.detailLine(QLocale::ShortFormat), u"3/1/26, 4:05 PM"_s);
}

TEST(ReviewSignOff, NeedsRevisionsOverridesNothingWhateverTheVerdict)
{
    ReviewSignOff signOff = approvalOver({u"A"_s});
    signOff.decision = ReviewSignOff::Decision::needsRevisions;
    for (const auto verdict : {Verdict::pass, Verdict::warn, Verdict::fail, Verdict::info}) {
        signOff.qcVerdictWhenSigned = verdict;
        EXPECT_FALSE(signOff.overrodeFailure());
        EXPECT_EQ(signOff.overrideNote(), std::nullopt);
    }
}

TEST(ReviewSignOff, AnApprovalOfAFileThatDoesNotFailOverridesNothing)
{
    ReviewSignOff signOff = approvalOver({u"A"_s});
    for (const auto verdict : {std::optional<Verdict>(), std::optional(Verdict::pass),
                               std::optional(Verdict::warn), std::optional(Verdict::info)}) {
        signOff.qcVerdictWhenSigned = verdict;
        EXPECT_EQ(signOff.overrideNote(), std::nullopt);
    }
}

} // namespace
} // namespace vantroque
