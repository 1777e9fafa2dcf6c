#include "Model/ModelFixture.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Removal : public ModelTest {
protected:
    std::vector<FileUrl> three() { return {anyFile("a.mp4"), anyFile("b.mp4"), anyFile("c.mp4")}; }
    FileList& files() { return model().files(); }
    /// Three analysed files.
    void analyse()
    {
        startHeld().files().add(three());
        m_held.letGo();
        ASSERT_TRUE(soonIdle());
    }
};

TEST_F(Removal, ComesBackWhereItWasWithItsReport)
{
    analyse();
    const FileReport* report = entry(1).report();
    files().select(entry(1).id);
    files().remove(entry(1).id);
    ASSERT_TRUE(files().lastRemoval());
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"c.mp4"_s));
    files().bringBack();
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
    EXPECT_EQ(entry(1).report(), report);
    EXPECT_EQ(selectedName(), u"b.mp4"_s);
    EXPECT_FALSE(files().lastRemoval());
    files().bringBack(); // nothing is left to bring back
    EXPECT_THAT(names(), SizeIs(3));
}

TEST_F(Removal, OfAllComesBackInItsOrder)
{
    analyse();
    files().clearAll();
    EXPECT_THAT(names(), IsEmpty());
    files().bringBack();
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s, u"done"_s));
    EXPECT_EQ(selectedName(), u"a.mp4"_s);
}

TEST_F(Removal, CanBeUndoneUntilTheNextOne)
{
    analyse();
    files().remove(entry(0).id);
    files().remove(entry(0).id);
    files().bringBack();
    EXPECT_THAT(names(), ElementsAre(u"b.mp4"_s, u"c.mp4"_s));
}

TEST_F(Removal, OfNothingLeavesWhatCanComeBack)
{
    analyse();
    files().clearAll();
    files().clearAll();
    files().remove(QUuid::createUuid());
    files().bringBack();
    EXPECT_THAT(names(), SizeIs(3));
}

TEST_F(Removal, OfSeveralKeepsTheOthersAndGoesOnAfterTheOneThatLed)
{
    analyse();
    const FileIds ids{entry(0).id, entry(1).id};
    files().select({ids, entry(1).id});
    files().remove(ids);
    EXPECT_EQ(selectedName(), u"c.mp4"_s);
    EXPECT_FALSE(files().isSeveralSelected());
    files().bringBack();
    EXPECT_EQ(files().selection().ids, ids);
    EXPECT_EQ(selectedName(), u"b.mp4"_s);
}

TEST_F(Removal, OfAFileThatCameInAgainDoesNotDoubleIt)
{
    analyse();
    files().remove({entry(0).id, entry(1).id});
    files().add({anyFile("a.mp4")});
    files().bringBack();
    EXPECT_THAT(names(), testing::UnorderedElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
}

TEST_F(Removal, OfTheRunningFileLetsItWaitAgainAndTakesNothingFromTheStoppedAnalysis)
{
    startHeld().files().add(three());
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 1; }));
    files().remove(entry(0).id);
    files().bringBack();
    EXPECT_THAT(states(), ElementsAre(u"queued"_s, u"queued"_s, u"queued"_s));
    m_held.release(); // what was stopped
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 2; }));
    EXPECT_TRUE(m_held.wasCalledOff);
    EXPECT_THAT(m_held.begun(), ElementsAre(u"a.mp4"_s, u"a.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"queued"_s, u"queued"_s));
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s, u"done"_s));
}

TEST_F(Removal, IsScoredForAChoiceThatWasMadeMeanwhile)
{
    start({plainProfile(u"a"_s), plainProfile(u"b"_s)}).files().add({file("real.mp4")});
    model().profiles().setEnabledProfileIDs({u"a"_s});
    ASSERT_TRUE(soonIdle());
    files().clearAll();
    model().profiles().setEnabledProfileIDs({u"b"_s});
    files().bringBack();
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(profileIDs(entry(0)), QStringList{u"b"_s});
}

TEST_F(Removal, SeveralSelectedAreNoOneFile)
{
    analyse();
    files().select({{entry(0).id, entry(2).id}, entry(2).id});
    EXPECT_EQ(files().selected(), nullptr);
    EXPECT_EQ(files().selectedReport(), nullptr);
    EXPECT_EQ(selectedName(), u"c.mp4"_s) << "leads";
    ASSERT_THAT(files().allSelected(), SizeIs(2));
    EXPECT_EQ(files().allSelected().front(), &entry(0));
}

TEST_F(Removal, TheSelectedFilesAreAnalysedAgainButForThoseOnTheirWay)
{
    analyse();
    m_held.hold();
    files().select({{entry(0).id, entry(2).id}, entry(2).id});
    files().queueSelectedAgain();
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"done"_s, u"queued"_s));
    files().queueSelectedAgain();
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"done"_s, u"queued"_s));
}

TEST_F(Removal, SeveralSelectedFilesAreExportedWithoutTheOthers)
{
    analyse();
    files().select({{entry(0).id, entry(2).id}, entry(2).id});
    m_desktop.answer = FileUrl::fromPath(m_folder / "reports.txt");
    model().exports().saveReport();
    ASSERT_TRUE(soon([&] { return model().exports().isIdle(); }));
    const QByteArray text = contents(m_folder / "reports.txt");
    EXPECT_TRUE(text.contains("a.mp4") && text.contains("c.mp4"));
    EXPECT_FALSE(text.contains("b.mp4"));
}

TEST_F(Removal, WhatIsNoVideoIsSkippedWithItsReason)
{
    startHeld();
    const auto skipped =
        files().add({anyFile("radio.wav"), anyFile("a.mp4"), anyFile("spot.srt"), anyFile("x")});
    EXPECT_THAT(skipped, ElementsAre(SkippedFile{u"radio.wav"_s, u"is not a video file"_s},
                                     SkippedFile{u"x"_s, u"is not a video file"_s}))
        << "captions are for the player";
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s));
}

} // namespace
} // namespace vantroque
