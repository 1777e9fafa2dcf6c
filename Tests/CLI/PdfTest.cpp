#include "CLI/Cli.h"
#include "Review/ReviewStore.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "Tools/ProcessTable.h"

#include <QImage>

#include <csignal>

// Reports and notes on paper.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// Twelve seconds, black in the first four and red after them.
fs::path blackFirst()
{
    return Media::make(
        {"black first.mp4", Words{"-f", "lavfi", "-i", "color=red:s=320x180:r=25:d=12", "-vf",
                                  "drawbox=color=black:t=fill:enable='lt(t,4)'"}
                                + Clips::x264()});
}

class PdfCommand : public testing::Test {
protected:
    ProgramRun run(const Words& words, const ProgramOptions& options = {}) const
    {
        return Cli::run(Words{"pdf"} + m_profiles.words() + Words{"--skip-signal"} + words,
                        options);
    }

    void note(const fs::path& file, const QString& text, std::int64_t frame) const
    {
        FileReview review = *ReviewStore::loadOrCreate(FileUrl::fromPath(file));
        ReviewComment comment;
        comment.frame = frame;
        comment.frameRate = 25;
        comment.text = text;
        comment.createdAt = QDateTime({2026, 3, 1}, {12, 0}, Qt::UTC);
        review.comments.push_back(comment);
        ASSERT_TRUE(ReviewStore::save(review));
    }

    fs::path out() const { return m_folder / "out.pdf"; }
    std::string text() const
    {
        return QString::fromUtf8(runProgram({"pdftotext", "-raw", out().native(), "-"}).out)
            .simplified()
            .toStdString();
    }
    /// The colour in the middle of a picture of the document, counted from 0.
    QRgb middle(int number) const
    {
        const TestFolder pictures;
        runProgram({"pdfimages", "-png", out().native(), (pictures / "p").native()});
        const QImage image(QString::fromStdString(
            (pictures / ("p-00" + QString::number(number).toStdString() + ".png")).native()));
        return image.isNull() ? 0 : image.pixel(image.width() / 2, image.height() / 2);
    }

    TestFolder m_folder;

    Cli::ProfilesFolder m_profiles;

private:
    TestFolder m_data;
    ScopedVariable m_home{"XDG_DATA_HOME", m_data.path()};
};

TEST_F(PdfCommand, WritesReportsAndNotesOfAllFilesInOrder)
{
    const auto noted = m_folder.write("noted.mp4", contents(Clips::plain()));
    note(noted, u"Logo jumps."_s, 12);
    const auto result = run({"--all", "--reviewer", "Ada", "-o", out(), noted, blackFirst()});
    EXPECT_EQ(result.status, 1) << result.err.toStdString();
    EXPECT_THAT(result.out.toStdString(), IsEmpty());
    const std::string words = text();
    EXPECT_THAT(words, HasSubstr("noted.mp4"));
    EXPECT_THAT(words, HasSubstr("reviewed by Ada 1 comment"));
    EXPECT_THAT(words, HasSubstr("00:00:00:12 Logo jumps."));
    EXPECT_THAT(words.substr(words.find("Logo jumps.")), HasSubstr("black first.mp4"));
    EXPECT_THAT(words, Not(HasSubstr("frame unavailable")));
    EXPECT_EQ(runProgram({"qpdf", "--check", out().native()}).status, 0);
    EXPECT_THAT(m_folder.names(), ElementsAre("noted.mp4", "out.pdf"));
}

TEST_F(PdfCommand, KnowsAFileWhoseFirstQuarterIsBlackByItsMiddle)
{
    ASSERT_EQ(run({"--profile", "mp4-only", "-o", out(), blackFirst()}).status, 0);
    EXPECT_GT(qRed(middle(0)), 200);
}

TEST_F(PdfCommand, ShowsTheFrameOfACommentAlsoWhereThePictureIsBlack)
{
    const auto file = m_folder.write("film.mp4", contents(blackFirst()));
    note(file, u"black"_s, 99);
    note(file, u"red"_s, 100);
    ASSERT_EQ(run({"--profile", "mp4-only", "-o", out(), file}).status, 0);
    EXPECT_LT(qRed(middle(1)), 30);
    EXPECT_GT(qRed(middle(2)), 200);
}

TEST_F(PdfCommand, AFileThatIsMissingIsToldAndTheOthersAreWritten)
{
    const auto result =
        run({"--profile", "mp4-only", "-o", out(), m_folder / "no.mp4", Clips::plain()});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("no.mp4"));
    EXPECT_THAT(text(), HasSubstr("Passes"));
}

TEST_F(PdfCommand, WithNothingToTellNothingIsWritten)
{
    const auto result = run({"-o", out(), m_folder / "no.mp4"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("There is nothing to export."));
    EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(PdfCommand, NeedsAFileToWriteToAndNeverReplacesOneThatItReads)
{
    EXPECT_THAT(run({Clips::plain()}).err.toStdString(), HasSubstr("pdf takes -o FILE"));
    const auto file = m_folder.write("film.mp4", contents(Clips::plain()));
    EXPECT_EQ(run({"-o", file, file}).status, 2);
    EXPECT_EQ(contents(file), contents(Clips::plain()));
}

TEST_F(PdfCommand, AFullDiskLeavesTheOldFile)
{
    m_folder.write("out.pdf", "old");
    const auto result = run({"-o", out(), Clips::plain()}, {.maxFileBytes = 5000});
    EXPECT_EQ(result.status, 2) << result.err.toStdString();
    EXPECT_EQ(contents(out()), "old");
    EXPECT_THAT(m_folder.names(), ElementsAre("out.pdf"));
}

TEST_F(PdfCommand, AKillWhileItIsWrittenLeavesTheOldFileOrTheNewOne)
{
    const fs::path film = m_folder.write("film.mp4", contents(Clips::plain()));
    for (const int frame : {2, 5, 8})
        note(film, u"look"_s, frame);
    const Words words = Words{"pdf"} + m_profiles.words()
                        + Words{"--skip-signal", "-o", out().native(), film.native()};
    const TestFolder scratch;
    const ProgramOptions options{.environment = {{"TMPDIR", scratch.path().native()}}};
    ASSERT_NE(Cli::run(words, options).status, 2);
    const auto whole = fs::file_size(out());
    // What the pages take in the making, wherever in the scratch folder that is.
    const auto written = [&] {
        std::uintmax_t bytes = 0;
        std::error_code gone;
        for (fs::recursive_directory_iterator each(scratch.path(), gone), end; !gone && each != end;
             each.increment(gone))
            if (const auto size = each->path().extension() == ".pdf" ? each->file_size(gone) : 0;
                !gone)
                bytes = std::max(bytes, size);
        return bytes;
    };
    constexpr unsigned kills = 16;
    unsigned inTheMiddle = 0;
    for (unsigned i = 0; i < kills; ++i) {
        m_folder.write("out.pdf", "old");
        Program writer(Cli::command(words), options);
        EXPECT_TRUE(
            comesTrue([&] { return written() > whole * i / kills || !isRunning(writer.id()); }));
        writer.signal(SIGKILL);
        inTheMiddle += writer.wait().status == 128 + SIGKILL ? 1 : 0;
        if (contents(out()) != "old") {
            EXPECT_EQ(runProgram({"qpdf", "--check", out().native()}).status, 0);
        }
        EXPECT_THAT(m_folder.names(), ElementsAre("film.mp4", "out.pdf")) << "after kill " << i;
        for (const auto& left : fs::directory_iterator(scratch.path()))
            fs::remove_all(left); // which the next start would
    }
    EXPECT_GT(inTheMiddle, kills / 2) << "the kills must meet the writer";
}

TEST_F(PdfCommand, CaptionsAreToldAndDrawnOnTheFramesOfComments)
{
    const auto file = m_folder.write("film.mp4", contents(blackFirst()));
    const auto captions =
        m_folder.write("film.srt", "1\n00:00:00,000 --> 00:00:02,000\nWWWWWWWWWWWWWWWWWWWW\n");
    note(file, u"read"_s, 25);
    ASSERT_EQ(run({"--profile", "mp4-only", "--captions", captions, "-o", out(), file}).status, 0);
    EXPECT_THAT(text(), HasSubstr("film.srt"));
    const TestFolder pictures;
    runProgram({"pdfimages", "-png", out().native(), (pictures / "p").native()});
    const QImage frame(QString::fromStdString((pictures / "p-001.png").native()));
    int white = 0;
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x)
            white += qGray(frame.pixel(x, y)) > 200;
    EXPECT_GT(white, 500);
}

} // namespace
} // namespace vantroque
