#include "Base/FileUrl.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

FileUrl named(const std::string& name)
{
    return FileUrl::fromPath(fs::path("/v") / name);
}

class AwkwardName : public testing::TestWithParam<std::string> {};

TEST_P(AwkwardName, KeepsItsBytesThroughText)
{
    const FileUrl url = named(GetParam());
    EXPECT_EQ(url.path().native(), "/v/" + GetParam());
    EXPECT_EQ(FileUrl::fromString(url.toString()), url);
    for (const QChar character : url.toString())
        EXPECT_TRUE(character > u' ' && character < u'\x7F');
}

INSTANTIATE_TEST_SUITE_P(FileUrl, AwkwardName,
                         testing::Values("two words.mov", "it's \"quoted\".mov", "line\nbreak.mov",
                                         "\xF0\x9F\x8E\xAC.mov", "not\xFFutf8\xC3.mov", "-y.mov",
                                         "100%.mov", "%41.mov", "a#b?c&d;e.mov", "back\\slash.mov",
                                         "http:x.mov", "a+b.mov", " ", "\x01\x7F"));

TEST(FileUrl, TextIsPercentEncodedUtf8)
{
    EXPECT_EQ(named("a b.mov").toString(), u"file:///v/a%20b.mov"_s);
    EXPECT_EQ(named("\xC3\xA9").toString(), u"file:///v/%C3%A9"_s);
    EXPECT_EQ(named("x/y").toString(), u"file:///v/x/y"_s);
}

TEST(FileUrl, UnencodedTextReadsToo)
{
    EXPECT_EQ(FileUrl::fromString(u"file:///v/\u00E9 x.mov"_s), named("\xC3\xA9 x.mov"));
}

TEST(FileUrl, OnlyLocalAbsoluteFilesAreRead)
{
    for (const QString& text :
         {u""_s, u"/v/a.mov"_s, u"a.mov"_s, u"file://"_s, u"file:a.mov"_s, u"file://host/a.mov"_s,
          u"http:///v/a.mov"_s, u"file:///v/a%00.mov"_s})
        EXPECT_EQ(FileUrl::fromString(text), std::nullopt) << text.toStdString();
}

TEST(FileUrl, ARelativePathCountsFromTheWorkingDirectory)
{
    EXPECT_EQ(FileUrl::fromPath("-y").path(), fs::current_path() / "-y");
    EXPECT_EQ(FileUrl::fromPath("http:x/a.mov").path(), fs::current_path() / "http:x/a.mov");
    EXPECT_TRUE(FileUrl::fromPath("../a.mov").path().is_absolute());
}

TEST(FileUrl, OnePlaceHasOneNameHoweverManySlashes)
{
    EXPECT_EQ(FileUrl::fromPath("/v//x///a.mov"), named("x/a.mov"));
    EXPECT_EQ(FileUrl::fromPath("/v//x///a.mov").path().native(), "/v/x/a.mov");
    EXPECT_EQ(FileUrl::fromPath("/v/../x/a.mov").path().native(), "/v/../x/a.mov");
}

TEST(FileUrl, PeopleSeeInvalidBytesAsReplacementCharacters)
{
    EXPECT_EQ(named("a\xFF.mov").displayPath(), u"/v/a\uFFFD.mov"_s);
    EXPECT_EQ(named("a\xFF.mov").fileName(), u"a\uFFFD.mov"_s);
}

struct NameParts {
    std::string name;
    QString stem;
    QString extension;
};

TEST(FileUrl, TheExtensionLiesBehindTheLastDot)
{
    const std::vector<NameParts> names{
        {"a.mov", u"a"_s, u"mov"_s},
        {"a.b.MP4", u"a.b"_s, u"MP4"_s},
        {"noext", u"noext"_s, u""_s},
        {".hidden", u".hidden"_s, u""_s},
        {".hidden.mp4", u".hidden"_s, u"mp4"_s},
        {"a.", u"a."_s, u""_s},
        {"a.b.", u"a.b."_s, u""_s},
        {"a..mp4", u"a."_s, u"mp4"_s},
        {"..mp4", u"."_s, u"mp4"_s},
        {"a.m v", u"a"_s, u"m v"_s},
        {"dir.d/name", u"name"_s, u""_s},
        {"a.\xF0\x9F\x8E\xAC", u"a"_s, u"\U0001F3AC"_s},
    };
    for (const auto& [name, stem, extension] : names) {
        EXPECT_EQ(named(name).extension(), extension) << name;
        EXPECT_EQ(named(name).stem(), stem) << name;
    }
}

TEST(FileUrl, AnEmptyOneIsHarmless)
{
    const FileUrl none;
    EXPECT_EQ(none.fileName(), QString());
    EXPECT_EQ(none.extension(), QString());
    EXPECT_EQ(none.stem(), QString());
    EXPECT_EQ(none.displayPath(), QString());
    EXPECT_EQ(none, FileUrl::fromPath(""));
}

} // namespace
} // namespace vantroque
