#include "Base/Numbers.h"
#include "Picture/FrameDifference.h"
#include "Platform/Playing.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Two files that differ by one code of one sample, through the decoders of two players.

namespace vantroque {
namespace {

namespace fs = std::filesystem;

constexpr NormalizedRect whole{0, 0, 1, 1};

struct Kind {
    const char* format;
    int middle;
};

/// Half a second of grey, stored without loss. `change` is added to the samples at 20, 10 of one
/// plane in every frame: their number there is that of the plane's samples.
fs::path grey(const Kind& kind, const std::string& plane, int change)
{
    const std::string middle = Numbers::wholeText(kind.middle);
    const std::string changed =
        "if(eq(X,20)*eq(Y,10)," + Numbers::wholeText(kind.middle + change) + "," + middle + ")";
    const auto code = [&](const char* one) { return plane == one ? changed : middle; };
    return Media::make(
        {std::string("grey-") + kind.format + plane + Numbers::wholeText(change) + ".mkv",
         {"-f", "lavfi", "-i",
          std::string("nullsrc=size=98x51:rate=25:duration=0.2,format=") + kind.format
              + ",geq=lum='" + code("lum") + "':cb='" + code("cb") + "':cr='" + code("cr") + "'",
          "-pix_fmt", kind.format, "-c:v", "ffv1"}});
}

FrameDifference::Difference difference(const fs::path& a, const fs::path& b)
{
    Playing playerA(a);
    Playing playerB(b);
    const auto frameA = playerA.frame(2);
    const auto frameB = playerB.frame(2);
    if (!frameA || !frameB)
        return {};
    return FrameDifference::of({.picture = frameA->picture}, {.picture = frameB->picture}, whole,
                               16);
}

int litPixels(const QImage& image)
{
    int lit = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            lit += image.pixel(x, y) != 0xFF000000U ? 1 : 0;
    return lit;
}

TEST(PlantedCodes, OneCodeOfOneSampleShows)
{
    for (const Kind& kind : {Kind{"yuv420p", 128}, Kind{"yuv420p10le", 512}, Kind{"yuv422p", 128},
                             Kind{"yuv422p10le", 512}}) {
        const fs::path plain = grey(kind, "none", 0);
        const bool has422 = std::string(kind.format).find("422") != std::string::npos;
        EXPECT_TRUE(difference(plain, plain).isEqual) << kind.format;
        for (const char* const plane : {"lum", "cb", "cr"}) {
            SCOPED_TRACE(std::string(kind.format) + " " + plane);
            const auto found = difference(plain, grey(kind, plane, 1));
            ASSERT_EQ(found.image.size(), QSize(98, 51));
            EXPECT_FALSE(found.isEqual);
            const bool isLuma = plane == std::string("lum");
            EXPECT_EQ(litPixels(found.image), isLuma ? 1 : 4);
            const QPoint place = isLuma ? QPoint(20, 10) : QPoint(40, has422 ? 10 : 20);
            EXPECT_NE(found.image.pixel(place), 0xFF000000U);
        }
    }
}

} // namespace
} // namespace vantroque
