#include "Model/ModelFixture.h"

#include "Review/ReviewStore.h"

#include <filesystem>
#include <thread>

// Reviews with one owner: what several change at the same time, and what becomes of it.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

ReviewBook::Edit withNote(const QString& text)
{
    return [text](FileReview& review) {
        review.comments.push_back({.id = QUuid::createUuid(),
                                   .frameRate = 25,
                                   .text = text,
                                   .createdAt = QDateTime::currentDateTimeUtc()});
    };
}

ReviewBook::Edit withDecision(ReviewSignOff::Decision decision)
{
    return [decision](FileReview& review) {
        review.signOff = ReviewSignOff{.decision = decision,
                                       .decidedAt = QDateTime::fromSecsSinceEpoch(1'750'000'000)};
    };
}

QStringList texts(const std::optional<FileReview>& review)
{
    QStringList texts;
    if (review)
        for (const ReviewComment& comment : review->comments)
            texts << comment.text;
    return texts;
}

class Book : public ModelTest {
protected:
    void change(ReviewBook& book, ReviewBook::Edit edit)
    {
        book.change(m_key, m_url, std::move(edit), [this](const Result<void>& saved) {
            m_outcomes << (saved ? QString() : saved.error().description);
        });
    }
    ReviewBook::Review read(ReviewBook& book)
    {
        std::optional<ReviewBook::Review> answer;
        book.read(m_key, [&](const auto& review) { answer = review; });
        EXPECT_TRUE(soon([&] { return answer.has_value(); }));
        return answer.value_or(nullptr);
    }
    bool soonDone(const ReviewBook& book)
    {
        return soon([&] { return book.isIdle(); });
    }
    std::optional<FileReview> stored() const { return ReviewStore::peek(m_key); }
    /// Where reviews are kept, which is put out of reach, or back.
    fs::path place() const { return ReviewStore::directory(); }
    void breakDisk()
    {
        fs::rename(place(), m_folder / "kept");
        m_folder.write("data/Vantroque/Reviews", "a file where the folder should be");
    }
    void mendDisk()
    {
        fs::remove(place());
        fs::rename(m_folder / "kept", place());
    }

    const FileUrl m_url = anyFile("a.mp4");
    const QString m_key = ReviewStore::fingerprint(m_url).value();
    QStringList m_outcomes;
};

TEST_F(Book, HasNothingOfAFileThatNobodyReviewed)
{
    ReviewBook book;
    EXPECT_EQ(read(book), nullptr);
    EXPECT_FALSE(fs::exists(place())) << "reading makes nothing";
}

TEST_F(Book, MakesAReviewWithItsFirstChange)
{
    ReviewBook book;
    change(book, withNote(u"first"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(m_outcomes, ElementsAre(QString()));
    ASSERT_TRUE(stored());
    EXPECT_EQ(stored()->fileName, u"a.mp4"_s);
    EXPECT_EQ(stored()->fileSizeBytes, 5);
    EXPECT_THAT(texts(stored()), ElementsAre(u"first"_s));
    EXPECT_THAT(texts(*read(book)), ElementsAre(u"first"_s));
}

TEST_F(Book, TellsOfEachChangeWithTheWholeReview)
{
    ReviewBook book;
    std::vector<QStringList> told;
    QObject::connect(&book, &ReviewBook::changed, QCoreApplication::instance(),
                     [&](const QString& fingerprint, const ReviewBook::Review& review) {
                         EXPECT_EQ(fingerprint, m_key);
                         told.push_back(texts(*review));
                     });
    change(book, withNote(u"one"_s));
    change(book, withNote(u"two"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(told, ElementsAre(QStringList{u"one"_s}, QStringList{u"one"_s, u"two"_s}));
}

TEST_F(Book, ANoteAndADecisionMadeAtOnceAreBothKept)
{
    ReviewBook book;
    change(book, withNote(u"look"_s));
    change(book, withDecision(ReviewSignOff::Decision::needsRevisions));
    change(book, withNote(u"and here"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(texts(stored()), ElementsAre(u"look"_s, u"and here"_s));
    ASSERT_TRUE(stored()->signOff);
}

/// Two that know nothing of each other, each on a thread of its own.
TEST_F(Book, TwoWritersNeverLoseAnUpdate)
{
    constexpr int count = 40;
    ReviewBook book;
    const auto write = [&](const QString& name) {
        for (int i = 0; i < count; ++i)
            book.change(m_key, m_url, withNote(name + QString::number(i)), nullptr);
    };
    {
        const std::jthread first([&] { write(u"a"_s); });
        const std::jthread second([&] { write(u"b"_s); });
        for (int i = 0; i < count; ++i) // who reads meanwhile disturbs nothing
            book.read(m_key, [](const auto&) {});
    }
    ASSERT_TRUE(soonDone(book));
    const QStringList all = texts(stored());
    EXPECT_EQ(all.size(), 2 * count);
    for (const QString& name : {u"a"_s, u"b"_s}) {
        QStringList own;
        for (int i = 0; i < count; ++i)
            own << name + QString::number(i);
        EXPECT_EQ(all.filter(name), own) << "in the order of each";
    }
}

TEST_F(Book, AReviewThatAnotherProgramStoredIsReadAgain)
{
    ReviewBook book;
    change(book, withNote(u"here"_s));
    ASSERT_TRUE(soonDone(book));
    FileReview other = *stored();
    withNote(u"elsewhere"_s)(other);
    ASSERT_TRUE(ReviewStore::save(other));
    change(book, withNote(u"here again"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(texts(stored()), ElementsAre(u"here"_s, u"elsewhere"_s, u"here again"_s));
    ASSERT_TRUE(ReviewStore::remove(m_key));
    EXPECT_EQ(read(book), nullptr);
}

TEST_F(Book, ADiskThatFailsIsToldAndTheNoteIsKeptUntilItCanBeSaved)
{
    ReviewBook book;
    change(book, withNote(u"first"_s));
    ASSERT_TRUE(soonDone(book));
    breakDisk();
    change(book, withNote(u"second"_s));
    ASSERT_TRUE(soonDone(book));
    ASSERT_THAT(m_outcomes, SizeIs(2));
    EXPECT_TRUE(m_outcomes.at(1).contains(u"Reviews"_s)) << m_outcomes.at(1).toStdString();
    EXPECT_THAT(texts(*read(book)), ElementsAre(u"first"_s, u"second"_s));
    mendDisk();
    EXPECT_THAT(texts(stored()), ElementsAre(u"first"_s)) << "the old one is whole";
    change(book, withNote(u"third"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(m_outcomes, ElementsAre(QString(), testing::_, QString()));
    EXPECT_THAT(texts(stored()), ElementsAre(u"first"_s, u"second"_s, u"third"_s));
}

TEST_F(Book, WhatCouldNotBeSavedIsTriedOnceMoreAtTheEnd)
{
    {
        ReviewBook book;
        change(book, withNote(u"first"_s));
        ASSERT_TRUE(soonDone(book));
        breakDisk();
        change(book, withNote(u"second"_s));
        ASSERT_TRUE(soonDone(book));
        mendDisk();
    }
    EXPECT_THAT(texts(stored()), ElementsAre(u"first"_s, u"second"_s));
}

TEST_F(Book, ItsEndWaitsUntilAllIsWritten)
{
    {
        ReviewBook book;
        for (int i = 0; i < 20; ++i)
            change(book, withNote(QString::number(i)));
    }
    EXPECT_THAT(texts(stored()), SizeIs(20));
    EXPECT_THAT(m_outcomes, IsEmpty()) << "nobody is left to be told";
}

TEST_F(Book, ADamagedRecordIsMovedAsideAndNotWrittenOver)
{
    fs::create_directories(place());
    const auto name = m_key.toStdString();
    m_folder.write("data/Vantroque/Reviews/" + name + ".json", "{\"comments\": [");
    ReviewBook book;
    change(book, withNote(u"new"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(texts(stored()), ElementsAre(u"new"_s));
    int aside = 0;
    for (const auto& entry : fs::directory_iterator(place()))
        if (entry.path().filename().native().find("unreadable") != std::string::npos)
            ++aside;
    EXPECT_EQ(aside, 1);
}

TEST_F(Book, ARecordThatCannotBeReadIsLeftAsItIs)
{
    fs::create_directories(place() / (m_key.toStdString() + ".json")); // a folder, of all things
    ReviewBook book;
    change(book, withNote(u"new"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(m_outcomes, ElementsAre(u"The review of this file cannot be read."_s));
    EXPECT_EQ(read(book), nullptr);
    fs::remove(place() / (m_key.toStdString() + ".json"));
    change(book, withNote(u"now"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(texts(stored()), ElementsAre(u"now"_s));
}

TEST_F(Book, AFolderThatIsOutOfReachFromTheStartCostsNoStoredNote)
{
    {
        ReviewBook book;
        change(book, withNote(u"old"_s));
    }
    breakDisk();
    ReviewBook book;
    change(book, withNote(u"lost, and said so"_s));
    ASSERT_TRUE(soonDone(book));
    ASSERT_THAT(m_outcomes, SizeIs(1));
    EXPECT_TRUE(m_outcomes.at(0).contains(u"Reviews"_s)) << m_outcomes.at(0).toStdString();
    mendDisk();
    change(book, withNote(u"new"_s));
    ASSERT_TRUE(soonDone(book));
    EXPECT_THAT(texts(stored()), ElementsAre(u"old"_s, u"new"_s));
}

TEST_F(Book, ADecisionInTheBookIsShownByTheList)
{
    const FileUrl copy = FileUrl::fromPath(m_folder.write("copy.mp4", contents(m_url.path())));
    startHeld().files().add({m_url, copy, anyFile("b.mp4")});
    m_held.release(3);
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(entry(0).signOff, std::nullopt);
    change(model().reviews(), withDecision(ReviewSignOff::Decision::needsRevisions));
    ASSERT_TRUE(soonIdle());
    ASSERT_TRUE(entry(0).signOff);
    EXPECT_EQ(entry(0).signOff->decision, ReviewSignOff::Decision::needsRevisions);
    EXPECT_EQ(entry(1).signOff, entry(0).signOff) << "the same content under another name";
    EXPECT_EQ(entry(2).signOff, std::nullopt);
    change(model().reviews(), [](FileReview& review) { review.signOff.reset(); });
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(entry(0).signOff, std::nullopt);
}

TEST_F(Book, AtTheEndOfTheProgramAllIsWritten)
{
    startHeld();
    change(model().reviews(), withNote(u"last"_s));
    model().saveWorkspaceNow();
    EXPECT_THAT(texts(stored()), ElementsAre(u"last"_s));
}

} // namespace
} // namespace vantroque
