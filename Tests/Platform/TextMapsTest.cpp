#include "VantroquePlatform/Recognition/GlyphComponents.h"
#include "VantroquePlatform/Recognition/PictureMatrix.h"

#include "Painted.h"

#include <QPainter>

#include <opencv2/imgproc.hpp>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::Each;
using testing::SizeIs;

namespace {

cv::Mat1b lumaOf(const cv::Mat3b& picture)
{
    cv::Mat1b luma;
    cv::cvtColor(picture, luma, cv::COLOR_RGB2GRAY);
    return luma;
}

/// The glyphs of each map.
std::vector<std::vector<Glyph>> glyphsOf(const QImage& image)
{
    const cv::Mat3b picture = pictureMatrix(image, 960);
    const TextScale scale = TextScale::ofFrame(picture.rows);
    std::vector<std::vector<Glyph>> found;
    for (const cv::Mat1b& map : textMaps(picture, scale))
        found.push_back(findGlyphs(map, picture, lumaOf(picture), scale));
    return found;
}

} // namespace

TEST(TextMaps, SomeMapShowsEveryLetterWhateverItsShade)
{
    const QImage gray = plain({640, 360}, QColor(120, 120, 120));
    for (const QColor color : {Qt::white, Qt::black, Qt::yellow, Qt::blue}) {
        const auto glyphs = glyphsOf(with(gray, {u"HEMD"_s, 30, {100, 200}, color}));
        EXPECT_THAT(glyphs, Contains(SizeIs(4))) << color.name().toStdString();
    }
}

TEST(TextMaps, YellowLettersStandApartFromAGridAsLightAsThey)
{
    QImage picture = plain({640, 360}, QColor(120, 60, 50));
    QPainter painter(&picture);
    for (int x = 0; x < 640; x += 16)
        painter.fillRect(x, 0, 3, 360, QColor(205, 210, 200));
    painter.end();
    picture = with(picture, {u"HEMD"_s, 30, {100, 200}, QColor(255, 205, 120)});
    EXPECT_THAT(glyphsOf(picture), Contains(SizeIs(4)));
}

TEST(TextMaps, AFlatPictureHasNoGlyphs)
{
    EXPECT_THAT(glyphsOf(plain({640, 360}, QColor(120, 130, 140))), Each(SizeIs(0)));
}

TEST(TextMaps, LettersThatAreTooLowOrTooHighAreNone)
{
    const QImage black = plain({640, 360}, Qt::black);
    EXPECT_THAT(glyphsOf(with(black, {u"H"_s, 3, {100, 200}})), Each(SizeIs(0)));
    EXPECT_THAT(glyphsOf(with(black, {u"H"_s, 120, {100, 200}})), Each(SizeIs(0)));
}

TEST(TextMaps, AGlyphHasTheColorOfTheMiddleOfItsStrokes)
{
    const QImage picture =
        with(plain({640, 360}, Qt::black), {u"H"_s, 40, {100, 200}, QColor(250, 200, 60)});
    int letters = 0;
    for (const auto& glyphs : glyphsOf(picture))
        for (const Glyph& glyph : glyphs) {
            if (glyph.step < 0)
                continue; // the dark around the letter
            ++letters;
            EXPECT_LT(cv::norm(glyph.color - cv::Vec3f(250, 200, 60)), 12);
        }
    EXPECT_GT(letters, 0);
}

TEST(TextMaps, AColorMapShowsThatColorAlone)
{
    QImage picture = plain({2, 1}, QColor(200, 100, 50));
    picture.setPixelColor(1, 0, QColor(200, 160, 50));
    const cv::Mat1b map = colorMap(pictureMatrix(picture, 960), {205, 95, 55});
    EXPECT_EQ(map(0, 0), 255);
    EXPECT_EQ(map(0, 1), 0);
}
