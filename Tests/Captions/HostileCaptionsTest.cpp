#include "Captions/CaptionParser.h"

#include "Captions/CaptionFixtures.h"
#include "Captions/CaptionHealth.h"
#include "Support/TestFolder.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <random>
#include <set>
#include <tuple>

// Bytes that nobody would write. What comes of them matters little; that it comes soon and is in
// order does.

namespace vantroque {
namespace {

using CaptionParser::PlacementTags;

std::optional<CaptionTrack> parse(const QByteArray& bytes)
{
    return CaptionParser::parse(CaptionParser::decode(bytes), CaptionTrack::Format::srt,
                                PlacementTags::honoured);
}

/// Checks what holds for every track; gives its number of cues.
std::size_t expectInOrder(const std::optional<CaptionTrack>& track)
{
    if (!track)
        return 0;
    const auto& cues = track->cues();
    EXPECT_FALSE(cues.empty());
    std::set<int> ids;
    for (const CaptionCue& cue : cues) {
        ids.insert(cue.id);
        EXPECT_TRUE(cue.start >= 0 && cue.end >= 0);
        EXPECT_TRUE(std::isfinite(cue.start) && std::isfinite(cue.end));
    }
    EXPECT_TRUE(std::ranges::is_sorted(
        cues, {}, [](const CaptionCue& cue) { return std::tuple(cue.start, cue.id); }));
    EXPECT_EQ(ids.size(), cues.size());
    EXPECT_EQ(*ids.begin(), 1);
    EXPECT_EQ(*ids.rbegin(), static_cast<int>(cues.size()));
    return cues.size();
}

TEST(HostileCaptions, RandomBytesGiveNoCueOrCuesInOrder)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> anyByte(0, 255);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(round, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(anyByte(random));
        expectInOrder(parse(bytes));
    }
}

TEST(HostileCaptions, RandomPiecesOfCaptionFilesGiveCuesInOrder)
{
    const std::vector<QByteArray> pieces{"\n\n0:03 --> 0:04\n",
                                         "\n",
                                         "\n\n",
                                         "\r\n",
                                         "\r",
                                         " --> ",
                                         "-->",
                                         "0:01",
                                         "00:00:02,5",
                                         ":",
                                         "<i>",
                                         "</i>",
                                         "<",
                                         ">",
                                         "{",
                                         "}",
                                         "{\\an8}",
                                         "&amp;",
                                         "&",
                                         "WEBVTT",
                                         "NOTE",
                                         "text",
                                         "\xCC\x81",
                                         "\xFF",
                                         "\xF0\x9F\x98\x80",
                                         "\t",
                                         " ",
                                         "<br>",
                                         QByteArray("\0", 1)};
    std::mt19937 random(2);
    std::uniform_int_distribution<std::size_t> anyPiece(0, pieces.size() - 1);
    std::size_t found = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = "0:01 --> 0:02\n";
        for (int i = 0; i < 60; ++i)
            bytes += pieces[anyPiece(random)];
        found += expectInOrder(parse(bytes));
    }
    EXPECT_GT(found, 3000U);
}

TEST(HostileCaptions, DamagedFilesGiveCuesInOrder)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<int> anyByte(0, 255);
    std::size_t found = 0;
    for (const QByteArray& whole : {CaptionFixtures::subRip, CaptionFixtures::webVtt}) {
        std::uniform_int_distribution<qsizetype> anyPlace(0, whole.size() - 1);
        for (int round = 0; round < 2000; ++round) {
            QByteArray bytes = whole;
            for (int damage = 0; damage <= round % 8; ++damage)
                switch (const qsizetype at = anyPlace(random) % bytes.size(); damage % 3) {
                case 0: bytes[at] = static_cast<char>(anyByte(random)); break;
                case 1: bytes.remove(at, 3); break;
                default: bytes.insert(at, whole.mid(anyPlace(random), 20)); break;
                }
            found += expectInOrder(parse(bytes));
        }
    }
    EXPECT_GT(found, 4000U);
}

TEST(HostileCaptions, EveryBeginningOfAFileGivesCuesInOrder)
{
    for (const QByteArray& whole : {CaptionFixtures::subRip, CaptionFixtures::webVtt})
        for (qsizetype size = 0; size <= whole.size(); ++size)
            expectInOrder(parse(whole.first(size)));
}

TEST(HostileCaptions, NullCharactersAreOrdinaryOnes)
{
    const auto track = parse(QByteArray("0:01 --> 0:02\na\0b", 17));
    ASSERT_TRUE(track);
    EXPECT_EQ(track->cues().front().text(), QString::fromLatin1("a\0b", 3));
}

/// Processor seconds that this thread takes to read a cue of so many megabytes and to look at it.
double workOn(int megabytes)
{
    const QByteArray line = "<i>It is</i> a long story, told in &quot;many&quot; words. ";
    const QByteArray text = "0:01 --> 0:02\n" + line.repeated(megabytes * 1'000'000 / line.size());
    const auto now = [] {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    };
    const double start = now();
    const auto track = parse(text);
    EXPECT_TRUE(track);
    EXPECT_EQ(CaptionHealth::of(*track, 60).cueCount, 1);
    return now() - start;
}

TEST(HostileCaptions, ACueOfTenMegabytesTakesTenTimesTheWorkOfOne)
{
    const double one = std::min({workOn(1), workOn(1), workOn(1)});
    EXPECT_LT(workOn(10), 25 * one) << "quadratic work would be a hundred times as much";
}

/// One piece again and again. Anything worse than linear would take hours.
class Repeated : public testing::TestWithParam<QByteArray> {
protected:
    static constexpr qsizetype size = 4'000'000;
    static QByteArray text() { return GetParam().repeated(size / GetParam().size()); }
};

TEST_P(Repeated, IsReadInLinearTimeAsAFile)
{
    expectInOrder(parse(text()));
}

TEST_P(Repeated, IsReadInLinearTimeAsTheTextOfACue)
{
    EXPECT_GE(expectInOrder(parse("0:01 --> 0:02\n" + text())), 1U);
}

TEST_P(Repeated, IsReadInLinearTimeAsWebVtt)
{
    expectInOrder(parse("WEBVTT\n" + text()));
    EXPECT_GE(expectInOrder(parse("WEBVTT\n\n0:01 --> 0:02\n" + text())), 1U);
}

TEST_P(Repeated, IsReadInLinearTimeAsATime)
{
    expectInOrder(parse("0:01 --> " + text()));
    expectInOrder(parse(text() + " --> 0:01"));
}

INSTANTIATE_TEST_SUITE_P(HostileCaptions, Repeated,
                         testing::Values("<", ">", "{", "}", "<>", "<{", "{<", "><", "<i", "<i>",
                                         "<i>a", "{\\an8}", "<\xCC\xB8", ">\xCC\xB8<", "-->",
                                         "\n\n", "\n", "\r", "\r\n", "\n \n", ":", "1:", "1:1,",
                                         "1", " ", "\t", "&", "&lt;", "&amp;", "<br>",
                                         "0:0-->0:1\n\n", "a\n", "a\n \n", " \na\n-->\n",
                                         "\xCC\x81", "\xF0\x9F\x87\xAC", "\xE2\x80\x8D", "\xFF",
                                         "-"));

} // namespace
} // namespace vantroque
