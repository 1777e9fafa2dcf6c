#include "Print/Printed.h"

#include "Base/Cancellation.h"
#include "Support/Program.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

#include <stop_token>

// The document, as the programs of its readers see it.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

QImage picture()
{
    QImage image(640, 360, QImage::Format_RGB32);
    image.fill(qRgb(30, 90, 200));
    return image;
}

ReviewPDF::Options withFrames()
{
    return {.frame = [](const FrameWish&) { return picture(); }};
}

QString longText(int count)
{
    QStringList all;
    for (int i = 0; i < count; ++i)
        all << u"word%1"_s.arg(i);
    return all.join(u' ');
}

TEST(ReviewPDF, TellsTheVerdictThenTheCommentsThenAllResults)
{
    auto section = spot();
    section.review = reviewWith({note(50, u"Logo jumps."_s)});
    const QString text = Printed({section}, withFrames()).text();
    qsizetype from = 0;
    for (const QString& words :
         {u"Autumn Sale 1920x1080.mov"_s,
          u"75.0 MB · 30.0s · 640x360 · H264"_s,
          u"loudness -23.1 LKFS · true peak -3.0 dBTP"_s,
          u"/films/Autumn Sale 1920x1080.mov"_s,
          u"1 comment"_s,
          u"Passes 0 of 1 platforms"_s,
          u"Fails Test TV"_s,
          u"✕ Test Television Resolution"_s,
          u"✓ Picture and sound Passed"_s,
          u"Comments (1)"_s,
          u"00:00:02:00"_s,
          u"Logo jumps."_s,
          u"Full QC results"_s,
          u"Test Television (spec inferred) FAIL"_s,
          u"✓ Container mov"_s,
          u"✕ Resolution 640x360 Expected: 1920x1080 Re-export at 1920x1080."_s,
          u"! Fast start moov after mdat Expected: moov first"_s,
          u"– Bit rate 8000 kb/s"_s,
          u"Picture and sound OK"_s,
          u"✓ Levels legal"_s,
          u"Vantroque report · page 1"_s}) {
        const auto found = text.indexOf(words, from);
        ASSERT_GE(found, 0) << words.toStdString() << " in " << text.toStdString();
        from = found;
    }
    EXPECT_FALSE(text.contains(u"unused expectation"_s));
}

TEST(ReviewPDF, IsSoundAndEmbedsItsFontsAsSubsets)
{
    const Printed printed({spot()}, withFrames());
    EXPECT_THAT(printed.told({"qpdf", "--check"}).toStdString(), HasSubstr("No syntax or stream"));
    const auto fonts = QString::fromUtf8(printed.told({"pdffonts"})).trimmed().split(u'\n').mid(2);
    ASSERT_FALSE(fonts.isEmpty());
    for (const QString& font : fonts) // name, type, encoding, emb, sub, uni
        EXPECT_TRUE(font.contains(QRegularExpression(u"^[A-Z]{6}\\+.* yes yes yes "_s)))
            << font.toStdString();
}

TEST(ReviewPDF, HasATitleALinkToTheRulesAndABookmarkAFile)
{
    auto other = spot();
    other.report->fileName = u"Winter.mov"_s;
    const Printed printed({spot(), other});
    EXPECT_THAT(printed.told({"pdfinfo"}).toStdString(), HasSubstr("Vantroque reports (2 files)"));
    EXPECT_THAT(printed.told({"pdfinfo", "-url"}).toStdString(),
                HasSubstr("https://example.com/delivery?part=1"));
    const auto json = QString::fromUtf8(printed.told({"qpdf", "--json", "--json-key=outlines"}));
    EXPECT_TRUE(json.contains(u"\"title\": \"Autumn Sale 1920x1080.mov\""_s));
    EXPECT_TRUE(json.contains(u"\"title\": \"Winter.mov\""_s));
}

TEST(ReviewPDF, LinksNothingButPagesOfTheWeb)
{
    auto section = spot();
    section.report->profiles[0].sourceURL = u"file:///etc/passwd"_s;
    EXPECT_THAT(Printed({section}).told({"pdfinfo", "-url"}).toStdString(),
                testing::Not(HasSubstr("passwd")));
}

TEST(ReviewPDF, CountsPagesAnewInEachSection)
{
    auto section = spot();
    section.review = reviewWith(std::vector(6, note(1, u"again"_s)));
    const Printed printed({section, spot()});
    ASSERT_EQ(printed.pageCount(), 3);
    EXPECT_TRUE(printed.text(2).contains(u"Vantroque report · page 2"_s));
    EXPECT_TRUE(printed.text(2).startsWith(u"Autumn Sale 1920x1080.mov (continued)"_s));
    EXPECT_TRUE(printed.text(3).contains(u"Vantroque report · page 1"_s));
}

TEST(ReviewPDF, ACommentTallerThanAPageRunsOnWithEveryWord)
{
    auto section = spot();
    const QString comment = longText(1300); // some 10 000 characters
    section.review = reviewWith({note(0, u"before"_s), note(1, comment), note(2, u"after"_s)});
    const Printed printed({section}, withFrames());
    QString text = printed.text();
    text.remove(QRegularExpression(
        u"Vantroque report · page \\d+ |Autumn Sale 1920x1080.mov \\(continued\\) "_s));
    EXPECT_TRUE(text.contains(comment)) << text.toStdString();
    EXPECT_TRUE(printed.text(2).contains(u"00:00:00:01 word0 "_s));
    EXPECT_LE(printed.pageCount(), 8);
}

TEST(ReviewPDF, ASectionWithCommentsButNoReportHasTheHeaderAndTheCommentsOnly)
{
    ReviewPDF::FileSection section;
    section.mediaURL = FileUrl::fromPath("/films/gone.mov");
    section.review = reviewWith({note(3, u"Too dark."_s)});
    EXPECT_EQ(Printed({section}).text(),
              u"gone.mov 75.0 MB · 640x360 /films/gone.mov 1 comment Comments (1) "
              "frame unavailable 00:00:00:03 Too dark. Vantroque report · page 1"_s);
}

TEST(ReviewPDF, WithoutCommentsAndReportsThereIsNothingToExport)
{
    ReviewPDF::FileSection section;
    section.review = reviewWith({});
    const TestFolder folder;
    const auto written = ReviewPDF::write({section}, FileUrl::fromPath(folder / "out.pdf"), {});
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().description, u"There is nothing to export."_s);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(ReviewPDF, StampsTheDecisionAndNamesTheReviewer)
{
    auto section = spot();
    section.review = reviewWith({});
    section.review->signOff = ReviewSignOff{.decision = ReviewSignOff::Decision::approved,
                                            .decidedAt = QDateTime::currentDateTimeUtc(),
                                            .qcVerdictWhenSigned = Verdict::fail,
                                            .failingWhenSigned = {u"Test Television"_s}};
    const QString text = Printed({section}, {.reviewer = u"Ada Łoś"_s}).text();
    EXPECT_TRUE(text.contains(u"APPROVED"_s));
    EXPECT_TRUE(text.contains(u"reviewed by Ada Łoś 0 comments Approved over 1 failing platform"_s))
        << text.toStdString();
    EXPECT_FALSE(Printed({spot()}).text().contains(u"reviewed by"_s));
}

TEST(ReviewPDF, AFileWithoutPlatformsShowsTheSignOfItsSection)
{
    auto section = spot();
    section.report->profiles.clear();
    EXPECT_TRUE(Printed({section}).text().contains(u"– No platforms selected"_s));
    section.report->sections->front().checks[0].verdict = Verdict::warn;
    EXPECT_TRUE(Printed({section}).text().contains(u"! No platforms selected"_s));
}

TEST(ReviewPDF, AdviceThatIsNotMetIsNoFailure)
{
    auto section = spot();
    section.report->profiles[0].advisory = true;
    const QString text = Printed({section}).text();
    EXPECT_TRUE(text.contains(u"! Below Test TV recommendations"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"Test Television (spec inferred) BELOW"_s));
    EXPECT_FALSE(text.contains(u"✕"_s));
}

TEST(ReviewPDF, CaptionsAreASectionBelowThePlatforms)
{
    auto section = spot();
    section.captionReport = section.report->sections->front();
    section.captionReport->profileID = u"captions"_s;
    section.captionReport->profileName = u"Captions"_s;
    section.captionReport->advisory = true;
    const QString text = Printed({section}).text();
    EXPECT_LT(text.indexOf(u"Picture and sound Passed"_s),
              text.indexOf(u"✓ Captions Meets recommendations"_s));
    EXPECT_TRUE(text.contains(u"Captions OK"_s));
}

TEST(ReviewPDF, AsksForFramesInTheOrderOfTheFilmAndAsItHasSaid)
{
    auto section = spot();
    section.review = reviewWith({note(100, u"b"_s), note(25, u"a"_s)});
    std::vector<double> asked;
    const auto remember = [&](const FrameWish& wish) {
        asked.push_back(wish.seconds.front());
        return picture();
    };
    const Printed printed({section, spot()}, {.frame = remember});
    EXPECT_THAT(asked, ElementsAre(7.5, 1, 4, 7.5));
    std::vector<double> wished;
    for (const FrameWish& wish : ReviewPDF::wishes({section, spot()}))
        wished.push_back(wish.seconds.front());
    EXPECT_EQ(wished, asked);
}

TEST(ReviewPDF, DrawsTheMarkingsOfACommentOnItsFrame)
{
    auto section = spot();
    auto drawn = note(50, u"here"_s);
    drawn.strokes.push_back(
        {.tool = AnnotationStroke::Tool::ellipse, .points = {{0.2, 0.2}, {0.8, 0.8}}});
    section.review = reviewWith({drawn});
    const Printed printed({section}, withFrames());
    EXPECT_TRUE(printed.text().contains(u"00:00:02:00 here 1 marking"_s));
    const TestFolder folder;
    runProgram({"pdftoppm", "-r", "144", "-png", "-singlefile", printed.path().native(),
                (folder / "page").native()});
    const QImage page(QString::fromStdString((folder / "page.png").native()));
    ASSERT_FALSE(page.isNull());
    int red = 0;
    int blue = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x) {
            const QRgb pixel = page.pixel(x, y);
            red += qRed(pixel) > qBlue(pixel) + 60 && qRed(pixel) > qGreen(pixel) + 60;
            blue += qBlue(pixel) > 180 && qRed(pixel) < 60;
        }
    EXPECT_GT(red, 300);
    EXPECT_GT(blue, 100'000);
}

TEST(ReviewPDF, NamesInAnyScriptAreText)
{
    auto section = spot();
    section.report->fileName = u"日本語 한국어 Ελληνικά Кириллица العربية.mov"_s;
    const Printed printed({section});
    const QString text = printed.text();
    for (const QString& word : {u"日本語"_s, u"한국어"_s, u"Ελληνικά"_s, u"Кириллица"_s})
        EXPECT_TRUE(text.contains(word)) << word.toStdString() << " in " << text.toStdString();
    // Written from right to left in joined forms, which readers of a PDF put back each their way.
    const QString letters = text.normalized(QString::NormalizationForm_KC);
    for (const QChar letter : u"العربية"_s)
        EXPECT_TRUE(letters.contains(letter)) << text.toStdString();
    EXPECT_TRUE(printed.told({"pdffonts"}).contains("NotoSansArabic"));
    EXPECT_TRUE(printed.told({"pdffonts"}).contains("NotoSansCJK"));
}

TEST(ReviewPDF, TextThatSteersIsShownAsText)
{
    auto section = spot();
    section.report->fileName = u"safe\u202Egnp.exe\u0007.mov"_s;
    EXPECT_TRUE(Printed({section}).text().startsWith(u"safe?gnp.exe?.mov"_s));
}

TEST(ReviewPDF, HoldsHundredsOfCommentsAndPlatforms)
{
    auto section = spot();
    section.report->profiles.assign(40, section.report->profiles[0]);
    section.review = reviewWith(std::vector(300, note(7, u"same"_s)));
    const Printed printed({section}, withFrames());
    EXPECT_THAT(printed.text().toStdString(), HasSubstr("Comments (300)"));
    EXPECT_THAT(printed.told({"qpdf", "--check"}).toStdString(), HasSubstr("No syntax or stream"));
}

TEST(ReviewPDF, PicturesOfAnyShapeHaveASlotOnThePage)
{
    for (const auto& [width, height] : {std::pair{1, 16384}, {16384, 1}, {0, 0}, {-5, 7}}) {
        auto section = spot();
        section.video->width = width;
        section.video->height = height;
        section.review = reviewWith({note(1, u"odd"_s), note(2, u"odder"_s)});
        EXPECT_LE(Printed({section}).pageCount(), 4) << width << 'x' << height;
    }
}

TEST(ReviewPDF, AFileThatCannotBeWrittenLeavesTheOldOne)
{
    const TestFolder folder;
    const auto old = folder.write("out.pdf", "old");
    const auto written =
        ReviewPDF::write({spot()}, FileUrl::fromPath(folder / "no such folder/out.pdf"), {});
    ASSERT_FALSE(written);
    EXPECT_TRUE(written.error().description.contains(u"No such file or directory"_s));
    EXPECT_EQ(contents(old), "old");
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
}

TEST(ReviewPDF, IsCalledOffBetweenBlocks)
{
    auto section = spot();
    section.review = reviewWith(std::vector(50, note(7, u"same"_s)));
    std::stop_source stop;
    const Cancellation::Scope scope(stop.get_token());
    int asked = 0;
    const auto stopAtThird = [&](const FrameWish&) {
        if (++asked == 3)
            stop.request_stop();
        return picture();
    };
    const TestFolder folder;
    const auto written = ReviewPDF::write({section, section}, FileUrl::fromPath(folder / "out.pdf"),
                                          {.frame = stopAtThird});
    EXPECT_FALSE(written);
    EXPECT_EQ(asked, 3);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(ReviewPDF, TellsHowManySectionsAreDone)
{
    std::vector<std::size_t> told;
    const Printed printed({spot(), spot()},
                          {.progress = [&](std::size_t done) { told.push_back(done); }});
    EXPECT_THAT(told, ElementsAre(1, 2));
}

} // namespace
} // namespace vantroque
