#include "Draw/CaptionRenderer.h"

#include "Drawn.h"

// Captions in any script are drawn, and nothing of them as the box that stands for a missing glyph.

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;

constexpr QSize size(960, 540);

QImage drawn(const QString& text)
{
    return painted(size, Qt::darkGray, [&](QPainter& painter, const QRectF& picture) {
        CaptionRenderer::draw(painter, {CaptionCue::plain(1, 0, 1, text)}, picture);
    });
}

/// What is drawn of a text, without the picture around it.
QImage inkOf(const QString& text)
{
    const QImage image = drawn(text);
    return image.copy(difference(image, blank(size, Qt::darkGray)));
}

struct Script {
    const char* name;
    QString letters;
};

void PrintTo(const Script& script, std::ostream* out)
{
    *out << script.name;
}

class CaptionScript : public testing::TestWithParam<Script> {};

INSTANTIATE_TEST_SUITE_P(
    All, CaptionScript,
    testing::Values(Script{"Latin", u"AçßžœÅfi"_s}, Script{"Greek", u"αΩή"_s},
                    Script{"Cyrillic", u"ЖяЇђ"_s}, Script{"Hebrew", u"אבגשם"_s},
                    Script{"Arabic", u"بتسعم"_s}, Script{"SimplifiedChinese", u"汉语世们"_s},
                    Script{"TraditionalChinese", u"漢語灣龍"_s}, Script{"Japanese", u"あカ々東"_s},
                    Script{"Korean", u"한국어글"_s}, Script{"Devanagari", u"नमसह"_s},
                    Script{"Thai", u"กขคง"_s}, Script{"Signs", u"♪—…“€"_s}),
    [](const auto& test) { return test.param.name; });

TEST_P(CaptionScript, HasAGlyphForEachLetter)
{
    // Never given to a character, so that no font has it.
    const QImage missing = inkOf(QString(QChar(0x0378)));
    ASSERT_FALSE(missing.isNull());
    std::vector<QImage> seen{missing};
    for (const QChar letter : GetParam().letters) {
        const QImage ink = inkOf(QString(letter));
        ASSERT_FALSE(ink.isNull()) << QString(letter).toStdString();
        for (const QImage& other : seen)
            EXPECT_NE(ink, other) << QString(letter).toStdString();
        seen.push_back(ink);
    }
}

TEST(CaptionScripts, EmojiAreInColour)
{
    for (const QString& emoji : {u"😀"_s, u"👍🏽"_s, u"🍎"_s, u"🇫🇷"_s}) {
        const QRect colour = boundsOf(drawn(emoji), [](QRgb pixel) {
            return std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)})
                       - std::min({qRed(pixel), qGreen(pixel), qBlue(pixel)})
                   > 60;
        });
        EXPECT_GT(colour.height(), 10) << emoji.toStdString();
    }
    EXPECT_NE(inkOf(u"😀"_s), inkOf(u"😡"_s));
}

TEST(CaptionScripts, EmojiGrowWithThePicture)
{
    for (const QSize large : {QSize(1920, 1080), QSize(3840, 2160)}) {
        const QImage image =
            painted(large, Qt::darkGray, [](QPainter& painter, const QRectF& place) {
                CaptionRenderer::draw(painter, {CaptionCue::plain(1, 0, 1, u"😀"_s)}, place);
            });
        EXPECT_NEAR(boundsOf(image, [](QRgb p) { return qRed(p) - qBlue(p) > 60; }).height(),
                    0.042 * large.height(), 0.02 * large.height());
    }
}

TEST(CaptionScripts, JoinedEmojiAreOne)
{
    const QString family = u"👩‍🚀"_s;
    EXPECT_LT(inkOf(family).width(), inkOf(u"👩🚀"_s).width() * 0.7);
}

TEST(CaptionScripts, ArabicLettersJoin)
{
    // Joined, the letters have other forms than alone: no gap between them.
    const QImage joined = inkOf(u"سسس"_s);
    const QImage apart = inkOf(u"س س س"_s);
    EXPECT_LT(joined.width(), apart.width() * 0.9);
}

TEST(CaptionScripts, HebrewRunsFromTheRight)
{
    // Lamed alone rises above the other letters.
    const QImage image = drawn(u"לאאאא"_s);
    const QRect ink = boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 240; });
    const QRect highest =
        boundsOf(image.copy(0, ink.top(), size.width(), 3), [](QRgb p) { return qGray(p) > 240; });
    EXPECT_GT(highest.center().x(), ink.center().x() + ink.width() / 4);
}

TEST(CaptionScripts, EachLineHasTheDirectionOfItsOwnWords)
{
    // The full stop of a line from right to left stands at its left.
    const QImage image = drawn(u"Hello.\nאאא."_s);
    const QRect ink = boundsOf(image, [](QRgb pixel) { return qGray(pixel) > 240; });
    const QImage lower = image.copy(0, ink.bottom() - 2, size.width(), 3);
    const QRect stops = boundsOf(lower, [](QRgb pixel) { return qGray(pixel) > 240; });
    EXPECT_LT(stops.left(), size.width() / 2 - 10);
}

} // namespace
} // namespace vantroque
