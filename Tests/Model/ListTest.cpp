#include "Model/ModelFixture.h"

#include "Tools/ProcessTable.h"

#include <QSignalSpy>

// What comes into the list, in which order it is analysed, and what goes out.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Media::operator+;

class List : public ModelTest {};

TEST_F(List, AFileIsMeasuredAndScored)
{
    start({loud()}).files().add({file("spot.mp4")});
    ASSERT_TRUE(soonIdle());
    ASSERT_THAT(states(), ElementsAre(u"done"_s));
    EXPECT_THAT(profileIDs(entry(0)), ElementsAre(u"loud"_s));
    EXPECT_EQ(entry(0).media->video->width, 320);
    EXPECT_TRUE(entry(0).media->signal->integratedLKFS);
    EXPECT_EQ(entry(0).fingerprint->size(), 64);
    EXPECT_EQ(model().files().selectedReport(), entry(0).report());
    EXPECT_EQ(model().files().selectedMedia(), entry(0).media.get());
    EXPECT_EQ(model().queue().progress(entry(0).id), nullptr);
}

TEST_F(List, WhatReportsSayAlikeIsInMemoryOnce)
{
    Profile profile = loud();
    profile.loudness->targetLKFS = -23;
    start({profile}).files().add({file("spot.mp4"), file("again.mp4")});
    ASSERT_TRUE(soonIdle());
    const CheckResult& first = entry(0).report()->profiles.at(0).checks.at(0);
    const CheckResult& second = entry(1).report()->profiles.at(0).checks.at(0);
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.expected.constData(), second.expected.constData());
    EXPECT_EQ(first.title.constData(), second.title.constData());
}

TEST_F(List, AFileThatCannotBeReadFailsWithTheToolsWordsAndTheNextOneGoesOn)
{
    start().files().add({anyFile("broken.mp4"), file("spot.mp4")});
    ASSERT_TRUE(soonIdle());
    ASSERT_THAT(states(), ElementsAre(u"failed"_s, u"done"_s));
    EXPECT_THAT(std::get<FileAnalysis::Failed>(entry(0).status).reason.toStdString(),
                HasSubstr("ffprobe"));
    EXPECT_EQ(entry(0).media, nullptr);
}

TEST_F(List, WithoutToolsFilesAreTakenAndFailInTheToolsWords)
{
    const ScopedVariable path("PATH", m_folder.path());
    const ScopedVariable tools("VANTROQUE_FFMPEG_DIR");
    start().files().add({anyFile("a.mov")});
    EXPECT_TRUE(model().queue().toolMissing());
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"failed"_s));
}

TEST_F(List, WithToolsNoneIsMissing)
{
    EXPECT_FALSE(start().queue().toolMissing());
}

TEST_F(List, OnlyVideoFilesAreTaken)
{
    startHeld().files().add({anyFile("a.MP4"), anyFile("b"), anyFile("c.txt"), anyFile("d.mov"),
                             anyFile("e.m4v"), anyFile("f.mxf"), anyFile("g.webm"),
                             anyFile("h.mpg"), anyFile("i.mpeg"), anyFile("j.avi"),
                             anyFile("k.mkv"), anyFile("l.wav"), anyFile(".mov")});
    EXPECT_THAT(names(), ElementsAre(u"a.MP4"_s, u"d.mov"_s, u"e.m4v"_s, u"f.mxf"_s, u"g.webm"_s,
                                     u"h.mpg"_s, u"i.mpeg"_s, u"j.avi"_s, u"k.mkv"_s));
}

TEST_F(List, CaptionsAmongTheFilesAreDroppedWithoutAPlayer)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("a.srt"), anyFile("b.mp4")});
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"queued"_s));
    EXPECT_EQ(selectedName(), u"a.mp4"_s);
}

TEST_F(List, OneFileIsAnalysedAtATimeInTheOrderOfAdding)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4"), anyFile("c.mp4")});
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"queued"_s, u"queued"_s));
    m_held.release();
    ASSERT_TRUE(soon([&] {
        return states() == QStringList{u"done"_s, u"running"_s, u"queued"_s};
    }));
    m_held.release(2);
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(m_held.begun(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s, u"c.mp4"_s));
}

TEST_F(List, WhatIsShownWhileAFileRunsComesAndGoes)
{
    startHeld().files().add({anyFile("a.mp4")});
    const QUuid id = entry(0).id;
    ASSERT_TRUE(soon([&] { return model().queue().progress(id) != nullptr; }));
    EXPECT_EQ(model().queue().progress(id)->stage, AnalysisProgress::Stage::probing);
    EXPECT_TRUE(m_held.wantedPreview);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(model().queue().progress(id), nullptr);
}

TEST_F(List, AddingAFileThatIsOnItsWayChangesNothing)
{
    const FileUrl a = anyFile("a.mp4");
    const FileUrl b = anyFile("b.mp4");
    startHeld().files().add({a, b});
    const QUuid ids[] = {entry(0).id, entry(1).id};
    model().files().add({b, a});
    EXPECT_THAT(states(), ElementsAre(u"running"_s, u"queued"_s));
    EXPECT_EQ(entry(0).id, ids[0]);
    EXPECT_EQ(entry(1).id, ids[1]);
}

TEST_F(List, AddingAFinishedFileStartsItOverAtTheEnd)
{
    const FileUrl a = anyFile("a.mp4");
    startHeld().files().add({a, anyFile("b.mp4")});
    m_held.release(2);
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(selectedName(), u"a.mp4"_s);
    const QUuid before = entry(0).id;
    model().files().add({a});
    EXPECT_THAT(names(), ElementsAre(u"b.mp4"_s, u"a.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"done"_s, u"running"_s));
    EXPECT_NE(entry(1).id, before);
    EXPECT_EQ(entry(1).media, nullptr);
    EXPECT_EQ(entry(1).fingerprint, std::nullopt);
    EXPECT_EQ(selectedName(), u"b.mp4"_s) << "the first of the list";
}

TEST_F(List, AddingSomeOfManyAgainKeepsTheOrderOfTheOthersAndOfWhatIsAdded)
{
    const FileUrl a = anyFile("a.mp4");
    const FileUrl c = anyFile("c.mp4");
    startHeld().files().add({a, anyFile("b.mp4"), c, anyFile("d.mp4")});
    m_held.release(4);
    ASSERT_TRUE(soonIdle());
    model().files().select(entry(3).id);
    model().files().add({c, anyFile("e.mp4"), a, c});
    EXPECT_THAT(names(), ElementsAre(u"b.mp4"_s, u"d.mp4"_s, u"c.mp4"_s, u"e.mp4"_s, u"a.mp4"_s));
    EXPECT_THAT(states(),
                ElementsAre(u"done"_s, u"done"_s, u"running"_s, u"queued"_s, u"queued"_s));
    EXPECT_EQ(selectedName(), u"d.mp4"_s);
}

TEST_F(List, AFileThatIsGivenTwiceIsTakenOnce)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4"), anyFile("a.mp4")});
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
}

TEST_F(List, AddingAFailedFileTriesItAgain)
{
    m_held.failFromNowOn();
    const FileUrl a = anyFile("a.mp4");
    startHeld().files().add({a});
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(std::get<FileAnalysis::Failed>(entry(0).status).reason, u"the analysis failed"_s);
    model().files().add({a});
    EXPECT_THAT(states(), ElementsAre(u"running"_s));
}

TEST_F(List, RemovingTheSelectedLastEntrySelectsTheNewLastOne)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4"), anyFile("c.mp4")});
    model().files().select(entry(2).id);
    model().files().remove(entry(2).id);
    EXPECT_EQ(selectedName(), u"b.mp4"_s);
}

TEST_F(List, RemovingASelectedEntrySelectsTheOneThatTakesItsPlace)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4"), anyFile("c.mp4")});
    model().files().select(entry(1).id);
    model().files().remove(entry(1).id);
    EXPECT_EQ(selectedName(), u"c.mp4"_s);
}

TEST_F(List, RemovingAnotherEntryLeavesTheSelection)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4")});
    model().files().remove(entry(1).id);
    EXPECT_EQ(selectedName(), u"a.mp4"_s);
}

TEST_F(List, RemovingTheOnlyEntrySelectsNothing)
{
    startHeld().files().add({anyFile("a.mp4")});
    model().files().remove(entry(0).id);
    EXPECT_EQ(model().files().selectedAnalysisID(), std::nullopt);
    EXPECT_EQ(model().files().selectedReport(), nullptr);
    EXPECT_EQ(model().files().selectedMedia(), nullptr);
}

TEST_F(List, AnUnknownEntryIsNotRemoved)
{
    startHeld().files().add({anyFile("a.mp4")});
    model().files().remove(QUuid::createUuid());
    EXPECT_THAT(names(), ElementsAre(u"a.mp4"_s));
}

/// Five minutes that ffmpeg, asked to, decodes as fast as they would be shown. A file of their own,
/// since tools are told by the name of their file, and another test may run beside this one.
FileUrl fiveMinutesIn(const TestFolder& folder)
{
    std::filesystem::copy_file(
        Media::make({"five-minutes.mp4",
                     Clips::picture("64x64", "5", "300") + Clips::tone("300") + Clips::x264()}),
        folder / "film.mp4");
    return FileUrl::fromPath(folder / "film.mp4");
}

/// Of the tools, the decode alone takes as long as the film.
void decodeInRealTime(const FakeTools& tools)
{
    tools.put("ffmpeg", "case \"$*\" in *ebur128*) exec ffmpeg -re \"$@\";; esac\n"
                        "exec ffmpeg \"$@\"");
}

class Stopping : public List, public testing::WithParamInterface<bool> {};

TEST_P(Stopping, TheRunningFileEndsItsToolsAndTheNextBegins)
{
    const bool clears = GetParam();
    const FakeTools tools;
    decodeInRealTime(tools);
    const TestFolder folder;
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    const FileUrl film = fiveMinutesIn(folder);
    const auto decodes = [&](pid_t tool) {
        return processFile(tool, "cmdline").contains("ebur128");
    };
    start({loud()}).files().add({film, file("next.mp4")});
    ASSERT_TRUE(
        soon([&] { return std::ranges::any_of(processesNaming(film.path().native()), decodes); }));
    EXPECT_THAT(temporary.names(), testing::Not(IsEmpty()));
    if (clears) {
        model().files().clearAll();
        model().files().add({file("next.mp4")});
    } else {
        model().files().remove(entry(0).id);
    }
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(names(), ElementsAre(u"next.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"done"_s));
    EXPECT_TRUE(entry(0).media->signal->integratedLKFS);
    EXPECT_THAT(processesNaming(film.path().native()), IsEmpty());
    EXPECT_FALSE(hasChildren());
    EXPECT_THAT(temporary.names(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(List, Stopping, testing::Bool(), [](const auto& each) {
    return each.param ? "ByClearingTheList" : "ByRemovingIt";
});

TEST_F(List, TheRunningFileIsLeftAloneWhenAnotherIsRemoved)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4")});
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 1; }));
    model().files().remove(entry(1).id);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    EXPECT_THAT(states(), ElementsAre(u"done"_s));
    EXPECT_FALSE(m_held.wasCalledOff);
}

TEST_F(List, TheNextFileWaitsUntilARemovedAnalysisEnds)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4")});
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 1; }));
    const QUuid removed = entry(0).id;
    model().files().remove(removed);
    EXPECT_TRUE(model().queue().isWorking()) << "until its tools are gone";
    EXPECT_THAT(states(), ElementsAre(u"queued"_s));
    m_held.release();
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 2; }));
    EXPECT_TRUE(m_held.wasCalledOff);
    EXPECT_THAT(m_held.begun(), ElementsAre(u"a.mp4"_s, u"b.mp4"_s));
    EXPECT_THAT(states(), ElementsAre(u"running"_s));
    EXPECT_EQ(model().queue().progress(removed), nullptr);
}

TEST_F(List, ClearingItKeepsNothing)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4")});
    ASSERT_TRUE(soon([&] { return m_held.begun().size() == 1; }));
    model().files().clearAll();
    EXPECT_THAT(model().files().analyses(), IsEmpty());
    EXPECT_EQ(model().files().selectedAnalysisID(), std::nullopt);
    EXPECT_TRUE(model().queue().isWorking());
    m_held.release();
    ASSERT_TRUE(soon([&] { return !model().queue().isWorking(); }));
    EXPECT_THAT(model().files().analyses(), IsEmpty());
    EXPECT_THAT(m_held.begun(), ElementsAre(u"a.mp4"_s));
}

TEST_F(List, SelectingTheSelectedEntryTellsNothing)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4")});
    QSignalSpy changes(&model().files(), &FileList::selectionChanged);
    model().files().select(entry(0).id);
    EXPECT_EQ(changes.count(), 0);
    model().files().select(entry(1).id);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(List, FilesWithAPictureCanBeCompared)
{
    start().files().add(
        {file("a.mp4"), file("sound.mov", Clips::m4a()), anyFile("broken.mp4"), file("b.mp4")});
    ASSERT_TRUE(soonIdle());
    const auto sources = model().comparison().comparableSources();
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_EQ(sources[0].name, u"a.mp4"_s);
    EXPECT_EQ(sources[0].url, entry(0).url);
    EXPECT_EQ(sources[0].video.width, 320);
    EXPECT_EQ(sources[1].name, u"b.mp4"_s);
}

TEST_F(List, ComparingEndsWhenFewerThanTwoAreLeft)
{
    startHeld().files().add({anyFile("a.mp4"), anyFile("b.mp4"), anyFile("c.mp4")});
    m_held.release(3);
    ASSERT_TRUE(soonIdle());
    model().comparison().setComparing(true);
    model().files().remove(entry(0).id);
    EXPECT_TRUE(model().comparison().comparing());
    model().files().remove(entry(0).id);
    EXPECT_FALSE(model().comparison().comparing());
    model().comparison().setComparing(true);
    model().files().clearAll();
    EXPECT_FALSE(model().comparison().comparing());
}

TEST_F(List, TheLookIsRememberedAndDarkUnlessChosen)
{
    EXPECT_EQ(start().appearance().mode(), AppearanceMode::dark);
    model().appearance().setMode(AppearanceMode::system);
    EXPECT_EQ(start().appearance().mode(), AppearanceMode::system);
    m_folder.write("settings", "appearance=sepia\n");
    EXPECT_EQ(start().appearance().mode(), AppearanceMode::dark);
}

TEST_F(List, MayBeChangedAgainByWhoIsToldOfAChange)
{
    startHeld();
    const auto connection = QObject::connect(&model().files(), &FileList::listChanged,
                                             QCoreApplication::instance(), [this] {
                                                 if (model().files().analyses().size() > 1)
                                                     model().files().remove(entry(0).id);
                                             });
    model().files().add({anyFile("a.mp4"), anyFile("b.mp4"), anyFile("c.mp4")});
    EXPECT_THAT(names(), ElementsAre(u"c.mp4"_s));
    EXPECT_EQ(selectedName(), u"c.mp4"_s);
    QObject::disconnect(connection);
    QObject::connect(&model().files(), &FileList::entryChanged, QCoreApplication::instance(),
                     [this](const QUuid& id) {
                         model().files().remove(id);
                         EXPECT_FALSE(id.isNull());
                     });
    m_held.release();
    ASSERT_TRUE(
        soon([&] { return model().files().analyses().empty() && !model().queue().isWorking(); }));
    EXPECT_EQ(model().files().selectedAnalysisID(), std::nullopt);
}

TEST_F(List, AddingSelectsOnceAndTellsOfAWholeList)
{
    const FileUrl a = anyFile("a.mp4");
    startHeld().files().add({a, anyFile("b.mp4")});
    m_held.release(2);
    ASSERT_TRUE(soonIdle());
    QStringList told;
    QObject::connect(&model().files(), &FileList::listChanged, QCoreApplication::instance(),
                     [&] { told << u"list "_s + selectedName(); });
    QObject::connect(&model().files(), &FileList::selectionChanged, QCoreApplication::instance(),
                     [&] { told << u"selection "_s + selectedName(); });
    model().files().add({a});
    EXPECT_THAT(told, ElementsAre(u"list b.mp4"_s, u"selection b.mp4"_s));
}

} // namespace
} // namespace vantroque
