#include "Model/ModelFixture.h"

#include "Review/ReviewStore.h"
#include "Support/Program.h"

// Reports and notes as a PDF, written where the operator chooses.

namespace vantroque {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class PdfExports : public ModelTest {
protected:
    PdfExports() { m_desktop.answer = FileUrl::fromPath(m_pdf); }

    void print(Exports::Scope scope)
    {
        model().exports().setExportMessage(std::nullopt);
        model().exports().exportReviewPDF(scope);
        ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
    }
    QString message() { return model().exports().exportMessage().value_or(QString()); }
    QString printed() const
    {
        const ProgramRun run = runProgram({"pdftotext", "-raw", m_pdf.native(), "-"});
        EXPECT_EQ(run.status, 0) << run.err.toStdString();
        return QString::fromUtf8(run.out).simplified();
    }
    /// A list of so many analysed files.
    void analyse(int count)
    {
        std::vector<FileUrl> urls;
        for (int i = 0; i < count; ++i)
            urls.push_back(anyFile("spot.v" + std::to_string(i) + ".mp4"));
        startHeld({plainProfile(u"a"_s)}).files().add(urls);
        m_held.letGo();
        ASSERT_TRUE(soonIdle());
    }

    const std::filesystem::path m_pdf = m_folder / "out.pdf";
};

TEST_F(PdfExports, NeedAFile)
{
    startHeld();
    print(Exports::Scope::selectedFile);
    EXPECT_EQ(message(), u"Select a file to export."_s);
    print(Exports::Scope::allFiles);
    EXPECT_EQ(message(), u"There is nothing to export yet."_s);
    EXPECT_THAT(m_desktop.proposed, IsEmpty());
}

TEST_F(PdfExports, AFileWithoutReportOrNotesHasNothingToPrint)
{
    startHeld().files().add({anyFile("a.mp4")});
    model().files().select(entry(0).id);
    print(Exports::Scope::selectedFile);
    EXPECT_EQ(message(), u"Could not export the PDF: There is nothing to export."_s);
    print(Exports::Scope::allFiles);
    EXPECT_EQ(message(), u"There is nothing to export yet."_s);
    EXPECT_FALSE(std::filesystem::exists(m_pdf));
}

TEST_F(PdfExports, TheSelectedFileIsPrintedWithItsNotes)
{
    const FileUrl spot = file("spot.v2.mp4");
    FileReview review = ReviewStore::loadOrCreate(spot).value();
    review.comments.push_back({.id = QUuid::createUuid(),
                               .frame = 5,
                               .frameRate = 25,
                               .text = u"lower the logo"_s,
                               .createdAt = QDateTime::currentDateTimeUtc()});
    ASSERT_TRUE(ReviewStore::save(review));
    start({plainProfile(u"The Platform"_s)}).files().add({spot});
    ASSERT_TRUE(soonIdle());
    print(Exports::Scope::selectedFile);
    EXPECT_EQ(message(), u"Saved out.pdf"_s);
    EXPECT_THAT(m_desktop.proposed, ElementsAre(u"spot.v2 report.pdf"_s));
    const QString words = printed();
    EXPECT_TRUE(words.contains(u"lower the logo"_s)) << words.toStdString();
    EXPECT_TRUE(words.contains(u"The Platform"_s));
    EXPECT_FALSE(words.contains(u"reviewed by"_s));
}

TEST_F(PdfExports, AllFilesWithAReportComeInOneDocument)
{
    analyse(3);
    std::vector<std::size_t> told;
    QObject::connect(&model().exports(), &Exports::pdfProgressChanged, QCoreApplication::instance(),
                     [&] {
                         if (const auto& progress = model().exports().pdfProgress()) {
                             told.push_back(progress->done);
                             EXPECT_EQ(progress->all, 3U);
                         }
                     });
    print(Exports::Scope::allFiles);
    EXPECT_EQ(message(), u"Saved out.pdf"_s);
    EXPECT_THAT(m_desktop.proposed, ElementsAre(u"Vantroque reports.pdf"_s));
    EXPECT_THAT(told, ElementsAre(0U, 1U, 2U, 3U));
    const QString words = printed();
    for (const QString& name : names())
        EXPECT_TRUE(words.contains(name));
}

TEST_F(PdfExports, WhatIsBuiltIsToldAtOnceAndOnlyOnceAtATime)
{
    analyse(1);
    model().exports().exportReviewPDF(Exports::Scope::allFiles);
    EXPECT_EQ(message(), u"Building the PDF…"_s);
    model().exports().exportReviewPDF(Exports::Scope::allFiles);
    EXPECT_EQ(m_desktop.proposed.size(), 1U);
    ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
    EXPECT_EQ(message(), u"Saved out.pdf"_s);
}

TEST_F(PdfExports, WhatIsCancelledLeavesNothing)
{
    analyse(2);
    model().exports().exportReviewPDF(Exports::Scope::allFiles);
    model().exports().cancelPDF();
    ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
    EXPECT_EQ(message(), u"The PDF was cancelled."_s);
    EXPECT_THAT(m_folder.names(), Not(Contains("out.pdf")));
    print(Exports::Scope::allFiles);
    EXPECT_EQ(message(), u"Saved out.pdf"_s) << "the next one is not";
}

TEST_F(PdfExports, ChangingOnesMindWritesNothingAndSaysNothing)
{
    analyse(1);
    m_desktop.answer.reset();
    print(Exports::Scope::allFiles);
    EXPECT_EQ(message(), QString());
    EXPECT_FALSE(model().exports().pdfProgress());
}

TEST_F(PdfExports, AFailedWriteIsTold)
{
    analyse(1);
    m_desktop.answer = FileUrl::fromPath(m_folder / "nowhere" / "out.pdf");
    print(Exports::Scope::allFiles);
    EXPECT_TRUE(message().startsWith(u"Could not export the PDF: "_s)) << message().toStdString();
}

TEST_F(PdfExports, NoExportTakesThePlaceOfAFilm)
{
    analyse(1);
    const QByteArray film = contents(entry(0).url.path());
    std::filesystem::create_symlink(entry(0).url.path(), m_pdf);
    print(Exports::Scope::allFiles);
    EXPECT_EQ(message(), u"Could not export the PDF: out.pdf is a file of the list, and is not "
                         "written over"_s);
    model().exports().saveReport();
    ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
    EXPECT_EQ(message(), u"Could not save the report: out.pdf is a file of the list, and is not "
                         "written over"_s);
    EXPECT_EQ(contents(entry(0).url.path()), film);
}

TEST_F(PdfExports, TheEndOfTheProgramDoesNotWaitForADocument)
{
    analyse(3);
    model().exports().exportReviewPDF(Exports::Scope::allFiles);
    end();
    EXPECT_THAT(m_folder.names(), Not(Contains("out.pdf")));
}

} // namespace
} // namespace vantroque
