#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::int64_t megabyte = 1'000'000;

Rows fileRows(const FileRule& rule, std::int64_t size, const char* path = "/spots/spot.mp4")
{
    Profile profile = bareProfile();
    profile.file = rule;
    MediaInfo media = hdSpot();
    media.fileSizeBytes = size;
    media.url = FileUrl::fromPath(path);
    return rowsOf(checkFile, profile, media);
}

CheckResult size(Verdict verdict, const char* measured, const char* expected,
                 const char* fix = nullptr)
{
    return row("file-size", "File size", verdict, measured, expected, fix);
}

FileRule named(const QString& pattern, const std::optional<QString>& note = {})
{
    return {{}, {}, pattern, note};
}

} // namespace

TEST(FileChecks, AFileExactlyAtTheLimitIsNotOver)
{
    EXPECT_THAT(fileRows({500 * megabyte, {}, {}, {}}, 500 * megabyte),
                ElementsAre(size(Verdict::pass, "500.0 MB", "≤ 500.0 MB")));
    EXPECT_THAT(fileRows({500 * megabyte, {}, {}, {}}, 500 * megabyte + 1),
                ElementsAre(size(Verdict::fail, "500.0 MB", "under 500.0 MB",
                                 "Lower the bitrate or shorten the spot. The platform rejects "
                                 "files over the limit.")));
}

TEST(FileChecks, AFileOverTheRecommendationWarns)
{
    EXPECT_THAT(fileRows({500 * megabyte, 100 * megabyte, {}, {}}, 120 * megabyte),
                ElementsAre(size(Verdict::warn, "120.0 MB (over the 100.0 MB recommendation)",
                                 "≤ 100.0 MB recommended, 500.0 MB hard limit")));
    EXPECT_THAT(fileRows({{}, 100 * megabyte, {}, {}}, 120 * megabyte),
                ElementsAre(size(Verdict::warn, "120.0 MB (over the 100.0 MB recommendation)",
                                 "≤ 100.0 MB recommended")));
}

TEST(FileChecks, AFileInsideBothLimitsPassesUnderTheRecommendedOne)
{
    EXPECT_THAT(fileRows({500 * megabyte, 100 * megabyte, {}, {}}, 100 * megabyte),
                ElementsAre(size(Verdict::pass, "100.0 MB", "≤ 100.0 MB")));
}

TEST(FileChecks, AFileOverBothLimitsFails)
{
    EXPECT_EQ(fileRows({500 * megabyte, 100 * megabyte, {}, {}}, 900 * megabyte).front().expected,
              u"under 500.0 MB"_s);
}

TEST(FileChecks, ARuleWithoutLimitsHasNoRow)
{
    EXPECT_THAT(fileRows({}, 900 * megabyte), IsEmpty());
}

TEST(FileChecks, ANamePatternIsSearchedAnywhereInTheStem)
{
    EXPECT_THAT(
        fileRows(named(u"_\\d+s"_s), 0, "/spots/Brand_30s_v2.mp4"),
        ElementsAre(row("file-name", "File name", Verdict::pass, "Brand_30s_v2", "_\\d+s")));
    EXPECT_EQ(fileRows(named(u"mp4"_s), 0, "/spots/spot.mp4").front().verdict, Verdict::warn);
}

TEST(FileChecks, AnotherNameWarnsWithTheNote)
{
    EXPECT_THAT(fileRows(named(u"^\\d+$"_s, u"the clock number"_s), 0, "/spots/spot.mp4"),
                ElementsAre(row("file-name", "File name", Verdict::warn, "spot", "the clock number",
                                "Rename to the platform's convention before upload.")));
}

TEST(FileChecks, LettersOfAnyLanguageAreWordCharacters)
{
    EXPECT_EQ(fileRows(named(u"^\\w+$"_s), 0, "/spots/Café.mp4").front().verdict, Verdict::pass);
}

TEST(FileChecks, AnInvalidPatternFindsNothing)
{
    EXPECT_EQ(fileRows(named(u"(["_s), 0).front().verdict, Verdict::warn);
}

TEST(FileChecks, TheSizeComesBeforeTheName)
{
    EXPECT_THAT(idsOf(fileRows({megabyte, {}, u"x"_s, {}}, 0)),
                ElementsAre(u"file-size"_s, u"file-name"_s));
}

} // namespace vantroque::Checker
