#include "Model/ModelFixture.h"

#include "Review/ReviewStore.h"

// Markers of several selected files, a file for each, in a folder that the operator chooses.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SeveralMarkers : public ModelTest {
protected:
    /// Analysed and selected; those named have a note.
    void analyse(const std::vector<FileUrl>& films, const std::vector<FileUrl>& noted)
    {
        for (const FileUrl& film : noted) {
            FileReview review = ReviewStore::loadOrCreate(film).value();
            review.comments.push_back({.id = QUuid::createUuid(),
                                       .frame = 5,
                                       .frameRate = 25,
                                       .text = u"look at "_s + film.fileName(),
                                       .createdAt = QDateTime::currentDateTimeUtc()});
            ASSERT_TRUE(ReviewStore::save(review));
        }
        startHeld().files().add(films);
        m_held.release(static_cast<int>(films.size()));
        ASSERT_TRUE(soonIdle());
        FileSelection all;
        for (const FileAnalysis& file : model().files().analyses())
            all.ids.insert(file.id);
        all.lead = model().files().analyses().front().id;
        model().files().select(all);
    }
    FileUrl film(const std::string& name)
    {
        return FileUrl::fromPath(m_folder.write(name, QByteArray::fromStdString(name)));
    }
    void exportTo(const FileUrl& folder)
    {
        m_desktop.answer = folder;
        model().exports().exportMarkers(MarkerExport::Format::csv);
        ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
    }
    QString told() { return model().exports().exportMessage().value_or(QString()); }
    /// What is in the folder for markers, hidden files included.
    QStringList inFolder() const
    {
        QStringList names;
        for (const auto& one : std::filesystem::directory_iterator(m_out.path()))
            names << QString::fromStdString(one.path().filename().native());
        names.sort();
        return names;
    }

    const FileUrl m_out = FileUrl::fromPath(m_folder.write("out/ignored", "").parent_path());
};

TEST_F(SeveralMarkers, AreWrittenAFileForEachFilmThatHasAny)
{
    const FileUrl a = film("a.mp4");
    const FileUrl b = film("b.mp4");
    const FileUrl none = film("none.mp4");
    analyse({a, b, none}, {a, b});
    exportTo(m_out);
    EXPECT_EQ(told(), u"Saved the markers of 2 files to out"_s);
    EXPECT_THAT(inFolder(), ElementsAre(u"a markers.csv"_s, u"b markers.csv"_s, u"ignored"_s));
    EXPECT_TRUE(contents(m_out.path() / "a markers.csv").contains("look at a.mp4"));
    EXPECT_TRUE(contents(m_out.path() / "b markers.csv").contains("look at b.mp4"));
    ASSERT_EQ(m_desktop.questions.size(), 1U);
    EXPECT_EQ(m_desktop.questions[0].title, u"Save the Markers of 2 Files"_s);
    EXPECT_EQ(m_desktop.questions[0].beside, a);
    EXPECT_THAT(m_desktop.replaced, IsEmpty());
    EXPECT_TRUE(model().exports().isAllSaved());
    model().exports().showSavedFile();
    EXPECT_THAT(m_desktop.shown, ElementsAre(FileUrl::fromPath(m_out.path() / "a markers.csv")));
}

TEST_F(SeveralMarkers, OfFilmsWithOneNameDoNotTakeEachOthersPlace)
{
    const std::vector films{film("one/spot.mov"), film("two/Spot.mp4"), film("two/spot.mov")};
    analyse(films, films);
    exportTo(m_out);
    EXPECT_EQ(told(), u"Saved the markers of 3 files to out"_s);
    EXPECT_THAT(inFolder(), ElementsAre(u"Spot.mp4 markers.csv"_s, u"ignored"_s,
                                        u"spot.mov 2 markers.csv"_s, u"spot.mov markers.csv"_s));
}

TEST_F(SeveralMarkers, ReplaceWhatIsThereOnlyWhenTheOperatorSaysSo)
{
    const std::vector films{film("a.mp4"), film("b.mp4")};
    analyse(films, films);
    m_folder.write("out/b markers.csv", "mine");
    exportTo(m_out);
    EXPECT_THAT(m_desktop.replaced, ElementsAre(u"b markers.csv"_s));
    EXPECT_EQ(told(), QString());
    EXPECT_THAT(inFolder(), ElementsAre(u"b markers.csv"_s, u"ignored"_s));
    EXPECT_EQ(contents(m_out.path() / "b markers.csv"), "mine");
    m_desktop.letsReplace = true;
    exportTo(m_out);
    EXPECT_EQ(told(), u"Saved the markers of 2 files to out"_s);
    EXPECT_TRUE(contents(m_out.path() / "b markers.csv").contains("look at b.mp4"));
}

TEST_F(SeveralMarkers, WhatCameMeanwhileIsNotReplaced)
{
    const std::vector films{film("a.mp4"), film("b.mp4")};
    analyse(films, films);
    m_folder.write("out/a markers.csv", "old");
    m_desktop.letsReplace = true;
    m_desktop.meanwhile = [this](const FileUrl&) {
        m_folder.write("out/b markers.csv", "from elsewhere");
    };
    exportTo(m_out);
    EXPECT_EQ(told(), u"Saved the markers of 1 file to out; those of 1 file could not be written: "
                      "b markers.csv exists already"_s);
    EXPECT_EQ(contents(m_out.path() / "b markers.csv"), "from elsewhere");
    EXPECT_TRUE(contents(m_out.path() / "a markers.csv").contains("look at a.mp4"));
    EXPECT_FALSE(model().exports().isAllSaved());
    EXPECT_TRUE(model().exports().savedFile());
}

TEST_F(SeveralMarkers, AFolderThatIsGoneIsToldForEach)
{
    const std::vector films{film("a.mp4"), film("b.mp4")};
    analyse(films, films);
    exportTo(FileUrl::fromPath(m_folder / "gone"));
    EXPECT_TRUE(told().startsWith(u"Could not write the markers:\n"_s)) << told().toStdString();
    EXPECT_TRUE(told().contains(u"a markers.csv"_s));
    EXPECT_TRUE(told().contains(u"b markers.csv"_s));
    EXPECT_FALSE(model().exports().savedFile());
    EXPECT_FALSE(std::filesystem::exists(m_folder / "gone"));
}

/// A film's name may be that of its markers' file.
TEST_F(SeveralMarkers, NeverTakeThePlaceOfAFilm)
{
    const FileUrl a = film("a.mp4");
    const FileUrl b = film("b.mp4");
    analyse({a, b}, {a, b});
    std::filesystem::create_symlink(b.path(), m_out.path() / "a markers.csv");
    m_desktop.letsReplace = true;
    exportTo(m_out);
    EXPECT_EQ(contents(b.path()), "b.mp4");
    EXPECT_TRUE(told().endsWith(u"a markers.csv is a file of the list, and is not written over"_s))
        << told().toStdString();
}

TEST_F(SeveralMarkers, ChangingOnesMindWritesNothingAndSaysNothing)
{
    const std::vector films{film("a.mp4"), film("b.mp4")};
    analyse(films, films);
    model().exports().exportMarkers(MarkerExport::Format::csv);
    ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
    EXPECT_EQ(m_desktop.questions.size(), 1U);
    EXPECT_EQ(told(), QString());
    EXPECT_THAT(inFolder(), ElementsAre(u"ignored"_s));
}

TEST_F(SeveralMarkers, WithoutAnyAskForNoFolder)
{
    analyse({film("a.mp4"), film("b.mp4")}, {});
    exportTo(m_out);
    EXPECT_EQ(told(), u"These files have no notes or findings yet."_s);
    EXPECT_THAT(m_desktop.questions, IsEmpty());
}

} // namespace
} // namespace vantroque
