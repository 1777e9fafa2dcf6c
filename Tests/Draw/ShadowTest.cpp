#include "Draw/Shadow.h"

#include "Drawn.h"

namespace vantroque {
namespace {

using namespace Drawn;

constexpr QSize size(200, 120);

/// What is drawn with `with`, on a light ground.
template<typename With>
QImage drawn(With with)
{
    QImage image = blank(size, QColor(220, 220, 210));
    QPainter painter(&image);
    with(painter);
    return image;
}

/// From one end to the other, in so many pieces.
QPainterPath straight(QPointF from, QPointF to, int pieces)
{
    QPainterPath path(from);
    for (int i = 1; i <= pieces; ++i)
        path.lineTo(from + (to - from) * i / pieces);
    return path;
}

const QPen pen(Qt::red, 4);

} // namespace

TEST(Shadow, ALineInManyPiecesIsTheSameLine)
{
    const auto line = [](int pieces) {
        return drawn([pieces](QPainter& painter) {
            Shadow::withLine(painter, straight({20, 100}, {180, 15}, pieces), pen, 6);
        });
    };
    EXPECT_EQ(difference(line(1), line(400), 1), QRect());
}

TEST(Shadow, IsEnlargedWithThePainter)
{
    const QImage enlarged = drawn([](QPainter& painter) {
        painter.scale(2, 2);
        Shadow::ofLine(painter, straight({10, 50}, {90, 8}, 1), QPen(Qt::red, 2), 3, 0.7);
    });
    const QImage large = drawn([](QPainter& painter) {
        Shadow::ofLine(painter, straight({20, 100}, {180, 16}, 1), pen, 6, 0.7);
    });
    EXPECT_NE(difference(large, drawn([](QPainter&) {})), QRect());
    EXPECT_EQ(difference(enlarged, large), QRect());
}

TEST(Shadow, OfALineThatLeavesThePictureIsDrawnWithinIt)
{
    const QImage far = drawn([](QPainter& painter) {
        Shadow::withLine(painter, straight({-1e6 + 100, -1e6 + 60}, {1e6 + 100, 1e6 + 60}, 1), pen,
                         6);
    });
    const QImage near = drawn([](QPainter& painter) {
        Shadow::withLine(painter, straight({-100, -140}, {300, 260}, 1), pen, 6);
    });
    EXPECT_EQ(difference(far, near, 1), QRect());
}

TEST(Shadow, DashesKeepTheirLengthsAroundCorners)
{
    QPen dashed(pen);
    dashed.setCapStyle(Qt::FlatCap);
    dashed.setDashPattern({5, 10}); // of its width: 20 and 40
    QPainterPath path({10, 60});
    path.lineTo(15, 60);
    path.lineTo(190, 60);
    const QImage image =
        drawn([&](QPainter& painter) { Shadow::ofLine(painter, path, dashed, 2, 1); });
    const auto isDark = [&](int x) { return qGray(image.pixel(x, 60)) < 40; };
    for (const int x : {12, 28, 72, 88, 132, 148}) {
        EXPECT_TRUE(isDark(x)) << x;
    }
    for (const int x : {40, 60, 100, 120, 160, 180}) {
        EXPECT_FALSE(isDark(x)) << x;
    }
}

} // namespace vantroque
