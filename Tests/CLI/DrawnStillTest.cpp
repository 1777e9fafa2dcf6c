#include "Base/ScopedVariable.h"
#include "CLI/Cli.h"
#include "Review/ReviewStore.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <QImage>

#include <functional>

// One frame with guides, captions and the drawings of its review on it.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::StartsWith;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

fs::path grey(const std::string& name, const Words& more)
{
    return Media::make(
        {name, Words{"-f", "lavfi", "-i", "color=gray:size=320x180:rate=25:duration=1"} + more
                   + Clips::x264()});
}

class DrawnStill : public testing::Test {
protected:
    QImage drawn(const fs::path& clip, const Words& words) const
    {
        const auto result =
            Cli::run(Words{"still", "--at", "0.2", "-o", out(), clip.native()} + words);
        EXPECT_EQ(result.status, 0) << result.err.toStdString();
        EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
        return QImage(QString::fromStdString(out()));
    }
    std::string problemOf(const Words& words) const
    {
        const auto result = Cli::run(Words{"still", "--at", "0.2", m_clip.native()} + words);
        EXPECT_EQ(result.status, 2);
        return result.err.toStdString();
    }
    std::string out() const { return m_folder / "still.png"; }

    const TestFolder m_folder;
    const TestFolder m_data;
    const fs::path m_clip = grey("grey.mp4", {});

private:
    const ScopedVariable m_home{"XDG_DATA_HOME", m_data.path()};
};

int luma(const QImage& image, int x, int y)
{
    return qGray(image.pixel(x, y));
}

bool holds(const QImage& image, const std::function<bool(QColor)>& found)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (found(image.pixelColor(x, y)))
                return true;
    return false;
}

bool isRed(const QColor& color)
{
    return color.red() - color.green() > 100;
}

TEST_F(DrawnStill, OfBlackHasAllGuidesButItsEdgesAndSaysSo)
{
    const fs::path black = Media::make(
        {"black.mp4", Words{"-f", "lavfi", "-i", "color=black:size=320x180:rate=25:duration=1"}
                          + Clips::x264()});
    const auto result =
        Cli::run({"still", "--at", "0.2", "--guides", "all", "-o", out(), black.native()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "vantroque-cli: black.mp4: the edges of its picture could not be measured\n");
    const QImage image(QString::fromStdString(out()));
    EXPECT_TRUE(holds(image, [](const QColor& color) { return color.red() > 200; }));
}

TEST_F(DrawnStill, HasTheGuidesThatAreAskedFor)
{
    const QImage safe = drawn(m_clip, {"--guides", "safe"});
    EXPECT_EQ(safe.size(), QSize(320, 180));
    EXPECT_EQ(luma(safe, 11, 90), 255); // 0.035 of the width
    EXPECT_EQ(luma(safe, 16, 90), 255);
    EXPECT_NEAR(luma(safe, 150, 100), 128, 3);
    const QImage both = drawn(m_clip, {"--guides", "safe,thirds"});
    EXPECT_NE(both, safe);
    EXPECT_NEAR(luma(safe, 150, 60), 128, 3);
    EXPECT_NEAR(luma(drawn(m_clip, {}), 11, 90), 128, 3);
}

TEST_F(DrawnStill, HasTheEdgesOfThePicture)
{
    const fs::path letterboxed =
        grey("letterboxed.mp4", {"-vf", "scale=320:120,pad=320:180:0:30:black"});
    const QImage image = drawn(letterboxed, {"--guides", "picture"});
    EXPECT_TRUE(holds(image.copy(0, 25, 320, 10), isRed));
    EXPECT_TRUE(holds(image.copy(0, 145, 320, 10), isRed));
    EXPECT_FALSE(holds(image.copy(0, 0, 320, 20), isRed));
}

TEST_F(DrawnStill, LiesOnThePictureAsItIsShown)
{
    const fs::path turned = Media::make(
        {"turned.mp4", {"-i", m_clip.native(), "-c", "copy", "-metadata:s:v:0", "rotate=90"}});
    const QImage vertical = drawn(turned, {"--guides", "tiktok"});
    EXPECT_EQ(vertical.size(), QSize(180, 320));
    EXPECT_LT(luma(vertical, 90, 20), 80);
    EXPECT_NEAR(luma(vertical, 90, 100), 128, 3);
    EXPECT_NEAR(luma(drawn(m_clip, {"--guides", "tiktok"}), 160, 10), 128, 3);
    // Its pixels are shown 4:3, so that 64 of them are as wide as 85 rows are high.
    EXPECT_EQ(drawn(Clips::anamorphic(), {"--guides", "safe"}).size(), QSize(85, 64));
    EXPECT_EQ(drawn(Clips::anamorphic(), {}).size(), QSize(64, 64));
}

TEST_F(DrawnStill, HasTheCaptionsThatShow)
{
    const auto file = m_folder.write("spot.srt", "1\n00:00:00,100 --> 00:00:00,300\nHHHHHH\n");
    const auto isWhite = [](QColor color) { return color.lightness() > 230; };
    const QImage image = drawn(m_clip, {"--captions", file.native()});
    EXPECT_TRUE(holds(image.copy(0, 155, 320, 15), isWhite));
    m_folder.write("spot.srt", "1\n00:00:00,300 --> 00:00:00,500\nHHHHHH\n");
    EXPECT_FALSE(holds(drawn(m_clip, {"--captions", file.native()}), isWhite));
}

TEST_F(DrawnStill, HasTheDrawingsOfTheReviewUnlessItIsClean)
{
    FileReview review = ReviewStore::loadOrCreate(FileUrl::fromPath(m_clip)).value();
    ReviewComment comment;
    comment.frame = 4; // one off
    comment.frameRate = 25;
    comment.createdAt = QDateTime::currentDateTimeUtc();
    comment.strokes = {{.id = {},
                        .tool = AnnotationStroke::Tool::arrow,
                        .points = {{0.1, 0.5}, {0.9, 0.5}},
                        .ink = AnnotationStroke::Ink::red}};
    review.comments = {comment};
    ASSERT_TRUE(ReviewStore::save(review));
    EXPECT_TRUE(holds(drawn(m_clip, {}), isRed));
    EXPECT_FALSE(holds(drawn(m_clip, {"--clean"}), isRed));
    review.comments[0].frame = 9;
    ASSERT_TRUE(ReviewStore::save(review));
    EXPECT_FALSE(holds(drawn(m_clip, {}), isRed));
}

TEST_F(DrawnStill, IsTheFrameOfItsNumber)
{
    const fs::path numbered = Media::make(
        {"numbered-wide.mkv",
         {"-itsoffset", "0.48", "-f", "lavfi", "-i",
          "nullsrc=s=320x180:r=25,geq=lum='16+8*N':cb=128:cr=128,trim=end_frame=25", "-f", "lavfi",
          "-i", "sine=r=48000:d=1", "-pix_fmt", "yuv420p", "-c:v", "ffv1"}});
    for (const int frame : {0, 1, 12, 24}) {
        const auto result =
            Cli::run({"still", "--at",
                      "00:00:00:" + std::string(frame < 10 ? "0" : "") + std::to_string(frame),
                      "--guides", "safe", "-o", out(), numbered.native()});
        ASSERT_EQ(result.status, 0) << result.err.toStdString();
        const QImage image(QString::fromStdString(out()));
        EXPECT_NEAR(luma(image, 150, 100), 8 * frame * 255 / 219, 3) << frame;
    }
}

TEST_F(DrawnStill, MayBeAJpeg)
{
    const std::string jpeg = m_folder / "still.jpg";
    EXPECT_EQ(
        Cli::run({"still", "--at", "0.2", "--guides", "safe", "-o", jpeg, m_clip.native()}).status,
        0);
    EXPECT_TRUE(contents(jpeg).startsWith("\xFF\xD8\xFF"));
    EXPECT_EQ(problemOf({"--guides", "safe", "-o", m_folder / "still.nothing"}),
              "vantroque-cli: a still that is drawn on is a PNG or JPEG file\n");
    EXPECT_THAT(m_folder.names(), ElementsAre("still.jpg"));
}

TEST_F(DrawnStill, AGuideThatIsNoneIsTold)
{
    EXPECT_EQ(
        problemOf({"--guides", "safe,nobody"}),
        "vantroque-cli: unknown guide \"nobody\": one of safe, thirds, picture, feed, tiktok, "
        "meta-reels-stories, all\n");
    EXPECT_THAT(problemOf({"--guides", ""}), StartsWith("vantroque-cli: unknown guide \"\": "));
}

TEST_F(DrawnStill, CannotBeCleanAndDrawnOn)
{
    const std::string problem =
        "vantroque-cli: --clean leaves out what --guides and --captions ask for\n";
    EXPECT_EQ(problemOf({"--clean", "--guides", "safe"}), problem);
    EXPECT_EQ(problemOf({"--captions", "some.srt", "--clean"}), problem);
}

TEST_F(DrawnStill, NeverReplacesItsCaptions)
{
    const auto file = m_folder.write("spot.srt", "1\n00:00:00,100 --> 00:00:00,300\nHHHHHH\n");
    EXPECT_EQ(problemOf({"--captions", file.native(), "-o", file.native()}),
              "vantroque-cli: " + file.native()
                  + " is a file to be read, and is not written over\n");
    EXPECT_THAT(problemOf({"--captions", "/nowhere.srt", "-o", out()}),
                StartsWith("vantroque-cli: /nowhere.srt: "));
    EXPECT_THAT(m_folder.names(), ElementsAre("spot.srt"));
}

} // namespace
} // namespace vantroque
