#include "Text/SlateReader.h"
#include "Support/BoxClips.h"
#include "Support/Clips.h"
#include "Support/FakeRecognizer.h"
#include "Support/FakeTools.h"

namespace vantroque::SlateReader {
namespace {

using namespace Qt::StringLiterals;
using FakeRecognizer::Lines;
using FakeRecognizer::Subject;
using testing::IsEmpty;
using testing::Optional;
namespace fs = std::filesystem;

std::optional<QStringList> readWith(RecognizerPool::Start start,
                                    const fs::path& file = BoxClips::titled(), double time = 2)
{
    RecognizerPool pool(std::move(start));
    return readText(FileUrl::fromPath(file), time, pool);
}

TEST(SlateReader, GivesTheLinesFromTheTopDown)
{
    EXPECT_EQ(readWith(FakeRecognizer::finding({{{0.1, 0.7, 0.3, 0.1}, u"Length 30"_s},
                                                {{0.1, 0.1, 0.3, 0.1}, u"Ad-ID ABCD1234"_s},
                                                {{0.1, 0.4, 0.3, 0.1}, u"Client"_s}})),
              (QStringList{u"Ad-ID ABCD1234"_s, u"Client"_s, u"Length 30"_s}));
}

TEST(SlateReader, WordsOfOneLineAreNotJoined)
{
    // The higher centre first, though it begins lower and stands at the right.
    EXPECT_EQ(readWith(FakeRecognizer::finding(
                  {{{0.1, 0.40, 0.1, 0.20}, u"Title"_s}, {{0.5, 0.45, 0.1, 0.08}, u"Spring"_s}})),
              (QStringList{u"Spring"_s, u"Title"_s}));
}

TEST(SlateReader, LinesOfOneCentreKeepTheirOrder)
{
    EXPECT_EQ(readWith(FakeRecognizer::finding(
                  {{{0.5, 0.4, 0.1, 0.1}, u"right"_s}, {{0.1, 0.4, 0.1, 0.1}, u"left"_s}})),
              (QStringList{u"right"_s, u"left"_s}));
}

TEST(SlateReader, LeavesTheTextAsItIs)
{
    EXPECT_EQ(readWith(FakeRecognizer::finding({{{0.1, 0.4, 0.1, 0.1}, u" -- "_s}})),
              QStringList{u" -- "_s});
}

TEST(SlateReader, ABlankFrameHasNoLines)
{
    EXPECT_THAT(readWith(FakeRecognizer::finding({})), Optional(IsEmpty()));
}

TEST(SlateReader, LooksAtTheFrameOfThatTime)
{
    const auto look = [](const QImage& picture, Subject subject, auto) -> Result<Lines> {
        EXPECT_EQ(subject, Subject::slate);
        return FakeRecognizer::isWhiteIn(picture, {0, 0, 1, 1})
                   ? Lines{{{0.1, 0.4, 0.1, 0.1}, u"SLATE"_s}}
                   : Lines();
    };
    const auto at = [&](int frame) {
        return readWith(FakeRecognizer::answering(look), BoxClips::titled(), frame / 25.0).value();
    };
    EXPECT_THAT(at(29), IsEmpty());
    EXPECT_EQ(at(30), QStringList{u"SLATE"_s});
    EXPECT_EQ(at(90), QStringList{u"SLATE"_s});
    EXPECT_THAT(at(91), IsEmpty());
}

/// The width of the picture that is read.
int widthReadOf(const fs::path& file)
{
    std::atomic<int> width = 0;
    EXPECT_TRUE(readWith(FakeRecognizer::answering([&](const QImage& picture, Subject, auto) {
                             width = picture.width();
                             return Lines();
                         }),
                         file, 0));
    return width;
}

TEST(SlateReader, ReadsPicturesOf1920PixelsAtMost)
{
    const auto wide =
        BoxClips::make({.name = "slate-wide.mkv", .frames = 2, .width = 2560, .height = 64});
    EXPECT_EQ(widthReadOf(wide), 1920);
    EXPECT_EQ(widthReadOf(BoxClips::titled()), 160);
}

TEST(SlateReader, GivesNothingWithoutAFrame)
{
    const auto finding = FakeRecognizer::finding({});
    EXPECT_EQ(readWith(finding, BoxClips::titled(), 60), std::nullopt);
    EXPECT_EQ(readWith(finding, "/nowhere.mov"), std::nullopt);
    EXPECT_EQ(readWith(finding, Clips::wav(), 0), std::nullopt);
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    EXPECT_EQ(readWith(finding), std::nullopt);
}

TEST(SlateReader, GivesNothingWhenTheRecognizerFails)
{
    EXPECT_EQ(readWith(FakeRecognizer::failing()), std::nullopt);
    EXPECT_EQ(readWith(FakeRecognizer::throwing()), std::nullopt);
    EXPECT_EQ(readWith(FakeRecognizer::notStarting()), std::nullopt);
}

TEST(SlateReader, ASlateMayTakeHalfAMinute)
{
    using namespace std::chrono_literals;
    EXPECT_THAT(readWith(FakeRecognizer::slow(29s, {})), Optional(IsEmpty()));
    EXPECT_EQ(readWith(FakeRecognizer::slow(31s, {})), std::nullopt);
}

TEST(SlateReader, LeavesNoFilesBehind)
{
    const fs::path clip = BoxClips::titled();
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    EXPECT_TRUE(readWith(FakeRecognizer::finding({}), clip));
    EXPECT_FALSE(readWith(FakeRecognizer::failing(), clip));
    EXPECT_THAT(temporary.names(), IsEmpty());
}

} // namespace
} // namespace vantroque::SlateReader
