#include "Model/PlayerFixture.h"

// Notes, drawings and decisions of a player, kept in the real store of reviews.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

AnnotationStroke stroke(double x = 0.5)
{
    return {.id = QUuid::createUuid(), .points = {{x, 0.25}, {x, 0.75}}};
}

class Notes : public PlayerTest {
protected:
    void openReviewed(const VideoSummary& summary = video(), PlayerController::Report report = {})
    {
        bool isOpen = false;
        open(playedFile(summary), m_film.maker(), std::move(report));
        QObject::connect(&notes(), &Notebook::opened, m_player.get(), [&] { isOpen = true; });
        ASSERT_TRUE(soon([&] { return isOpen; }));
    }
    Notebook& notes() { return player().notebook(); }
    void write(const QString& text)
    {
        notes().setComposing(true);
        notes().setDraftText(text);
        player().saveComment(u"Anna"_s);
    }
    bool soonWritten()
    {
        return soon([&] { return m_book.isIdle(); });
    }
    std::optional<FileReview> stored()
    {
        return ReviewStore::peek(ReviewStore::fingerprint(m_url).value());
    }
    QStringList texts()
    {
        QStringList texts;
        for (const ReviewComment& comment : notes().comments())
            texts << comment.text;
        return texts;
    }
};

TEST_F(Notes, AreKeptTheMomentTheyAreMade)
{
    openReviewed();
    player().seek(30);
    notes().addDraftStroke(stroke());
    EXPECT_TRUE(notes().isComposing()) << "who draws writes a note";
    notes().setTool(AnnotationTool::arrow);
    write(u"  too dark \n"_s);
    EXPECT_FALSE(notes().isComposing());
    EXPECT_FALSE(notes().hasDraft());
    EXPECT_EQ(notes().tool(), AnnotationTool::pointer);
    ASSERT_TRUE(soonWritten());
    ASSERT_TRUE(stored());
    ASSERT_THAT(stored()->comments, SizeIs(1));
    const ReviewComment comment = stored()->comments[0];
    EXPECT_EQ(comment.text, u"too dark"_s);
    EXPECT_EQ(comment.frame, 30);
    EXPECT_EQ(comment.author, u"Anna"_s);
    EXPECT_THAT(comment.strokes, SizeIs(1));
    EXPECT_TRUE(comment.createdAt.isValid());
    EXPECT_EQ(stored()->videoWidth, 16);
    EXPECT_EQ(stored()->videoHeight, 8);
    EXPECT_EQ(player().focus().selectedCommentID(), comment.id);
    EXPECT_THAT(texts(), ElementsAre(u"too dark"_s));
}

TEST_F(Notes, AnEmptyDraftSavesNothingAndClosesTheEditor)
{
    openReviewed();
    notes().setTool(AnnotationTool::pen);
    write(u" \n "_s);
    EXPECT_FALSE(notes().isComposing());
    EXPECT_EQ(notes().draftText(), QString());
    EXPECT_EQ(notes().tool(), AnnotationTool::pointer);
    ASSERT_TRUE(soonWritten());
    EXPECT_FALSE(stored());
    EXPECT_EQ(player().focus().selectedCommentID(), std::nullopt);
}

TEST_F(Notes, ADrawingAloneIsANote)
{
    openReviewed();
    notes().addDraftStroke(stroke());
    EXPECT_TRUE(notes().hasDraft());
    player().saveComment(std::nullopt);
    ASSERT_TRUE(soonWritten());
    ASSERT_THAT(stored()->comments, SizeIs(1));
    EXPECT_EQ(stored()->comments[0].author, std::nullopt);
}

TEST_F(Notes, AtThirtyOverAThousandAndOneTheRateIsKeptAsItIs)
{
    openReviewed(video(29.97, 10));
    player().seek(100);
    write(u"here"_s);
    ASSERT_TRUE(soonWritten());
    EXPECT_EQ(stored()->comments[0].frameRate, 29.97);
    EXPECT_EQ(stored()->comments[0].frame, 100);
}

TEST_F(Notes, WithoutARateCountAt25)
{
    openReviewed(video(0, 10));
    write(u"here"_s);
    ASSERT_TRUE(soonWritten());
    EXPECT_EQ(stored()->comments[0].frameRate, 25);
}

TEST_F(Notes, UndoAndRedoWalkThroughTheDrawing)
{
    openReviewed();
    EXPECT_FALSE(notes().undoDrawing());
    const AnnotationStroke first = stroke(0.1);
    const AnnotationStroke second = stroke(0.2);
    notes().addDraftStroke(first);
    notes().addDraftStroke(second);
    EXPECT_TRUE(notes().undoDrawing());
    EXPECT_THAT(notes().draftStrokes(), ElementsAre(first));
    EXPECT_TRUE(notes().redoDrawing());
    EXPECT_THAT(notes().draftStrokes(), ElementsAre(first, second));
    EXPECT_FALSE(notes().redoDrawing());
    EXPECT_TRUE(notes().undoDrawing());
    notes().addDraftStroke(stroke(0.3));
    EXPECT_FALSE(notes().redoDrawing()) << "what was undone is gone";
    notes().undoDraftStroke();
    EXPECT_THAT(notes().draftStrokes(), ElementsAre(first));
    EXPECT_FALSE(notes().redoDrawing()) << "without a way back";
}

TEST_F(Notes, WithTextTheTextHasTheUndo)
{
    openReviewed();
    notes().addDraftStroke(stroke());
    notes().setDraftText(u"a"_s);
    EXPECT_FALSE(notes().undoDrawing());
    EXPECT_FALSE(notes().redoDrawing());
    EXPECT_THAT(notes().draftStrokes(), SizeIs(1));
}

TEST_F(Notes, DrawingsShowAtTheirFrameAndBesideIt)
{
    openReviewed();
    player().seek(40);
    notes().addDraftStroke(stroke());
    player().saveComment(std::nullopt);
    ASSERT_TRUE(soonWritten());
    for (const int number : {39, 40, 41}) {
        player().seek(number);
        EXPECT_THAT(player().overlay().strokes, SizeIs(1)) << number;
    }
    player().seek(42);
    EXPECT_THAT(player().overlay().strokes, IsEmpty());
}

TEST_F(Notes, AreInOrderOfTheirFrames)
{
    openReviewed();
    for (const auto& [number, text] : {std::pair(50, u"b"_s), std::pair(10, u"a"_s)}) {
        player().seek(number);
        write(text);
    }
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(texts(), ElementsAre(u"a"_s, u"b"_s));
    player().goTo(notes().comments()[1]);
    EXPECT_EQ(frame(), 50);
    EXPECT_EQ(player().focus().selectedCommentID(), notes().comments()[1].id);
}

TEST_F(Notes, ThatAreDeletedAreSelectedNoLonger)
{
    openReviewed();
    write(u"one"_s);
    write(u"two"_s);
    ASSERT_TRUE(soonWritten());
    const QUuid two = notes().comments()[1].id;
    ASSERT_EQ(player().focus().selectedCommentID(), two);
    player().removeComment(notes().comments()[0].id);
    EXPECT_EQ(player().focus().selectedCommentID(), two);
    player().removeComment(two);
    EXPECT_EQ(player().focus().selectedCommentID(), std::nullopt);
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(texts(), IsEmpty());
    EXPECT_THAT(stored()->comments, IsEmpty());
}

TEST_F(Notes, ThatWereDeletedComeBackTheLastOneFirstAndAreStored)
{
    openReviewed();
    write(u"one"_s);
    player().seek(30);
    write(u"two"_s);
    ASSERT_TRUE(soonWritten());
    const auto before = notes().comments();
    EXPECT_FALSE(player().bringBackComment());
    player().removeComment(before[0].id);
    player().removeComment(before[1].id);
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(stored()->comments, IsEmpty());
    EXPECT_TRUE(player().bringBackComment());
    EXPECT_EQ(player().focus().selectedCommentID(), before[1].id);
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(texts(), ElementsAre(u"two"_s));
    ASSERT_EQ(stored()->comments.size(), 1U);
    EXPECT_EQ(stored()->comments[0].id, before[1].id);
    EXPECT_TRUE(player().bringBackComment());
    ASSERT_TRUE(soonWritten());
    EXPECT_EQ(notes().comments(), before);
    EXPECT_FALSE(player().bringBackComment());
}

TEST_F(Notes, WrittenElsewhereAreNotLost)
{
    openReviewed();
    m_book.change(
        ReviewStore::fingerprint(m_url).value(), m_url,
        [](FileReview& review) {
            review.comments.push_back({.id = QUuid::createUuid(),
                                       .text = u"from elsewhere"_s,
                                       .createdAt = QDateTime::currentDateTimeUtc()});
        },
        nullptr);
    write(u"mine"_s);
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(texts(), ElementsAre(u"from elsewhere"_s, u"mine"_s));
    EXPECT_THAT(stored()->comments, SizeIs(2));
}

TEST_F(Notes, AreThereTheNextTime)
{
    openReviewed();
    write(u"tomorrow"_s);
    close();
    openReviewed();
    EXPECT_THAT(texts(), ElementsAre(u"tomorrow"_s));
}

TEST_F(Notes, APlayerThatClosesMeanwhileLosesNone)
{
    openReviewed();
    write(u"last"_s);
    close();
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(stored()->comments, SizeIs(1));
}

TEST_F(Notes, ThatCannotBeStoredAreToldAndStay)
{
    openReviewed();
    m_folder.write("data/Vantroque/Reviews", "a file where the folder should be");
    write(u"kept"_s);
    ASSERT_TRUE(soonWritten());
    ASSERT_TRUE(player().exportMessage());
    EXPECT_TRUE(player().exportMessage()->startsWith(u"Could not save the comment: "_s))
        << player().exportMessage()->toStdString();
    EXPECT_THAT(texts(), ElementsAre(u"kept"_s));
    fs::remove(m_folder / "data/Vantroque/Reviews");
    write(u"once more"_s);
    ASSERT_TRUE(soonWritten());
    ASSERT_TRUE(stored());
    EXPECT_THAT(stored()->comments, SizeIs(2));
}

TEST_F(Notes, OfAFileThatCannotBeReadThereAreNone)
{
    fs::remove(m_url.path());
    openReviewed();
    EXPECT_FALSE(notes().isOpen());
    write(u"nowhere"_s);
    EXPECT_EQ(notes().draftText(), u"nowhere"_s) << "the words stay in the editor";
    EXPECT_TRUE(notes().isComposing());
    player().setSignOff(ReviewSignOff::Decision::approved);
    ASSERT_TRUE(soonWritten());
    EXPECT_EQ(notes().review(), nullptr);
}

TEST_F(Notes, WhatIsDecidedWhileTheFileIsStillBeingReadIsKept)
{
    open();
    ASSERT_FALSE(notes().isOpen());
    player().setSignOff(ReviewSignOff::Decision::approved);
    notes().setCaptionsPath(anyFile("words.srt"));
    ASSERT_TRUE(soon([&] { return notes().review() != nullptr; }));
    ASSERT_TRUE(soonWritten());
    ASSERT_TRUE(stored()->signOff);
    EXPECT_EQ(stored()->signOff->decision, ReviewSignOff::Decision::approved);
    EXPECT_TRUE(stored()->captionsPath);
    EXPECT_TRUE(notes().review()->signOff) << "and seen";
}

TEST_F(Notes, ADecisionHoldsWhatTheCheckSaid)
{
    auto report = std::make_shared<FileReport>();
    ProfileReport failing{.profileID = u"a"_s, .profileName = u"Alpha"_s};
    failing.checks.push_back({.id = u"codec"_s, .verdict = Verdict::fail});
    report->profiles = {failing};
    openReviewed(video(), report);
    player().setSignOff(ReviewSignOff::Decision::approved);
    ASSERT_TRUE(soonWritten());
    ASSERT_TRUE(stored()->signOff);
    EXPECT_EQ(stored()->signOff->decision, ReviewSignOff::Decision::approved);
    EXPECT_EQ(stored()->signOff->qcVerdictWhenSigned, Verdict::fail);
    EXPECT_EQ(stored()->signOff->qcSummaryWhenSigned, report->summaryHeadline());
    EXPECT_THAT(stored()->signOff->failingWhenSigned, ElementsAre(u"Alpha"_s));
    EXPECT_TRUE(notes().review()->signOff->overrodeFailure());
    player().setReport(std::make_shared<FileReport>());
    player().setSignOff(ReviewSignOff::Decision::needsRevisions);
    ASSERT_TRUE(soonWritten());
    EXPECT_THAT(stored()->signOff->failingWhenSigned, IsEmpty()) << "of the newest report";
    player().setSignOff(std::nullopt);
    ASSERT_TRUE(soonWritten());
    EXPECT_EQ(stored()->signOff, std::nullopt);
}

} // namespace
} // namespace vantroque
