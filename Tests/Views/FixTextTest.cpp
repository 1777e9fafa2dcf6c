#include "VantroqueApp/Views/Controls/FixText.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

/// Where the first and the last column of a colour lie; {-1, -1} when it is nowhere.
std::pair<int, int> columns(const FixText& text, const QColor& color)
{
    QImage image(600, text.height(), QImage::Format_RGB32);
    image.fill(Qt::black);
    {
        QPainter painter(&image);
        text.draw(painter, {}, QColor(255, 0, 0), QColor(0, 0, 255));
    }
    std::pair<int, int> found{-1, -1};
    for (int x = 0; x < image.width(); ++x)
        for (int y = 0; y < image.height(); ++y) {
            const QColor pixel = image.pixelColor(x, y);
            const int of = color == Qt::red ? pixel.red() : pixel.blue();
            const int other = color == Qt::red ? pixel.blue() : pixel.red();
            if (of < 100 || other > of / 2)
                continue;
            found.first = found.first < 0 ? x : found.first;
            found.second = x;
        }
    return found;
}

TEST(FixText, DrawsItsLabelQuieterThanWhatFollows)
{
    const FixText text(u"-24 ± 2 LKFS"_s, 600, u"Expected: "_s);
    const auto quiet = columns(text, Qt::red);
    const auto strong = columns(text, Qt::blue);
    EXPECT_GE(quiet.first, 0);
    EXPECT_GT(strong.first, quiet.second);
}

TEST(FixText, DrawsWhatIsToBeTypedStronger)
{
    const FixText text(u"Normalize on export (in ffmpeg: -af loudnorm=I=-24)."_s, 600);
    EXPECT_GT(columns(text, Qt::blue).first, columns(text, Qt::red).first);
    EXPECT_EQ(columns(FixText(u"Re-export at 1920x1080."_s, 600), Qt::blue).first, -1);
    EXPECT_EQ(columns(FixText(u"In ffmpeg, -shortest can be the cause."_s, 600), Qt::blue).first,
              -1);
}

TEST(FixText, WrapsAndLosesNothing)
{
    const QString sentence =
        u"Bring the mix down and encode it once more. "_s.repeated(5).trimmed();
    EXPECT_GT(FixText(sentence, 300).height(), FixText(sentence, 600).height());
    EXPECT_GT(FixText(QString(200, u'x'), 300).height(), FixText(u"x"_s, 300).height());
}

} // namespace
} // namespace vantroque
