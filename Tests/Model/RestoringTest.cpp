#include "Model/ModelFixture.h"

#include "Review/ReviewStore.h"

#include <QSignalSpy>

#include <future>

// The list as the next start finds it, and what became of its files meanwhile.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Restoring : public ModelTest {
protected:
    /// Two analysed files, the second selected, and the program at its end.
    void prepare()
    {
        startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s)}).files().add({m_a, m_b});
        m_held.release(2);
        ASSERT_TRUE(soonIdle());
        model().files().select(entry(1).id);
        quit();
    }
    AppModel& restart() { return startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s)}); }
    /// Changes the stored workspace behind the program's back.
    template<typename Change>
    static void change(Change change)
    {
        Workspace workspace = WorkspaceStore::load().value();
        change(workspace);
        ASSERT_TRUE(WorkspaceStore::save(workspace));
    }

    const FileUrl m_a = anyFile("a.mp4");
    const FileUrl m_b = anyFile("b.mp4");
};

TEST_F(Restoring, BringsBackListReportsAndSelection)
{
    prepare();
    restart();
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
    EXPECT_EQ(selectedName(), u"b.mp4"_s);
    EXPECT_EQ(entry(0).media->video->width, 1920);
    EXPECT_EQ(entry(0).fingerprint->size(), 64);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(m_held.begun(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s)) << "those of the first start";
}

TEST_F(Restoring, AListThatIsStillReadIsToldOfWhenItIsThere)
{
    prepare();
    AppModel& model = begin(m_held.engine(), std::vector{plainProfile(u"one"_s)});
    const QSignalSpy lists(&model.files(), &FileList::listChanged);
    const QSignalSpy selections(&model.files(), &FileList::selectionChanged);
    EXPECT_TRUE(model.workspace().isRestoring());
    EXPECT_THAT(model.files().analyses(), IsEmpty());
    ASSERT_TRUE(soon([&] { return !model.workspace().isRestoring(); }));
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
    EXPECT_EQ(selectedName(), u"b.mp4"_s);
    EXPECT_EQ(lists.count(), 1);
    EXPECT_EQ(selections.count(), 1);
}

TEST_F(Restoring, WhatComesWhileTheListIsReadComesBehindIt)
{
    prepare();
    begin(m_held.engine(), std::vector<Profile>()).files().add({anyFile("c.mp4")});
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
    EXPECT_EQ(selectedName(), u"b.mp4"_s);
}

TEST_F(Restoring, AnEndWhileTheListIsReadLosesNothing)
{
    prepare();
    begin(m_held.engine(), std::vector<Profile>());
    quit();
    EXPECT_THAT(WorkspaceStore::load().value().files, testing::SizeIs(2));
}

TEST_F(Restoring, WhatIsClearedWhileItIsReadIsGone)
{
    prepare();
    begin(m_held.engine(), std::vector<Profile>()).files().clearAll();
    EXPECT_THAT(names(), IsEmpty());
    quit();
    start();
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Restoring, ScoresForThePresentChoice)
{
    prepare();
    start(m_held.engine(), std::vector{plainProfile(u"two"_s), plainProfile(u"three"_s)});
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"one"_s, u"two"_s)) << "as it was stored";
    EXPECT_FALSE(model().rescorer().isCurrent(entry(0)));
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"two"_s, u"three"_s));
}

TEST_F(Restoring, AFileThatWasNotDoneIsAnalysed)
{
    startHeld().files().add({m_a, m_b});
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 1; }));
    quit();
    const auto before = std::ssize(m_held.begun());
    startHeld();
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"queued"_s));
    m_held.release(2);
    ASSERT_TRUE(soonIdle());
    const auto begun = m_held.begun();
    EXPECT_THAT(std::vector(begun.begin() + before, begun.end()),
                ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
}

TEST_F(Restoring, WithoutAStoredSelectionSelectsTheFirst)
{
    prepare();
    change([](Workspace& workspace) { workspace.selectedPath = u"/elsewhere.mp4"_s; });
    restart();
    EXPECT_EQ(selectedName(), u"a.mp4"_s);
}

TEST_F(Restoring, AFileThatIsGoneIsMissingAndComesBackWhenAddedAgain)
{
    prepare();
    std::filesystem::remove(m_b.path());
    restart();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"missing"_s));
    EXPECT_TRUE(entry(1).media);
    EXPECT_EQ(entry(1).report(), nullptr);
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s)) << "its place in the list";
    model().profiles().toggle(u"one"_s);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"missing"_s)) << "no choice brings a file back";
    anyFile("b.mp4");
    model().files().add({m_b});
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"running"_s));
}

TEST_F(Restoring, AMissingFileThatIsBackAtTheNextStartIsScoredFromItsMeasurements)
{
    prepare();
    std::filesystem::remove(m_b.path());
    restart();
    ASSERT_TRUE(soonIdle());
    ASSERT_THAT(states(), ElementsAre(u"done"_s, u"missing"_s));
    quit();
    anyFile("b.mp4");
    restart();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
    EXPECT_THAT(m_held.begun(), testing::SizeIs(2)) << "no analysis but those of the first start";
}

TEST_F(Restoring, AFileThatChangedIsAnalysedAfresh)
{
    prepare();
    m_folder.write("a.mp4", "another cut");
    restart();
    const QString before = *entry(0).fingerprint;
    ASSERT_TRUE(soon([&] { return states() == QStringList{u"running"_s, u"done"_s}; }));
    EXPECT_EQ(entry(0).media, nullptr);
    EXPECT_NE(entry(0).fingerprint, before);
    m_held.release();
    EXPECT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
}

TEST_F(Restoring, AMissingFingerprintIsTakenDown)
{
    prepare();
    change([](Workspace& workspace) { workspace.files[0].fingerprint.reset(); });
    restart();
    EXPECT_EQ(entry(0).fingerprint, std::nullopt);
    ASSERT_TRUE(soonIdle());
    EXPECT_TRUE(entry(0).fingerprint);
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
}

/// As an older version of the program left it.
void makeOld(WorkspaceFile& file)
{
    MediaInfo media = *file.media;
    media.analysisVersion = 4;
    file.media = std::make_shared<const MediaInfo>(media);
}

TEST_F(Restoring, WhatAnOlderVersionMeasuredIsMeasuredAfresh)
{
    prepare();
    change([](Workspace& workspace) { makeOld(workspace.files[0]); });
    restart();
    ASSERT_TRUE(soon([&] { return states() == QStringList{u"running"_s, u"done"_s}; }));
    EXPECT_EQ(entry(0).media, nullptr);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_TRUE(entry(0).hasCurrentMedia());
}

/// A disk of the network that does not answer.
TEST_F(Restoring, AFileThatGetsNoAnswerKeepsNoOtherFromBeingScored)
{
    const FileUrl far = FileUrl::fromPath(m_folder.write("far/c.mp4", "c"));
    const FileUrl beside = FileUrl::fromPath(m_folder.write("far/d.mp4", "d"));
    startHeld({plainProfile(u"one"_s), plainProfile(u"two"_s)})
        .files()
        .add({far, beside, m_a, m_b});
    m_held.release(4);
    ASSERT_TRUE(soonIdle());
    quit();
    change([](Workspace& workspace) {
        for (const std::size_t old : {0U, 1U, 2U})
            makeOld(workspace.files[old]);
    });
    std::promise<void> answer;
    std::atomic<int> looks = 0;
    AnalysisEngine engine = m_held.engine();
    engine.isThere = [&, answered = answer.get_future().share()](const FileUrl& file) {
        if (file == m_a)
            return true;
        ++looks;
        answered.wait();
        return AnalysisEngine::exists(file);
    };
    start(engine, std::vector{plainProfile(u"one"_s), plainProfile(u"two"_s)});
    model().profiles().toggle(u"one"_s);
    EXPECT_TRUE(soon([&] { return model().rescorer().isCurrent(entry(3)); }));
    EXPECT_THAT(profileIDs(entry(3)), ElementsAre(u"two"_s));
    EXPECT_TRUE(soon([&] { return states().at(2) == u"running"_s; })) << "it is there";
    EXPECT_EQ(looks, 1) << "nor is the one beside it asked for meanwhile";
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s, u"running"_s, u"done"_s));
    answer.set_value();
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_TRUE(entry(0).hasCurrentMedia());
    EXPECT_TRUE(entry(1).hasCurrentMedia());
}

TEST_F(Restoring, WhatAnOlderVersionMeasuredOfAFileThatIsGoneStaysUntilItIsMissed)
{
    prepare();
    change([](Workspace& workspace) { makeOld(workspace.files[0]); });
    std::filesystem::remove(m_a.path());
    restart();
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"missing"_s, u"done"_s));
}

TEST_F(Restoring, AnUnreadableWorkspaceStartsEmptyAndIsOverwritten)
{
    prepare();
    m_folder.write("data/Vantroque/workspace.json", "{\"files\": [");
    restart();
    EXPECT_THAT(model().files().analyses(), IsEmpty());
    model().files().add({m_a});
    m_held.release();
    ASSERT_TRUE(soonIdle());
    quit();
    EXPECT_EQ(WorkspaceStore::load()->files.size(), 1U);
}

TEST_F(Restoring, ANameThatIsNoUtf8IsFoundAgain)
{
    const FileUrl odd = anyFile("caf\xe9.mp4");
    startHeld().files().add({odd, m_b});
    m_held.release(2);
    ASSERT_TRUE(soonIdle());
    quit();
    std::filesystem::remove(m_b.path());
    startHeld();
    ASSERT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
    EXPECT_EQ(entry(0).url, odd);
    EXPECT_EQ(model().files().selectedAnalysisID(), entry(0).id);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"missing"_s));
}

TEST_F(Restoring, AFileIsReallyAnalysedAndRestored)
{
    start({loud()}).files().add({file("spot.mp4")});
    ASSERT_TRUE(soonIdle());
    MediaInfo media = *entry(0).media;
    media.stamp.reset(); // It is not stored.
    const FileReport report = *entry(0).report();
    quit();
    start({loud()});
    ASSERT_TRUE(soonIdle());
    ASSERT_THAT(states(), ElementsAre(u"done"_s));
    EXPECT_EQ(*entry(0).media, media);
    EXPECT_EQ(*entry(0).report(), report);
}

// Saving.

std::filesystem::path stored()
{
    return WorkspaceStore::path();
}

TEST_F(Restoring, AChangeIsSavedSoonWithoutBeingAsked)
{
    startHeld().files().add({m_a});
    EXPECT_FALSE(std::filesystem::exists(stored()));
    ASSERT_TRUE(soon([] { return std::filesystem::exists(stored()); }));
    EXPECT_EQ(WorkspaceStore::load()->files.size(), 1U);
    model().files().clearAll();
    EXPECT_TRUE(soon([] {
        const auto workspace = WorkspaceStore::load();
        return workspace && workspace->files.empty();
    }));
}

/// A saver that counts its saves.
class Saving : public Restoring {
protected:
    WorkspaceSaver saver(const WorkspaceSaver::Rests& rests)
    {
        return {[this] {
                    ++snapshots;
                    return Workspace{.savedAt = QDateTime::currentDateTimeUtc()};
                },
                rests};
    }

    static constexpr std::chrono::hours never{1};
    int snapshots = 0;
};

TEST_F(Saving, ABurstOfChangesIsSavedOnce)
{
    start();
    WorkspaceSaver saver = this->saver({.afterTheLast = {}, .afterTheFirst = never});
    for (int i = 0; i < 5; ++i)
        saver.schedule();
    ASSERT_TRUE(soon([&] { return !saver.isScheduled(); }));
    EXPECT_EQ(snapshots, 1);
    ASSERT_TRUE(soon([&] { return saver.isIdle(); }));
    EXPECT_TRUE(WorkspaceStore::load());
    EXPECT_EQ(snapshots, 1);
}

TEST_F(Saving, EachChangeBeginsTheRestAnew)
{
    constexpr std::chrono::milliseconds rest{20};
    start();
    WorkspaceSaver saver = this->saver({.afterTheLast = rest, .afterTheFirst = never});
    // Rests of one length end in the order in which they began.
    QTimer between;
    between.setTimerType(Qt::PreciseTimer);
    between.setSingleShot(true);
    std::optional<int> savedBefore;
    between.callOnTimeout([&] { savedBefore = snapshots; });
    saver.schedule();
    between.start(rest);
    saver.schedule();
    ASSERT_TRUE(soon([this] { return snapshots > 0; }));
    EXPECT_EQ(savedBefore, 0) << "the rest of the first change is over, that of the last is not";
    EXPECT_EQ(snapshots, 1);
}

TEST_F(Saving, ChangesWithoutEndAreSavedAllTheSame)
{
    start();
    WorkspaceSaver saver = this->saver({.afterTheLast = never, .afterTheFirst = {}});
    for (int save = 1; save <= 2; ++save) {
        const bool saved = soon([&] {
            saver.schedule();
            return snapshots == save;
        });
        ASSERT_TRUE(saved);
    }
    EXPECT_TRUE(saver.isScheduled()) << "the change after the last save";
}

TEST_F(Saving, IsNeverLaterThanFiveSecondsAfterTheFirstChange)
{
    EXPECT_LT(WorkspaceSaver::Rests().afterTheFirst, std::chrono::seconds(5));
}

TEST_F(Saving, WhatWasSavedAfterARestIsNotSavedAgain)
{
    start();
    WorkspaceSaver saver = this->saver({.afterTheLast = {}, .afterTheFirst = never});
    saver.schedule();
    ASSERT_TRUE(soon([this] { return snapshots > 0; }));
    EXPECT_FALSE(saver.isScheduled());
}

TEST_F(Saving, AtOnceIsWrittenWhenItReturnsAndLeavesNoSaveForLater)
{
    start();
    WorkspaceSaver saver = this->saver({.afterTheLast = never, .afterTheFirst = never});
    saver.schedule();
    EXPECT_TRUE(saver.isScheduled());
    saver.saveNow();
    EXPECT_TRUE(WorkspaceStore::load());
    EXPECT_EQ(snapshots, 1);
    EXPECT_FALSE(saver.isScheduled());
}

TEST_F(Restoring, AWorkspaceThatCannotBeWrittenCostsNothingInMemory)
{
    m_folder.write("data/Vantroque", "a file where the folder should be");
    startHeld().files().add({m_a});
    m_held.release();
    ASSERT_TRUE(soonIdle());
    model().saveWorkspaceNow();
    EXPECT_THAT(states(), ElementsAre(u"done"_s));
    EXPECT_EQ(model().exports().exportMessage(), std::nullopt);
}

// What happens at the same time.

TEST_F(Restoring, WhatWasMeasuredOfAFileThatChangedMeanwhileIsDropped)
{
    prepare();
    change([this](Workspace& workspace) {
        workspace.select(m_a);
        workspace.files.push_back(WorkspaceFile::of(anyFile("busy.mp4")));
    });
    m_folder.write("a.mp4", "another cut");
    start(m_held.engine(), std::vector{loud()});
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 4; })) << "two in the first start";
    ASSERT_TRUE(soon([&] {
        return states() == QStringList{u"queued"_s, u"done"_s, u"running"_s};
    }));
    EXPECT_TRUE(model().rescorer().isRescoring(entry(0).id)) << "as the old cut";
    m_held.letGo(u"rescore a.mp4"_s);
    ASSERT_TRUE(soon([&] { return !model().rescorer().isRescoring(entry(0).id); }));
    EXPECT_THAT(states(), ElementsAre(u"queued"_s, u"done"_s, u"running"_s));
    EXPECT_EQ(entry(0).media, nullptr);
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(m_held.begun(), testing::Contains(u"a.mp4"_s).Times(2));
}

/// As an entry that lost its report, such as one that was missing.
TEST_F(Restoring, AFileWithMeasurementsAndNoReportIsMeasuredFurther)
{
    prepare();
    change([](Workspace& workspace) { workspace.files[0].report.reset(); });
    start(m_held.engine(), std::vector{loud()});
    EXPECT_THAT(states(), ElementsAre(u"queued"_s, u"done"_s));
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"done"_s));
    const auto begun = m_held.begun();
    EXPECT_THAT(std::vector(begun.begin() + 2, begun.end()),
                ElementsAre(u"rescore b.mp4"_s, u"rescore a.mp4"_s))
        << "the selected one first";
}

TEST_F(Restoring, AFileWithoutReportThatCannotBeMeasuredFurtherIsAnalysedInFull)
{
    prepare();
    change([](Workspace& workspace) { workspace.files[0].report.reset(); });
    m_held.failFromNowOn();
    start(m_held.engine(), std::vector{loud()});
    m_held.letGo();
    ASSERT_TRUE(soon([&] { return states() == QStringList{u"failed"_s, u"done"_s}; }));
    const auto begun = m_held.begun();
    EXPECT_THAT(std::vector(begun.begin() + 2, begun.end()),
                ElementsAre(u"rescore b.mp4"_s, u"rescore a.mp4"_s, u"a.mp4"_s));
}

TEST_F(Restoring, AFileThatRunsAlreadyIsNotQueuedByItsVerification)
{
    prepare();
    change([](Workspace& workspace) { makeOld(workspace.files[0]); });
    m_folder.write("a.mp4", "another cut");
    std::filesystem::remove(m_b.path());
    restart();
    ASSERT_TRUE(soon([&] { return states().contains(u"missing"_s); })) << "after the other";
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"missing"_s));
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(m_held.begun(), testing::SizeIs(3));
}

TEST_F(Restoring, BringsBackTheDecisionsOfTheReviews)
{
    FileReview review = ReviewStore::loadOrCreate(m_a).value();
    prepare();
    review.signOff = ReviewSignOff{.decidedAt = QDateTime::fromSecsSinceEpoch(1'750'000'000)};
    ASSERT_TRUE(ReviewStore::save(review));
    restart();
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(entry(0).signOff, review.signOff);
}

} // namespace
} // namespace vantroque
