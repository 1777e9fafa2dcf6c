#include "Review/ReviewStore.h"

#include "Base/Json.h"
#include "Review/Reviews.h"

#include <QJsonDocument>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
namespace fs = std::filesystem;

QString outcome(const Result<void>& result)
{
    return result ? u"done"_s : result.error().description;
}

class Store : public testing::Test {
protected:
    fs::path stored(const QByteArray& bytes) const
    {
        return m_home.folder().write("Vantroque/Reviews/" + Reviews::fileName, bytes);
    }
    fs::path file() const { return m_home.reviews() / Reviews::fileName; }

    DataHome m_home;
};

QString numbered(int number)
{
    return u"%1"_s.arg(number, 64, 16, QChar(u'0'));
}

FileReview numberedReview(int number)
{
    FileReview review = Reviews::sample();
    review.fingerprint = numbered(number);
    return review;
}

TEST_F(Store, LiesInTheSupportFolder)
{
    EXPECT_EQ(ReviewStore::directory(), m_home.reviews());
}

TEST_F(Store, AReviewComesBackAsItWasSaved)
{
    EXPECT_EQ(outcome(ReviewStore::save(Reviews::sample(), Reviews::noon)), u"done"_s);
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), Reviews::sample());
    EXPECT_THAT(m_home.reviewNames(), ElementsAre(Reviews::fileName));
}

TEST_F(Store, AReviewIsReadableText)
{
    ASSERT_TRUE(ReviewStore::save(Reviews::sample(), Reviews::noon));
    EXPECT_EQ(contents(file()), R"({
    "comments": [
        {
            "createdAt": "2026-03-01T12:00:00Z",
            "frame": 75,
            "frameRate": 25,
            "id": "00000001-0002-0003-0405-060708090A0B",
            "strokes": [
            ],
            "text": "Too loud"
        }
    ],
    "fileName": "spot.mp4",
    "fileSizeBytes": 12,
    "fingerprint": "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
    "lastKnownPath": "/spots/spot.mp4",
    "updatedAt": "2026-03-01T12:00:00Z"
}
)");
}

TEST_F(Store, SavingSetsTheTimeOnWhatIsWritten)
{
    const auto before = QDateTime::currentDateTimeUtc().addSecs(-1);
    const FileReview review = Reviews::sample();
    ASSERT_TRUE(ReviewStore::save(review));
    EXPECT_EQ(review.updatedAt, Reviews::noon);
    const auto updatedAt = ReviewStore::load(Reviews::fingerprint)->updatedAt;
    EXPECT_GE(updatedAt, before);
    EXPECT_LE(updatedAt, QDateTime::currentDateTimeUtc());
}

TEST_F(Store, SavingKeepsWhatANewerVersionHasAdded)
{
    ASSERT_TRUE(ReviewStore::save(Reviews::sample()));
    QJsonObject newer = Json::parse(contents(file()))->toObject();
    newer.insert(u"assignee"_s, QJsonObject{{u"name"_s, u"Ada"_s}});
    newer.insert(u"captionsPath"_s, u"/spots/a.srt"_s);
    stored(Json::print(newer));
    FileReview review = *ReviewStore::load(Reviews::fingerprint);
    review.comments.clear();
    review.captionsPath.reset();
    ASSERT_TRUE(ReviewStore::save(review));
    const QJsonObject now = Json::parse(contents(file()))->toObject();
    EXPECT_EQ(now.value("assignee"_L1), newer.value("assignee"_L1));
    EXPECT_TRUE(now.value("comments"_L1).toArray().isEmpty());
    EXPECT_FALSE(now.contains("captionsPath"_L1));
}

TEST_F(Store, ARecordThatIsMissingIsNothing)
{
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), std::nullopt);
    EXPECT_EQ(ReviewStore::load(FileUrl::fromPath("/nowhere.mov")), std::nullopt);
    EXPECT_THAT(ReviewStore::allReviews(), IsEmpty());
    EXPECT_FALSE(fs::exists(m_home.reviews()));
}

/// What a stored record may hold that this version does not understand.
class DamagedRecord : public Store, public testing::WithParamInterface<QByteArray> {};

INSTANTIATE_TEST_SUITE_P(
    Store, DamagedRecord,
    testing::Values(QByteArray(""), QByteArray("{\"comments\": ["), QByteArray("\xFF\xFE"),
                    QByteArray("[]"), QByteArray("{}"), QByteArray(600, '['),
                    QByteArray(R"({"fingerprint": "x", "fileName": "a", "lastKnownPath": "/a",
                        "fileSizeBytes": 1, "comments": [], "updatedAt": "yesterday"})")));

TEST_P(DamagedRecord, IsMovedAsideOnceAndIsThenNothing)
{
    stored(GetParam());
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), std::nullopt);
    EXPECT_THAT(m_home.reviewNames(),
                ElementsAre(MatchesRegex("a{64}\\.unreadable-[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}-"
                                         "[0-9]{2}-[0-9]{2}Z\\.json")));
    EXPECT_EQ(contents(m_home.reviews() / m_home.reviewNames().front()), GetParam());
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), std::nullopt);
    EXPECT_EQ(m_home.reviewNames().size(), 1U);
    ASSERT_TRUE(ReviewStore::save(Reviews::sample()));
    EXPECT_EQ(m_home.reviewNames().size(), 2U);
    EXPECT_EQ(ReviewStore::allReviews().size(), 1U);
}

TEST_F(Store, ARecordOfANewerVersionThatIsNotUnderstoodIsKeptAside)
{
    FileReview review = Reviews::sample();
    review.comments[0].strokes.emplace_back();
    ASSERT_TRUE(ReviewStore::save(review));
    const QByteArray newer = contents(file()).replace("\"pen\"", "\"rectangle\"");
    stored(newer);
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), std::nullopt);
    ASSERT_EQ(m_home.reviewNames().size(), 1U);
    EXPECT_EQ(contents(m_home.reviews() / m_home.reviewNames().front()), newer);
}

TEST_F(Store, ARecordLargerThanTheLimitIsKeptAside)
{
    fs::resize_file(stored("{"), 100'000'001);
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), std::nullopt);
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(m_home.reviewNames().size(), 1U);
}

TEST_F(Store, ARecordThatMayNotBeReadStaysWhereItIs)
{
    fs::permissions(m_home.folder().path(), fs::perms::all);
    fs::permissions(stored("{"), fs::perms::none);
    const auto ask = [] {
        Reviews::becomeNobody();
        Reviews::leave(ReviewStore::load(Reviews::fingerprint) ? "loaded" : "nothing");
    };
    EXPECT_EXIT(ask(), testing::ExitedWithCode(0), "nothing$");
    EXPECT_THAT(m_home.reviewNames(), ElementsAre(Reviews::fileName));
}

TEST_F(Store, ARecordIsKnownByTheNameOfItsFile)
{
    FileReview review = Reviews::sample();
    review.fingerprint = u"../../escaped"_s;
    stored(Json::write(review).value());
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint)->fingerprint, Reviews::fingerprint);
}

TEST_F(Store, WhatIsNoFingerprintNamesNoFile)
{
    m_home.folder().write("Vantroque/x.json", Json::write(Reviews::sample()).value());
    for (const QString& name :
         {u"../x"_s, u""_s, u"x"_s, QString(64, u'A'), QString(63, u'a'), QString(65, u'a'),
          QString(64, u'a') + u'\n', QString(62, u'a') + u"/."_s, QString(64, u'\u0661')}) {
        FileReview review = Reviews::sample();
        review.fingerprint = name;
        EXPECT_EQ(ReviewStore::load(name), std::nullopt);
        EXPECT_EQ(outcome(ReviewStore::save(review)), u"\"%1\" is no fingerprint"_s.arg(name));
        EXPECT_EQ(outcome(ReviewStore::remove(name)), u"\"%1\" is no fingerprint"_s.arg(name));
    }
    EXPECT_TRUE(fs::exists(m_home.folder() / "Vantroque/x.json"));
    EXPECT_FALSE(fs::exists(m_home.reviews()));
}

TEST_F(Store, ANewReviewKnowsItsFile)
{
    const TestFolder folder;
    const FileUrl url = FileUrl::fromPath(folder.write("spot.mov", "twelve bytes"));
    const auto review = ReviewStore::loadOrCreate(url);
    ASSERT_TRUE(review);
    FileReview expected;
    expected.fingerprint = *ReviewStore::fingerprint(url);
    expected.fileName = u"spot.mov"_s;
    expected.lastKnownPath = url.displayPath();
    expected.fileSizeBytes = 12;
    expected.updatedAt = review->updatedAt;
    EXPECT_EQ(*review, expected);
    EXPECT_LE(std::abs(review->updatedAt.secsTo(QDateTime::currentDateTimeUtc())), 5);
    EXPECT_FALSE(fs::exists(m_home.reviews())) << "it is not saved";
}

TEST_F(Store, ARenamedFileKeepsItsReviewAndThePathCatchesUp)
{
    const TestFolder folder;
    const FileUrl before = FileUrl::fromPath(folder.write("before.mov", "spot"));
    FileReview review = *ReviewStore::loadOrCreate(before);
    review.comments = Reviews::sample().comments;
    ASSERT_TRUE(ReviewStore::save(review, Reviews::noon));
    const FileUrl after = FileUrl::fromPath(folder / "after.mov");
    fs::rename(before.path(), after.path());
    EXPECT_EQ(ReviewStore::load(after)->fileName, u"before.mov"_s);
    const auto found = ReviewStore::loadOrCreate(after);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->comments, review.comments);
    EXPECT_EQ(found->fileName, u"after.mov"_s);
    EXPECT_EQ(found->lastKnownPath, after.displayPath());
    EXPECT_EQ(found->updatedAt, Reviews::noon);
    EXPECT_EQ(ReviewStore::load(after)->fileName, u"before.mov"_s) << "it is not saved";
}

TEST_F(Store, AFileThatIsNotThereGetsNoReview)
{
    const auto review = ReviewStore::loadOrCreate(FileUrl::fromPath("/nowhere.mov"));
    ASSERT_FALSE(review);
    EXPECT_EQ(review.error().description, u"/nowhere.mov: No such file or directory"_s);
}

TEST_F(Store, APathOfAwkwardBytesIsKept)
{
    const TestFolder folder;
    const FileUrl url = FileUrl::fromPath(folder.write("caf\xE9.mov", "spot"));
    EXPECT_EQ(ReviewStore::loadOrCreate(url)->lastKnownPath, url.toString());
}

TEST_F(Store, AllReviewsStandLatestFirst)
{
    ASSERT_TRUE(ReviewStore::save(numberedReview(1), Reviews::noon.addSecs(5)));
    ASSERT_TRUE(ReviewStore::save(numberedReview(2), Reviews::noon.addSecs(9)));
    ASSERT_TRUE(ReviewStore::save(numberedReview(3), Reviews::noon.addSecs(1)));
    std::vector<QString> order;
    for (const FileReview& review : ReviewStore::allReviews())
        order.push_back(review.fingerprint);
    EXPECT_THAT(order, ElementsAre(numbered(2), numbered(1), numbered(3)));
}

TEST_F(Store, AllReviewsAreThoseThatCanBeRead)
{
    ASSERT_TRUE(ReviewStore::save(numberedReview(1)));
    m_home.folder().write("Vantroque/Reviews/damaged.json", "{");
    m_home.folder().write("Vantroque/Reviews/" + numbered(2).toStdString() + ".json.tmp",
                          Json::write(numberedReview(2)).value());
    fs::create_directory(m_home.reviews() / "folder.json");
    EXPECT_EQ(ReviewStore::allReviews().size(), 1U);
    EXPECT_EQ(m_home.reviewNames().size(), 4U) << "listing moves nothing";
}

TEST_F(Store, FiveThousandReviewsAreListed)
{
    constexpr int count = 5'000;
    for (int i = 0; i < count; ++i) {
        FileReview review = numberedReview(i);
        review.updatedAt = Reviews::noon.addSecs(i);
        m_home.folder().write("Vantroque/Reviews/" + numbered(i).toStdString() + ".json",
                              Json::write(review).value());
    }
    const auto all = ReviewStore::allReviews();
    ASSERT_EQ(all.size(), std::size_t{count});
    EXPECT_EQ(all.front().fingerprint, numbered(count - 1));
    EXPECT_EQ(all.back().fingerprint, numbered(0));
}

TEST_F(Store, ARemovedReviewIsGone)
{
    ASSERT_TRUE(ReviewStore::save(Reviews::sample()));
    EXPECT_EQ(outcome(ReviewStore::remove(Reviews::fingerprint)), u"done"_s);
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(outcome(ReviewStore::remove(Reviews::fingerprint)), u"done"_s) << "nothing to remove";
}

TEST_F(Store, AFailedRemovalIsTold)
{
    fs::create_directories(file() / "inside");
    EXPECT_EQ(outcome(ReviewStore::remove(Reviews::fingerprint)),
              QString::fromStdString(file().native()) + u": Directory not empty"_s);
}

TEST_F(Store, AFullDiskLeavesTheOldReview)
{
    ASSERT_TRUE(ReviewStore::save(Reviews::sample(), Reviews::noon));
    {
        const Reviews::FullDisk full;
        for (const FileReview& review : {Reviews::sample(), numberedReview(1)})
            EXPECT_EQ(outcome(ReviewStore::save(review)),
                      QString::fromStdString(m_home.reviews().native()) + u'/' + review.fingerprint
                          + u".json: File too large"_s);
    }
    EXPECT_THAT(m_home.reviewNames(), ElementsAre(Reviews::fileName));
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), Reviews::sample());
}

TEST_F(Store, AReadOnlyFolderLeavesTheOldReview)
{
    ASSERT_TRUE(ReviewStore::save(Reviews::sample(), Reviews::noon));
    fs::permissions(m_home.folder().path(), fs::perms::all);
    fs::permissions(m_home.reviews(), fs::perms(0555));
    const auto change = [] {
        Reviews::becomeNobody();
        Reviews::leave(outcome(ReviewStore::save(Reviews::sample())).toStdString() + "\n"
                       + outcome(ReviewStore::remove(Reviews::fingerprint)).toStdString());
    };
    EXPECT_EXIT(change(), testing::ExitedWithCode(0),
                "aaa.json: Permission denied\n.*aaa.json: Permission denied$");
    EXPECT_THAT(m_home.reviewNames(), ElementsAre(Reviews::fileName));
    EXPECT_EQ(ReviewStore::load(Reviews::fingerprint), Reviews::sample());
}

TEST_F(Store, AFolderThatCannotBeMadeIsTold)
{
    m_home.folder().write("Vantroque", "a file in its place");
    EXPECT_EQ(outcome(ReviewStore::save(Reviews::sample())),
              QString::fromStdString(m_home.reviews().native()) + u": Not a directory"_s);
}

} // namespace
} // namespace vantroque
