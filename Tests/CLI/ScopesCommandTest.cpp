#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <QImage>
#include <QPainter>

#include <array>

// The scopes of one frame as pictures.

namespace vantroque {
namespace {

using Media::operator+;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// One colour all over, in codes of the format.
fs::path uniform(const std::string& name, const std::string& codes, const std::string& format,
                 const std::string& range)
{
    return Media::make(
        {name,
         {"-f", "lavfi", "-i", "nullsrc=s=64x36:r=25:d=0.2,format=" + format + ",geq=" + codes,
          "-pix_fmt", format, "-color_range", range, "-c:v", "libx264", "-preset", "ultrafast",
          "-qp", "0"}});
}

class Scopes : public testing::Test {
protected:
    QImage scope(const std::string& name, const fs::path& clip) const
    {
        const auto result =
            Cli::run({"scopes", "--at", "0", "-o", m_folder.path().native(), clip.native()});
        EXPECT_EQ(result.status, 0) << result.err.toStdString();
        EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
        return QImage(QString::fromStdString(m_folder / name));
    }
    std::string problemOf(const Words& words) const
    {
        const auto result = Cli::run(Words{"scopes"} + words);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(m_folder.names(), IsEmpty());
        return result.err.toStdString();
    }

    const TestFolder m_folder;
};

TEST_F(Scopes, AreFourPictures)
{
    EXPECT_EQ(scope("waveform.png", Clips::plain()).size(), QSize(256, 128));
    EXPECT_THAT(m_folder.names(),
                ElementsAre("out-of-range.png", "parade.png", "vectorscope.png", "waveform.png"));
    const auto size = [&](const char* name) {
        return QImage(QString::fromStdString(m_folder / name)).size();
    };
    EXPECT_EQ(size("parade.png"), QSize(384, 128));
    EXPECT_EQ(size("vectorscope.png"), QSize(128, 128));
    EXPECT_EQ(size("out-of-range.png"), QSize(320, 180));
}

/// Without the rows of white and of one code more, since ffmpeg dithers deep pictures by a code.
QImage besideWhite(QImage waveform)
{
    constexpr int rowOfWhite = 11;
    QPainter(&waveform).fillRect(0, rowOfWhite - 1, waveform.width(), 2, Qt::black);
    return waveform;
}

TEST_F(Scopes, ShowWhiteAtAHundredPercentInEveryRangeAndDepth)
{
    const QImage video =
        scope("waveform.png", uniform("white-tv.mp4", "235:128:128", "yuv420p", "tv"));
    EXPECT_EQ(video.pixel(128, 11), qRgb(255, 255, 255));
    EXPECT_EQ(scope("waveform.png", uniform("white-pc.mp4", "255:128:128", "yuv420p", "pc")),
              video);
    for (const auto& [name, codes, range] : {std::array{"white-pc-10.mp4", "1023:512:512", "pc"},
                                             std::array{"white-tv-10.mp4", "940:512:512", "tv"}}) {
        const QImage deep = scope("waveform.png", uniform(name, codes, "yuv420p10le", range));
        EXPECT_EQ(besideWhite(deep), besideWhite(video)) << name;
        EXPECT_EQ(deep.pixel(128, 11), qRgb(255, 255, 255)) << name;
    }
}

TEST_F(Scopes, HatchWhatIsOutOfRange)
{
    const auto red = [](const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y).red() - image.pixelColor(x, y).green() > 60;
        return count;
    };
    const QImage legal =
        scope("out-of-range.png", uniform("white-tv.mp4", "235:128:128", "yuv420p", "tv"));
    EXPECT_EQ(red(legal), 0);
    const QImage tooBright =
        scope("out-of-range.png", uniform("superwhite.mp4", "252:128:128", "yuv420p", "tv"));
    EXPECT_NEAR(red(tooBright), 64 * 36 / 2, 64);
}

TEST_F(Scopes, HaveTheShapeInWhichThePictureIsShown)
{
    EXPECT_EQ(scope("out-of-range.png", Clips::anamorphic()).size(), QSize(85, 64));
}

TEST_F(Scopes, TakeOneFileATimeAndAFolder)
{
    const std::string clip = Clips::plain().native();
    const std::string folder = m_folder.path().native();
    EXPECT_EQ(problemOf({"--at", "0", clip}),
              "vantroque-cli: scopes takes -o DIR for its pictures\n");
    EXPECT_EQ(problemOf({"-o", folder, clip}),
              "vantroque-cli: scopes takes one file and --at TIME\n");
    EXPECT_EQ(problemOf({"-o", folder, "--at", "0", clip, clip}),
              "vantroque-cli: scopes takes one file and --at TIME\n");
    EXPECT_THAT(problemOf({"-o", folder, "--at", "60", clip}),
                EndsWith("there is no frame at that time\n"));
    EXPECT_THAT(problemOf({"-o", clip, "--at", "0", clip}), EndsWith(": Not a directory\n"));
    EXPECT_EQ(problemOf({"-o", folder, "--at", "0", Clips::wav().native()}),
              "vantroque-cli: sound.wav: there is no picture in it\n");
}

TEST_F(Scopes, MakeTheFolderThatTheyGoInto)
{
    const fs::path folder = m_folder / "made" / "anew";
    const auto result =
        Cli::run({"scopes", "--at", "0", "-o", folder.native(), Clips::plain().native()});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_TRUE(fs::exists(folder / "parade.png"));
}

TEST_F(Scopes, NeverReplaceTheFileThatTheyAreOf)
{
    const fs::path clip = m_folder / "waveform.png";
    Media::ffmpeg({"-f", "lavfi", "-i", "color=red:size=64x36", "-frames:v", "1", clip.native()});
    const QByteArray before = contents(clip);
    const auto result =
        Cli::run({"scopes", "--at", "0", "-o", m_folder.path().native(), clip.native()});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(),
                EndsWith("is a file to be read, and is not written over\n"));
    EXPECT_EQ(contents(clip), before);
    EXPECT_THAT(m_folder.names(), ElementsAre("waveform.png"));
}

} // namespace
} // namespace vantroque
