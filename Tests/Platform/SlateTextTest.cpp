#include "VantroquePlatform/Recognition/LeadingColons.h"

#include "Painted.h"

#include "VantroquePlatform/Recognition/LookAlikes.h"
#include "VantroquePlatform/Recognition/PictureMatrix.h"

#include <opencv2/imgproc.hpp>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr auto slate = TextRecognizer::Subject::slate;
constexpr QSize full{1920, 1080};

std::vector<LeadingColon> colonsIn(const QImage& picture)
{
    cv::Mat1b luma;
    cv::cvtColor(pictureMatrix(picture, 1920), luma, cv::COLOR_RGB2GRAY);
    return findLeadingColons(luma);
}

} // namespace

TEST(SlateText, ReadsAllLinesFromTheTopDown)
{
    const auto engine = recognizer();
    QImage picture = plain(full, Qt::black);
    const QStringList lines{u"Ad-ID: ABCD1234000H"_s, u"Client: Northfield Foods"_s,
                            u"Title: Fresh Coffee"_s, u"Length: 0:30"_s};
    for (int i = 0; i < lines.size(); ++i)
        picture = with(picture, {lines[i], 40, {300, 300 + 90 * i}});
    EXPECT_EQ(textsIn(picture, *engine, slate), lines);
}

TEST(SlateText, ReadsBlackOnGray)
{
    const auto engine = recognizer();
    const QImage picture = with(plain(full, QColor(190, 190, 190)),
                                {u"Client: Northfield Foods"_s, 44, {300, 500}, Qt::black});
    EXPECT_EQ(textsIn(picture, *engine, slate), QStringList{u"Client: Northfield Foods"_s});
}

TEST(SlateText, ABlankCardHasNoLines)
{
    const auto engine = recognizer();
    EXPECT_THAT(textsIn(plain(full, Qt::black), *engine, slate), IsEmpty());
}

TEST(SlateText, ALoneLengthKeepsItsColon)
{
    const auto engine = recognizer();
    for (const QString& length : QStringList{u":15"_s, u":30"_s, u":60"_s, u":05"_s, u":10"_s}) {
        QImage picture =
            with(plain(full, Qt::black), {u"Client: Northfield Foods"_s, 44, {300, 400}});
        picture = with(picture, {length, 60, {1500, 900}});
        const auto texts = textsIn(picture, *engine, slate);
        EXPECT_TRUE(texts.contains(length)) << texts.join(u" / "_s).toStdString();
    }
}

TEST(SlateText, TellsTheLetterOFromTheDigitInACode)
{
    const auto engine = recognizer();
    for (const QString& code :
         QStringList{u"OMQO6852302H"_s, u"EGZO6943889H"_s, u"ABCD0020900H"_s}) {
        QImage picture =
            with(plain(full, Qt::black), {code, 44, {300, 400}, Qt::white, "DejaVu Sans"});
        EXPECT_EQ(textsIn(picture, *engine, slate), QStringList{code});
    }
}

TEST(LookAlikes, AreSettledAsTheRestOfAnAdIDHasThem)
{
    const cv::Mat1b illegible(40, 300, uchar{0});
    EXPECT_EQ(settledLookAlikes(u"EGZ06943889H"_s, illegible), u"EGZO6943889H"_s);
    EXPECT_EQ(settledLookAlikes(u"1KSHO177228H"_s, illegible), u"IKSH0177228H"_s);
    EXPECT_EQ(settledLookAlikes(u"KSHSO1I7228"_s, illegible), u"KSHS0117228"_s);
}

TEST(LookAlikes, StayWhereTheRestIsMixedOrNoAdID)
{
    const cv::Mat1b illegible(40, 300, uchar{0});
    for (const QString& word : {u"A1200123456H"_s, u"ABCDOABC12DH"_s, u"ABCDO123"_s, u"O"_s,
                                u"DISCOVERYLAND"_s, u"03142024031"_s})
        EXPECT_EQ(settledLookAlikes(word, illegible), word);
}

TEST(LeadingColons, OneAheadOfANumberIsFound)
{
    for (const char* family : {"DejaVu Sans", "DejaVu Serif", "DejaVu Sans Mono"}) {
        const auto colons =
            colonsIn(with(plain(full, Qt::black), {u":30"_s, 60, {500, 500}, Qt::white, family}));
        ASSERT_THAT(colons, SizeIs(1)) << family;
        EXPECT_GT(colons[0].next.x, colons[0].dots.x);
    }
}

TEST(LeadingColons, OneBehindAWordOrNumberIsNone)
{
    EXPECT_THAT(colonsIn(with(plain(full, Qt::black), {u"Length: 30"_s, 60, {500, 500}})),
                IsEmpty());
    EXPECT_THAT(colonsIn(with(plain(full, Qt::black), {u"0:30"_s, 60, {500, 500}})), IsEmpty());
    EXPECT_THAT(colonsIn(with(plain(full, Qt::black),
                              {u"0:30"_s, 60, {500, 500}, Qt::white, "DejaVu Sans Mono"})),
                IsEmpty());
}

TEST(LeadingColons, OneOnALineOfItsFieldIsFoundToo)
{
    EXPECT_THAT(colonsIn(with(plain(full, QColor(200, 200, 200)),
                              {u"Length: :30"_s, 60, {500, 500}, Qt::black})),
                SizeIs(1));
}

TEST(LeadingColons, AreBlankedOnly)
{
    cv::Mat1b luma;
    cv::cvtColor(pictureMatrix(with(plain(full, Qt::black), {u":30"_s, 60, {500, 500}}), 1920),
                 luma, cv::COLOR_RGB2GRAY);
    const auto colons = findLeadingColons(luma);
    ASSERT_THAT(colons, SizeIs(1));
    const cv::Mat1b blanked = withoutColons(luma, colons);
    EXPECT_EQ(cv::countNonZero(blanked(colons[0].dots) > 20), 0);
    EXPECT_EQ(cv::countNonZero(blanked(colons[0].next) != luma(colons[0].next)), 0);
    EXPECT_THAT(findLeadingColons(blanked), IsEmpty());
}
