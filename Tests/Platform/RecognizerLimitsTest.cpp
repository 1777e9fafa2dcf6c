#include "Painted.h"

#include <filesystem>
#include <thread>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using Subject = TextRecognizer::Subject;

namespace {

constexpr Subject subjects[] = {Subject::frame, Subject::crop, Subject::slate};
const PaintedText super{u"Fresh coffee every morning"_s, 36, {180, 200}};

auto threadCount()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

} // namespace

TEST(RecognizerLimits, ALanguageWithoutDataIsNamedWithItsPackage)
{
    const auto made = TesseractRecognizer::make({"eng", "xx_yy"});
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().description,
              u"no data for the text language \"xx_yy\": install tesseract-ocr-xx-yy"_s);
    EXPECT_FALSE(TesseractRecognizer::make({"xyz"}));
}

TEST(RecognizerLimits, ReadsInSeveralLanguagesAtOnce)
{
    auto engine = TesseractRecognizer::make({"eng", "deu"});
    ASSERT_TRUE(engine);
    EXPECT_EQ(
        textsIn(with(plain({960, 540}, Qt::black), {u"Große Auswahl für morgen"_s, 40, {180, 200}}),
                **engine),
        QStringList{u"Große Auswahl für morgen"_s});
}

TEST(RecognizerLimits, ADeadlineThatHasPassedIsAnError)
{
    const auto engine = recognizer();
    const QImage picture = with(plain({960, 540}, Qt::black), super);
    for (const Subject subject : subjects) {
        const auto lines = engine->recognize(picture, subject, std::chrono::steady_clock::now());
        ASSERT_FALSE(lines);
        EXPECT_EQ(lines.error().description, u"reading the text took too long"_s);
    }
}

TEST(RecognizerLimits, ADeadlineEndsALongReading)
{
    const auto engine = recognizer();
    QImage page = plain({1920, 1080}, Qt::white);
    for (int line = 0; line < 60; ++line)
        page = with(page, {u"While supplies last. Excludes tax, title, license and delivery fees. "
                           "Must be eighteen or older to enter. No purchase necessary."_s,
                           14,
                           {20, 20 + 17 * line},
                           Qt::black});
    const auto start = std::chrono::steady_clock::now();
    const auto lines =
        engine->recognize(page, Subject::slate, start + std::chrono::milliseconds(300));
    EXPECT_FALSE(lines);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    EXPECT_FALSE(textsIn(with(plain({960, 540}, Qt::black), super), *engine).isEmpty())
        << "and the next picture is read again";
}

TEST(RecognizerLimits, PicturesOfNoOrHardlyAnySizeHoldNothing)
{
    const auto engine = recognizer();
    for (const Subject subject : subjects) {
        EXPECT_THAT(linesIn(QImage(), *engine, subject), IsEmpty());
        EXPECT_THAT(linesIn(QImage(0, 0, QImage::Format_RGB32), *engine, subject), IsEmpty());
        for (const QSize size : {QSize(1, 1), QSize(7, 7), QSize(8, 8), QSize(1, 3000),
                                 QSize(3000, 1), QSize(2000, 9), QSize(9, 2000)})
            EXPECT_THAT(linesIn(plain(size, QColor(40, 90, 30)), *engine, subject), IsEmpty())
                << size.width() << "x" << size.height();
    }
}

TEST(RecognizerLimits, NoisyPicturesOfHardlyAnySizeDoNotCrash)
{
    const auto engine = recognizer();
    for (const Subject subject : subjects)
        for (const QSize size :
             {QSize(8, 8), QSize(9, 33), QSize(33, 9), QSize(320, 10), QSize(1200, 8)})
            linesIn(foliage(size), *engine, subject);
}

TEST(RecognizerLimits, HugePicturesAreReadScaledDown)
{
    const auto engine = recognizer();
    PaintedText large = super;
    large.size = 8 * super.size;
    large.place = 8 * super.place;
    EXPECT_EQ(textsIn(with(plain({7680, 4320}, Qt::black), large), *engine),
              QStringList{super.text});
}

TEST(RecognizerLimits, EveryFormatIsRead)
{
    const auto engine = recognizer();
    const QImage picture = with(plain({960, 540}, Qt::black), super);
    for (const auto format :
         {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_ARGB32,
          QImage::Format_RGB888, QImage::Format_RGBA64, QImage::Format_Indexed8})
        EXPECT_EQ(textsIn(picture.convertToFormat(format), *engine), QStringList{super.text})
            << format;
}

TEST(RecognizerLimits, TheEngineStartsNoThreadsOfItsOwn)
{
    auto engine = recognizer();
    const QImage picture = with(foliage({960, 540}), super);
    // Qt converts pictures on threads that it keeps for a while.
    EXPECT_EQ(textsIn(picture, *engine), QStringList{super.text});
    engine->forget();
    const auto before = threadCount();
    std::jthread([&] {
        // As a pool hands it out: made on one thread, used on another.
        EXPECT_EQ(textsIn(picture, *engine), QStringList{super.text});
        EXPECT_EQ(threadCount(), before + 1);
    }).join();
    EXPECT_EQ(threadCount(), before);
}
