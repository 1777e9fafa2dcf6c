#include "Model/ModelFixture.h"

#include "Review/ReviewStore.h"

#include <QSignalSpy>

// Another choice of profiles, and what it takes to score for it.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Rescoring : public ModelTest {
protected:
    /// So many analysed files, of which nothing is in sight.
    void analyse(int count)
    {
        std::vector<FileUrl> files;
        for (int i = 0; i < count; ++i)
            files.push_back(anyFile(u"f%1.mp4"_s.arg(i).toStdString()));
        model().files().add(files);
        m_held.release(count);
        ASSERT_TRUE(soonIdle());
    }
    std::vector<QString> begunRescores()
    {
        auto begun = m_held.begun();
        std::erase_if(begun, [](const QString& call) { return !call.startsWith(u"rescore"_s); });
        return begun;
    }
};

Profile withSlate()
{
    Profile profile = plainProfile(u"slate"_s);
    profile.content = ContentRule();
    profile.content->slateSeconds = 1;
    return profile;
}

TEST_F(Rescoring, AProfileThatNeedsNothingMoreScoresWhatIsMeasured)
{
    startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s)});
    analyse(2);
    const auto media = entry(0).media;
    model().profiles().toggle(u"one"_s);
    EXPECT_FALSE(model().rescorer().isCurrent(entry(0))) << "the report speaks of another choice";
    EXPECT_TRUE(entry(0).report());
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"two"_s));
    EXPECT_THAT(profileIDs(entry(1)), ElementsAre(u"two"_s));
    EXPECT_EQ(entry(0).media, media);
    EXPECT_THAT(begunRescores(), IsEmpty());
    model().profiles().toggle(u"one"_s);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"one"_s, u"two"_s)) << "in store order";
}

TEST_F(Rescoring, TheSelectedEntryComesFirstThenWhatIsInSight)
{
    startHeld({plainProfile(u"one"_s)});
    analyse(6);
    model().files().select(entry(4).id);
    model().files().setVisible({entry(2).id, entry(3).id});
    QSignalSpy changes(&model().files(), &FileList::entryChanged);
    model().profiles().toggle(u"one"_s);
    ASSERT_TRUE(soonIdle());
    QStringList order;
    for (const auto& change : changes)
        order << model().files().analysis(change.at(0).toUuid())->url.stem();
    EXPECT_THAT(order, ElementsAre(u"f4"_s, u"f2"_s, u"f3"_s, u"f0"_s, u"f1"_s, u"f5"_s));
}

TEST_F(Rescoring, AChoiceThatIsOvertakenIsNeverShown)
{
    startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s)});
    analyse(20);
    std::vector<QStringList> seen;
    QObject::connect(
        &model().files(), &FileList::entryChanged, QCoreApplication::instance(),
        [&](const QUuid& id) { seen.push_back(profileIDs(*model().files().analysis(id))); });
    model().profiles().toggle(u"one"_s);
    model().profiles().toggle(u"two"_s);
    model().profiles().toggle(u"one"_s);
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(seen.size(), 20U);
    EXPECT_THAT(seen, testing::Each(QStringList{u"one"_s}));
}

TEST_F(Rescoring, AnEmptyChoiceGivesAReportWithoutProfiles)
{
    start({loud()});
    model().profiles().setEnabledProfileIDs({});
    model().files().add({file("spot.mp4")});
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), IsEmpty());
    EXPECT_EQ(entry(0).media->signal, std::nullopt) << "nothing asks for a decode";
}

TEST_F(Rescoring, TheChoiceIsRemembered)
{
    start({plainProfile(u"one"_s), plainProfile(u"two"_s)});
    EXPECT_THAT(model().profiles().enabledProfileIDs(), ElementsAre(u"one"_s, u"two"_s));
    model().profiles().toggle(u"one"_s);
    start({plainProfile(u"one"_s), plainProfile(u"two"_s)});
    EXPECT_THAT(model().profiles().enabledProfileIDs(), ElementsAre(u"two"_s));
    ASSERT_EQ(model().profiles().enabledProfiles().size(), 1U);
    EXPECT_EQ(model().profiles().enabledProfiles()[0].id, u"two"_s);
}

TEST_F(Rescoring, TheSameChoiceTellsNothing)
{
    startHeld({plainProfile(u"one"_s)});
    analyse(1);
    QSignalSpy choices(&model().profiles(), &ProfileChoice::changed);
    model().profiles().setEnabledProfileIDs({u"one"_s});
    EXPECT_EQ(choices.count(), 0);
    EXPECT_TRUE(model().rescorer().isCurrent(entry(0)));
}

TEST_F(Rescoring, ProfilesThatCannotBeReadLeaveFilesAnalysed)
{
    start(AnalysisEngine::real(nullptr), failure(u"no profiles"_s)).files().add({file("spot.mp4")});
    EXPECT_EQ(model().profiles().profilesError(), u"no profiles"_s);
    EXPECT_THAT(model().profiles().profiles(), IsEmpty());
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s));
}

TEST_F(Rescoring, AnEmptyFolderOfProfilesIsTold)
{
    start(AnalysisEngine::real(nullptr), std::vector<Profile>());
    EXPECT_EQ(model().profiles().profilesError(),
              u"No platform profiles were found in the app bundle."_s);
}

TEST_F(Rescoring, AProfileToggledWhileAFileIsAnalysedIsScoredAtItsEnd)
{
    startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s)}).files().add({anyFile("a.mp4")});
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 1; }));
    model().profiles().toggle(u"one"_s);
    EXPECT_THAT(states(), ElementsAre(u"running"_s));
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"two"_s));
    EXPECT_THAT(begunRescores(), IsEmpty());
}

TEST_F(Rescoring, WhatIsMissingIsMeasuredInTheBackground)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(1);
    model().profiles().toggle(u"loud"_s);
    EXPECT_TRUE(model().rescorer().isRescoring(entry(0).id));
    EXPECT_THAT(states(), ElementsAre(u"done"_s)) << "the old report stays meanwhile";
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"one"_s));
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"one"_s, u"loud"_s));
    EXPECT_TRUE(entry(0).media->signal);
    EXPECT_THAT(begunRescores(), ElementsAre(u"rescore f0.mp4"_s));
}

TEST_F(Rescoring, AnEntryIsMeasuredOnceHoweverOftenTheChoiceChanges)
{
    startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(1);
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 1; }));
    model().profiles().toggle(u"one"_s);
    model().profiles().toggle(u"two"_s);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"loud"_s)) << "the choice at the end";
    EXPECT_EQ(begunRescores().size(), 1) << "the signal of the first serves the others";
}

TEST_F(Rescoring, ARescoreRunsBesideTheAnalysisOfAnotherFile)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(1);
    model().files().add({anyFile("other.mp4")});
    model().profiles().toggle(u"loud"_s);
    EXPECT_TRUE(soon([&] { return m_held.begun().size() == 3; })) << "both have begun";
    EXPECT_THAT(begunRescores(), ElementsAre(u"rescore f0.mp4"_s));
}

TEST_F(Rescoring, AFailedRescoreKeepsTheOldReport)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(1);
    const auto media = entry(0).media;
    m_held.failFromNowOn();
    model().profiles().toggle(u"loud"_s);
    m_held.release();
    ASSERT_TRUE(soon([&] { return !model().rescorer().isRescoring(entry(0).id); }));
    EXPECT_THAT(states(), ElementsAre(u"done"_s));
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"one"_s));
    EXPECT_EQ(entry(0).media, media);
    EXPECT_FALSE(model().rescorer().isCurrent(entry(0)));
    EXPECT_TRUE(model().rescorer().couldNotRescore(entry(0)));
    model().profiles().toggle(u"loud"_s);
    EXPECT_FALSE(model().rescorer().couldNotRescore(entry(0))) << "this choice needs nothing";
    EXPECT_TRUE(soonIdle());
}

TEST_F(Rescoring, AMeasurementForAnOvertakenChoiceLeavesTheCurrentReport)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(1);
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 1; }));
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return model().rescorer().isCurrent(entry(0)); }));
    std::vector<QStringList> seen;
    QObject::connect(&model().files(), &FileList::entryChanged, QCoreApplication::instance(),
                     [&](const QUuid&) { seen.push_back(profileIDs(entry(0))); });
    m_held.release();
    ASSERT_TRUE(soon([&] { return entry(0).media->signal.has_value(); }));
    EXPECT_THAT(seen, testing::Each(QStringList{u"one"_s}));
    EXPECT_TRUE(model().rescorer().isCurrent(entry(0)));
}

TEST_F(Rescoring, WhatTheOperatorLooksAtIsMeasuredNext)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(4);
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 1; }));
    model().files().setVisible({entry(3).id});
    model().files().select(entry(2).id);
    m_held.release(4);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(begunRescores(), ElementsAre(u"rescore f0.mp4"_s, u"rescore f2.mp4"_s,
                                             u"rescore f3.mp4"_s, u"rescore f1.mp4"_s));
}

TEST_F(Rescoring, NothingIsMeasuredForFilesThatHaveLeftTheList)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(3);
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 1; }));
    const QUuid second = entry(1).id;
    model().files().clearAll();
    EXPECT_FALSE(model().rescorer().isRescoring(second));
    m_held.letGo();
    model().files().add({anyFile("other.mp4")});
    ASSERT_TRUE(soonIdle());
    model().profiles().toggle(u"one"_s);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(begunRescores(), ElementsAre(u"rescore f0.mp4"_s, u"rescore other.mp4"_s));
}

TEST_F(Rescoring, NothingIsMeasuredForAChoiceThatIsTakenBack)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(3);
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 1; }));
    model().profiles().toggle(u"loud"_s);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(begunRescores(), ElementsAre(u"rescore f0.mp4"_s));
    EXPECT_FALSE(model().rescorer().isRescoring(entry(1).id));
    EXPECT_THAT(profileIDs(entry(1)), ElementsAre(u"one"_s));
}

TEST_F(Rescoring, AnEntryRemovedMeanwhileIsForgotten)
{
    startHeld({plainProfile(u"one"_s), loud()});
    model().profiles().toggle(u"loud"_s);
    analyse(2);
    model().profiles().toggle(u"loud"_s);
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 1; }));
    const QUuid removed = entry(0).id;
    model().files().remove(removed);
    m_held.release();
    ASSERT_TRUE(soon([&] { return begunRescores().size() == 2; }));
    EXPECT_TRUE(m_held.wasCalledOff);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_FALSE(m_held.wasCalledOff);
    EXPECT_FALSE(model().rescorer().isRescoring(removed));
    EXPECT_THAT(names(), ElementsAre(u"f1.mp4"_s));
}

TEST_F(Rescoring, ForASlateReadsTheStoredDecode)
{
    start({plainProfile(u"one"_s), loud(), withSlate()});
    model().profiles().toggle(u"slate"_s);
    model().files().add({file("spot.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto before = entry(0).media;
    ASSERT_TRUE(before->signal->blackRuns);
    ASSERT_FALSE(before->signal->leaderToneChecked.value_or(false));
    const FakeTools tools;
    tools.record("ffmpeg");
    model().profiles().toggle(u"slate"_s);
    ASSERT_TRUE(soon([&] { return !model().rescorer().isRescoring(entry(0).id); }));
    EXPECT_THAT(profileIDs(entry(0)), testing::Contains(u"slate"_s));
    EXPECT_NE(entry(0).media, before);
    EXPECT_EQ(entry(0).media->signal->levels, before->signal->levels);
    for (const auto& call : tools.calls("ffmpeg"))
        for (const auto& word : call)
            EXPECT_EQ(word.find("ebur128"), std::string::npos) << "a decode of the whole";
}

TEST_F(Rescoring, TakesOverTheDecisionOfTheStoredReview)
{
    const FileUrl spot = anyFile("a.mp4");
    FileReview review = ReviewStore::loadOrCreate(spot).value();
    review.signOff = ReviewSignOff{.decidedAt = QDateTime::fromSecsSinceEpoch(1'750'000'000)};
    ASSERT_TRUE(ReviewStore::save(review));
    startHeld().files().add({spot, anyFile("b.mp4")});
    m_held.release(2);
    ASSERT_TRUE(soonIdle());
    ASSERT_TRUE(entry(0).signOff);
    EXPECT_EQ(entry(0).signOff->decision, ReviewSignOff::Decision::approved);
    EXPECT_EQ(entry(1).signOff, std::nullopt);

    review.signOff->decision = ReviewSignOff::Decision::needsRevisions;
    ASSERT_TRUE(ReviewStore::save(review));
    model().signOffs().refreshAll();
    ASSERT_TRUE(soonIdle());
    ASSERT_TRUE(entry(0).signOff);
    EXPECT_EQ(entry(0).signOff->decision, ReviewSignOff::Decision::needsRevisions);
    ASSERT_TRUE(ReviewStore::remove(review.fingerprint));
    model().signOffs().refreshAll();
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(entry(0).signOff, std::nullopt);
}

} // namespace
} // namespace vantroque
