#include "Painted.h"

#include "VantroquePlatform/Recognition/KnownLine.h"

#include <QPainter>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using Subject = TextRecognizer::Subject;

namespace {

constexpr QSize cropSize(320, 40);
const PaintedText text{u"Fresh coffee every morning"_s, 20, {8, 27}};

QImage scene()
{
    return foliage(cropSize, 4);
}

/// The text over a scene, with that opacity.
QImage faded(const QImage& behind, double opacity)
{
    QImage picture = behind;
    QPainter painter(&picture);
    painter.setOpacity(opacity);
    painter.drawImage(0, 0, with(behind, text));
    return picture;
}

/// A recognizer that has read the text in a crop.
std::unique_ptr<TesseractRecognizer> knowing()
{
    auto engine = recognizer();
    EXPECT_THAT(textsIn(with(scene(), text), *engine, Subject::crop), ElementsAre(text.text));
    return engine;
}

} // namespace

TEST(KnownLine, StandsUntilItHasFadedByHalf)
{
    const auto engine = knowing();
    const int readings = engine->readings();
    EXPECT_THAT(textsIn(faded(scene(), 0.65), *engine, Subject::crop), ElementsAre(text.text));
    EXPECT_EQ(engine->readings(), readings) << "it is known by its letters";
    EXPECT_THAT(textsIn(faded(scene(), 0.35), *engine, Subject::crop), IsEmpty());
    EXPECT_THAT(textsIn(scene(), *engine, Subject::crop), IsEmpty());
}

TEST(KnownLine, WhatIsNearlyTransparentIsReadWithoutKnowingIt)
{
    EXPECT_THAT(textsIn(faded(plain(cropSize, Qt::black), 0.35), *recognizer(), Subject::crop),
                ElementsAre(text.text))
        << "so that it is not for want of readable letters that a faded line counts as gone";
}

TEST(KnownLine, StandsUntilHalfOfItIsWipedAway)
{
    const auto engine = knowing();
    for (const auto& [shown, isThere] : {std::pair(0.7, true), std::pair(0.3, false)}) {
        QImage picture = scene();
        QPainter(&picture).drawImage(QPoint(), with(scene(), text),
                                     QRect(0, 0, int(shown * cropSize.width()), 40));
        EXPECT_EQ(!linesIn(picture, *engine, Subject::crop).empty(), isThere) << shown;
    }
}

TEST(KnownLine, StandsOverAnotherScene)
{
    const auto engine = knowing();
    EXPECT_THAT(textsIn(with(foliage(cropSize, 9), text), *engine, Subject::crop),
                ElementsAre(text.text));
    EXPECT_THAT(textsIn(foliage(cropSize, 9), *engine, Subject::crop), IsEmpty());
}

TEST(KnownLine, StandsWhereItHasMovedTo)
{
    const auto engine = knowing();
    PaintedText moved = text;
    moved.place += QPoint(7, 3);
    EXPECT_THAT(textsIn(with(plain(cropSize, Qt::black), moved), *engine, Subject::crop),
                ElementsAre(text.text));
}

TEST(KnownLine, AnotherTextAtItsPlaceIsNotIt)
{
    const auto engine = knowing();
    PaintedText other = text;
    other.text = u"Drive home happy today"_s;
    EXPECT_THAT(textsIn(with(scene(), other), *engine, Subject::crop), IsEmpty());
}

TEST(KnownLine, OfAnotherPlaceIsReadAfterForgetting)
{
    const auto engine = knowing();
    PaintedText other = text;
    other.text = u"Drive home happy today"_s;
    engine->forget();
    EXPECT_THAT(textsIn(with(scene(), other), *engine, Subject::crop), ElementsAre(other.text));
}
