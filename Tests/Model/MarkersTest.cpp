#include "Model/ModelFixture.h"

#include "Review/ReviewStore.h"

// Markers of the selected file, written where the operator chooses.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Markers : public ModelTest {
protected:
    void analyse(const FileUrl& url)
    {
        start({loud()}).files().add({url});
        ASSERT_TRUE(soonIdle());
    }
    void exportAs(MarkerExport::Format format)
    {
        model().exports().setExportMessage(std::nullopt);
        model().exports().exportMarkers(format);
        ASSERT_TRUE(soon([this] { return model().exports().isIdle(); }));
        EXPECT_TRUE(model().exports().exportMessage());
    }
    /// Notes at these frames.
    static void note(const FileUrl& url, const std::vector<int>& frames)
    {
        FileReview review = ReviewStore::loadOrCreate(url).value();
        for (const int frame : frames)
            review.comments.push_back({.id = QUuid::createUuid(),
                                       .frame = frame,
                                       .frameRate = 25,
                                       .text = u"look"_s,
                                       .createdAt = QDateTime::currentDateTimeUtc()});
        ASSERT_TRUE(ReviewStore::save(review));
    }
};

TEST_F(Markers, NeedAnAnalysedFile)
{
    startHeld();
    exportAs(MarkerExport::Format::csv);
    EXPECT_EQ(model().exports().exportMessage(), u"Analyse a file first."_s);
    model().files().add({anyFile("a.mp4")});
    exportAs(MarkerExport::Format::csv);
    EXPECT_EQ(model().exports().exportMessage(), u"Analyse a file first."_s)
        << "it is still running";
}

TEST_F(Markers, NeedNotesOrFindings)
{
    startHeld().files().add({anyFile("a.mp4")});
    m_held.release();
    ASSERT_TRUE(soonIdle());
    exportAs(MarkerExport::Format::csv);
    EXPECT_EQ(model().exports().exportMessage(), u"This file has no notes or findings yet."_s);
    EXPECT_THAT(m_desktop.proposed, IsEmpty());
}

TEST_F(Markers, AreWrittenWhereTheOperatorChooses)
{
    const FileUrl spot = file("spot.v2.mp4");
    note(spot, {5});
    analyse(spot);
    m_desktop.answer = FileUrl::fromPath(m_folder / "out.edl");
    exportAs(MarkerExport::Format::resolve);
    EXPECT_EQ(model().exports().exportMessage(), u"Saved 1 marker to out.edl"_s);
    EXPECT_THAT(m_desktop.proposed, ElementsAre(u"spot.v2 markers (Resolve).edl"_s));
    EXPECT_TRUE(contents(m_folder / "out.edl").startsWith("TITLE: spot.v2.mp4\n"));
    note(spot, {9});
    exportAs(MarkerExport::Format::csv);
    EXPECT_EQ(model().exports().exportMessage(), u"Saved 2 markers to out.edl"_s);
    EXPECT_EQ(m_desktop.proposed.back(), u"spot.v2 markers.csv"_s);
    EXPECT_TRUE(contents(m_folder / "out.edl").startsWith("\xEF\xBB\xBF"));
}

TEST_F(Markers, ChangingOnesMindWritesNothingAndSaysNothing)
{
    const FileUrl spot = file("spot.mp4");
    note(spot, {5});
    analyse(spot);
    QStringList told;
    QObject::connect(&model().exports(), &Exports::exportMessageChanged,
                     QCoreApplication::instance(), [&] {
                         if (const auto& message = model().exports().exportMessage())
                             told << *message;
                     });
    model().exports().exportMarkers(MarkerExport::Format::avid);
    ASSERT_TRUE(soon([&] { return model().exports().isIdle(); }));
    EXPECT_EQ(m_desktop.proposed.size(), 1U);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(m_folder.names(), testing::Not(testing::Contains("out.csv")));
    m_desktop.answer = FileUrl::fromPath(m_folder / "out.csv");
    exportAs(MarkerExport::Format::csv);
    EXPECT_THAT(told, ElementsAre(u"Saved 1 marker to out.csv"_s));
}

TEST_F(Markers, AFailedWriteIsTold)
{
    const FileUrl spot = file("spot.mp4");
    note(spot, {5});
    analyse(spot);
    m_desktop.answer = FileUrl::fromPath(m_folder / "none" / "out.xml");
    exportAs(MarkerExport::Format::premiere);
    EXPECT_TRUE(model().exports().exportMessage()->startsWith(u"Could not write the markers: "_s));
    EXPECT_TRUE(model().exports().exportMessage()->contains(u"out.xml"_s));
}

TEST_F(Markers, SpeakOfThePresentChoiceOfProfiles)
{
    MediaInfo media = HeldEngine::media(anyFile("a.mp4"));
    Profile limits = plainProfile(u"limits"_s);
    limits.content = ContentRule();
    limits.content->textRejectFraction = 0.9;
    AnalysisEngine engine = m_held.engine();
    engine.analyze = [&](const FileUrl& url, const std::vector<Profile>& profiles,
                         AnalysisProgress&) -> Result<Analyzer::Analysis> {
        media.url = url;
        media.signal = SignalInfo();
        media.signal->decodeHealth.emplace();
        media.signal->textScanAttempted = true;
        media.signal->textRegions = std::vector{TextRegion{
            .start = 1, .end = 2, .x = 0, .y = 0, .width = 0.2, .height = 0.1, .text = u"SALE"_s}};
        return Analyzer::Analysis{media, Analyzer::report(media, profiles)};
    };
    start(engine, std::vector{limits});
    model().profiles().toggle(u"limits"_s);
    model().files().add({media.url});
    ASSERT_TRUE(soonIdle());
    exportAs(MarkerExport::Format::csv);
    EXPECT_EQ(model().exports().exportMessage(), u"This file has no notes or findings yet."_s);
    m_desktop.answer = FileUrl::fromPath(m_folder / "out.csv");
    model().profiles().toggle(u"limits"_s);
    EXPECT_FALSE(model().rescorer().isCurrent(entry(0)));
    exportAs(MarkerExport::Format::csv);
    EXPECT_EQ(model().exports().exportMessage(), u"Saved 1 marker to out.csv"_s);
}

} // namespace
} // namespace vantroque
