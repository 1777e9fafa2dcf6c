#include "VantroquePlatform/Recognition/FrameMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// Four white bars for letters, over a gray.
struct Scene {
    cv::Mat3b picture;
    FoundLine line;

    explicit Scene(uchar gray) : picture(200, 300, cv::Vec3b::all(gray))
    {
        line.text = u"bars"_s;
        line.letters = 4;
        line.line.letterHeight = 20;
        line.line.color = {255, 255, 255};
        for (int x = 100; x < 160; x += 15) {
            const cv::Rect bar(x, 90, 6, 20);
            cv::rectangle(picture, bar, cv::Scalar::all(255), cv::FILLED);
            line.line.glyphs.push_back({bar, {255, 255, 255}, 100});
            line.box = line.box.empty() ? bar : line.box | bar;
        }
        line.line.box = line.box;
    }
};

/// What a memory knows of lines that stand in a picture.
std::vector<FoundLine> standing(FrameMemory memory, const cv::Mat3b& picture)
{
    memory.moveTo(picture);
    return memory.lines();
}

bool isKnownEmpty(FrameMemory memory, const Scene& scene, const cv::Mat3b& picture)
{
    memory.moveTo(picture);
    return memory.isKnownEmpty(scene.line.line);
}

FrameMemory memoryOf(const Scene& scene)
{
    FrameMemory memory;
    memory.moveTo(scene.picture);
    memory.remember({scene.line}, scene.picture);
    return memory;
}

FrameMemory emptyPlaceOf(const Scene& scene)
{
    FrameMemory memory;
    memory.moveTo(scene.picture);
    memory.rememberEmpty(scene.line.line, scene.picture);
    return memory;
}

cv::Mat3b flat(uchar gray, cv::Size size = {300, 200})
{
    return cv::Mat3b(size, cv::Vec3b::all(gray));
}

} // namespace

TEST(FrameMemory, KnowsALineThatStandsOverAnotherScene)
{
    const Scene scene(60);
    EXPECT_THAT(standing(memoryOf(scene), scene.picture), SizeIs(1));
    EXPECT_THAT(standing(memoryOf(scene), Scene(120).picture), SizeIs(1));
}

TEST(FrameMemory, ALineThatVanishedOrWhoseSurroundingsTookItsColorIsGone)
{
    const Scene scene(60);
    EXPECT_THAT(standing(memoryOf(scene), flat(60)), IsEmpty());
    EXPECT_THAT(standing(memoryOf(scene), flat(255)), IsEmpty());
}

TEST(FrameMemory, ALineThatFadesSlowlyIsGoneInTheEnd)
{
    Scene scene(60);
    FrameMemory memory = memoryOf(scene);
    for (int step = 0; step < 10; ++step) {
        scene.picture.setTo(cv::Scalar::all(245 - 10 * step), scene.picture > 100);
        memory.moveTo(scene.picture);
        memory.remember(memory.lines(), scene.picture);
    }
    EXPECT_THAT(memory.lines(), IsEmpty());
}

TEST(FrameMemory, AnEmptyPlaceIsKnownUntilItChanges)
{
    Scene scene(60);
    const FrameMemory memory = emptyPlaceOf(scene);
    EXPECT_TRUE(isKnownEmpty(memory, scene, scene.picture));
    cv::rectangle(scene.picture, {100, 90, 60, 10}, cv::Scalar::all(0), cv::FILLED);
    EXPECT_FALSE(isKnownEmpty(memory, scene, scene.picture));
}

TEST(FrameMemory, APictureOfAnotherSizeIsAnotherPlace)
{
    const Scene scene(60);
    EXPECT_THAT(standing(memoryOf(scene), flat(60, {30, 20})), IsEmpty());
    EXPECT_FALSE(isKnownEmpty(emptyPlaceOf(scene), scene, flat(60, {30, 20})));
}

TEST(FrameMemory, ForgetsAll)
{
    const Scene scene(60);
    FrameMemory memory = memoryOf(scene);
    memory.rememberEmpty(scene.line.line, scene.picture);
    memory.forget();
    EXPECT_THAT(standing(memory, scene.picture), IsEmpty());
    EXPECT_FALSE(isKnownEmpty(memory, scene, scene.picture));
}
