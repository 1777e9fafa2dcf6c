#include "VantroqueApp/Views/Analyzing/LivePictures.h"

#include "Probe/Prober.h"
#include "Signal/SignalAnalyzer.h"
#include "Support/Clips.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QPainter>
#include <gtest/gtest.h>

// Against the picture that ffmpeg shows of the same file, turned and stretched by itself.

namespace vantroque {
namespace {

using namespace Media;
using Path = std::filesystem::path;
using Words = std::vector<std::string>;

constexpr QSize place(400, 400);

/// Red and green over blue and white.
Path colours(const std::string& pixelAspect)
{
    const auto colour = [](const std::string& name) {
        return Words{"-f", "lavfi", "-i", "color=" + name + ":size=160x90:rate=25:duration=1"};
    };
    return make({"colours-" + pixelAspect + ".mp4",
                 colour("red") + colour("lime") + colour("blue") + colour("white")
                     + Words{"-filter_complex", "xstack=inputs=4:layout=0_0|w0_0|0_h0|w0_h0,setsar="
                                                    + pixelAspect + "/45"}
                     + Clips::x264()});
}

Path turned(const Path& clip, const std::string& degrees)
{
    return degrees == "0" ? clip
                          : make({"turned-" + degrees + "-" + clip.filename().native(),
                                  {"-i", clip.native(), "-c", "copy", "-metadata:s:v:0",
                                   "rotate=" + degrees}});
}

/// As a player shows it, in the middle of the place.
QImage shownByTool(const Path& clip)
{
    const TestFolder folder;
    const Path still = folder / "still.png";
    ffmpeg(
        {"-i", clip.native(), "-frames:v", "1", "-vf", "scale=iw*sar:ih,setsar=1", still.native()});
    const QImage picture = QImage(QString::fromStdString(still.native()))
                               .scaled(place, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage stage(place, QImage::Format_RGB32);
    stage.fill(Theme::dark().stage);
    QPainter(&stage).drawImage((place.width() - picture.width()) / 2,
                               (place.height() - picture.height()) / 2, picture);
    return stage;
}

/// The share of points that are of another colour. Matrices differ a little, colours much.
double difference(const QImage& one, const QImage& other)
{
    constexpr int much = 90;
    constexpr int corner = 10;
    int points = 0;
    int different = 0;
    for (int y = corner; y < place.height() - corner; y += 5)
        for (int x = corner; x < place.width() - corner; x += 5) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            ++points;
            different += std::abs(a.red() - b.red()) > much
                         || std::abs(a.green() - b.green()) > much
                         || std::abs(a.blue() - b.blue()) > much;
        }
    return static_cast<double>(different) / points;
}

struct Shown {
    std::string degrees;
    std::string pixelAspect; ///< Times 45.
};

class LivePictureOf : public testing::TestWithParam<Shown> {
protected:
    /// What a decode of the file previews, as it is shown, and as it would be without its shape.
    void preview(const Path& clip)
    {
        const FileUrl url = FileUrl::fromPath(clip);
        const auto media = Prober::probe(url);
        ASSERT_TRUE(media.has_value());
        AnalysisProgress progress({}, {.wantsPreview = true});
        progress.set(*media);
        SignalAnalyzer::Options options;
        options.previewWidth = 960;
        ASSERT_TRUE(SignalAnalyzer::analyze(url, *media, options, &progress).has_value());
        const auto now = progress.snapshot();
        ASSERT_NE(now.preview, nullptr);
        m_shown = LivePictures::draw(*now.preview, {now.rotation, now.pixelAspect}, place, 1);
        m_plain = LivePictures::draw(*now.preview, {}, place, 1);
    }

    LivePictures::Images m_shown;
    LivePictures::Images m_plain;
};

INSTANTIATE_TEST_SUITE_P(Files, LivePictureOf,
                         testing::Values(Shown{"0", "45"}, Shown{"90", "45"}, Shown{"180", "45"},
                                         Shown{"270", "45"}, Shown{"0", "64"}, Shown{"0", "30"},
                                         Shown{"90", "64"}, Shown{"270", "30"}),
                         [](const auto& one) {
                             return "Turned" + one.param.degrees + "Aspect" + one.param.pixelAspect
                                    + "To45";
                         });

TEST_P(LivePictureOf, AFileIsUprightAndInItsShape)
{
    const Path clip = turned(colours(GetParam().pixelAspect), GetParam().degrees);
    const QImage expected = shownByTool(clip);
    preview(clip);
    EXPECT_LT(difference(m_shown.picture, expected), 0.03);
    if (GetParam().degrees != "0" || GetParam().pixelAspect != "45") {
        EXPECT_GT(difference(m_plain.picture, expected), 0.1) << "it arrives as it is stored";
    }
    EXPECT_EQ(m_shown.waveform, m_plain.waveform) << "scopes are of what is stored";
}

} // namespace
} // namespace vantroque
