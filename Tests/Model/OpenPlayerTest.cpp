#include "Model/HandEngine.h"
#include "Model/ModelFixture.h"

// The one player of the window: when it comes, when it goes, and what reaches it.

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class OpeningPlayer : public ModelTest {
protected:
    ~OpeningPlayer() override { end(); }

    /// Measured files of these names, the first of them selected.
    void startWith(const std::vector<std::string>& names)
    {
        m_makeEngine = m_film.maker();
        startHeld({plainProfile(u"p"_s)});
        std::vector<FileUrl> files;
        for (const std::string& name : names)
            files.push_back(anyFile(name));
        model().files().add(files);
        m_held.release(static_cast<int>(names.size()));
        ASSERT_TRUE(soonIdle());
        QObject::connect(&model().openPlayer(), &OpenPlayer::playerChanged,
                         QCoreApplication::instance(), [this] { ++m_changes; });
    }
    /// As the view does when the report comes into sight.
    PlayerController* sync()
    {
        model().openPlayer().syncPlayer();
        return model().player();
    }

    HandFilm m_film;
    int m_changes = 0;
};

TEST_F(OpeningPlayer, ComesWithTheSelectedReport)
{
    startWith({"a.mp4", "b.mp4"});
    EXPECT_EQ(model().player(), nullptr);
    ASSERT_NE(sync(), nullptr);
    EXPECT_EQ(model().player()->file().url.fileName(), u"a.mp4"_s);
    EXPECT_EQ(model().player()->report().get(), model().files().selectedReport());
    EXPECT_EQ(model().player()->lastFrameIndex(), 30 * 25 - 1);
    EXPECT_EQ(m_film.engines, 1);
    EXPECT_TRUE(soon([&] { return model().player()->shown().has_value(); }));
    const auto* before = model().player();
    EXPECT_EQ(sync(), before) << "once";
    EXPECT_EQ(m_changes, 1);
}

TEST_F(OpeningPlayer, GoesWhenAnotherFileIsSelected)
{
    startWith({"a.mp4", "b.mp4"});
    sync();
    model().openPlayer().setVideoFocused(true);
    EXPECT_TRUE(model().videoFocused());
    model().files().select(entry(0).id);
    EXPECT_NE(model().player(), nullptr) << "the same one";
    model().files().select(entry(1).id);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_FALSE(model().videoFocused());
    EXPECT_EQ(m_film.engines, 0);
    ASSERT_NE(sync(), nullptr);
    EXPECT_EQ(model().player()->file().url.fileName(), u"b.mp4"_s);
    model().files().select(std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
}

TEST_F(OpeningPlayer, GoesWithItsFile)
{
    startWith({"a.mp4", "b.mp4"});
    sync();
    model().files().remove(entry(0).id);
    EXPECT_EQ(model().player(), nullptr);
    sync();
    model().files().clearAll();
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(sync(), nullptr);
}

TEST_F(OpeningPlayer, GoesWhenTheFileIsGoneOrMeasuredAnew)
{
    startWith({"a.mp4"});
    sync();
    model().files().change(entry(0).id,
                           [](FileAnalysis& entry) { entry.status = FileAnalysis::Missing{}; });
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_EQ(sync(), nullptr);
    model().files().queueAgain(entry(0).id);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    ASSERT_NE(sync(), nullptr);
    model().files().queueAgain(entry(0).id);
    EXPECT_EQ(model().player(), nullptr);
}

TEST_F(OpeningPlayer, ANewReportOfTheFileReachesIt)
{
    startWith({"a.mp4"});
    PlayerController* player = sync();
    ASSERT_NE(player, nullptr);
    player->seek(20);
    const auto before = player->report();
    int told = 0;
    QObject::connect(player, &PlayerController::reportChanged, player, [&] { ++told; });
    model().profiles().setEnabledProfileIDs({});
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(model().player(), player) << "and nothing else of it changes";
    EXPECT_EQ(player->playhead().frame(), 20);
    EXPECT_NE(player->report(), before);
    EXPECT_EQ(player->report().get(), model().files().selectedReport());
    EXPECT_GE(told, 1);
}

TEST_F(OpeningPlayer, IsNoneForAFileWithoutAPicture)
{
    m_makeEngine = m_film.maker();
    start();
    model().files().add({file("sound.mov", Clips::m4a())});
    ASSERT_TRUE(soonIdle());
    ASSERT_NE(model().files().selectedReport(), nullptr);
    EXPECT_EQ(sync(), nullptr);
    EXPECT_EQ(m_film.engines, 0);
}

TEST_F(OpeningPlayer, KnowsWhetherThePictureIsOfHighDynamicRange)
{
    m_makeEngine = m_film.maker();
    start();
    const auto hdr = [&](const FileUrl& url) {
        model().files().add({url});
        EXPECT_TRUE(soonIdle());
        model().files().select(model().files().analyses().back().id);
        EXPECT_NE(sync(), nullptr);
        return model().player()->file().hdr;
    };
    EXPECT_EQ(hdr(file("pq.mp4", Clips::hdr10Bt2020())), u"PQ"_s);
    EXPECT_THAT(model().player()->notes(), ElementsAre(u"HDR (PQ), shown without tone mapping"_s));
    EXPECT_EQ(hdr(file("hlg.mp4", Clips::hlg())), u"HLG"_s);
    EXPECT_EQ(hdr(file("sdr.mp4", Clips::tenBit())), std::nullopt);
    EXPECT_THAT(model().player()->notes(), IsEmpty());
}

TEST_F(OpeningPlayer, TheFirstCaptionFileThatIsAddedIsForIt)
{
    startWith({"a.mp4"});
    const auto captions = [&](const std::string& name, const QByteArray& text) {
        return FileUrl::fromPath(
            m_folder.write(name, "1\n00:00:01,000 --> 00:00:02,000\n" + text + "\n"));
    };
    const FileUrl first = captions("one.srt", "one");
    const FileUrl second = captions("two.srt", "two");
    model().files().add({first});
    EXPECT_THAT(model().files().analyses(), SizeIs(1)) << "without a player it is dropped";
    ASSERT_NE(sync(), nullptr);
    model().files().add({anyFile("b.mp4"), first, second});
    EXPECT_THAT(model().files().analyses(), SizeIs(2));
    ASSERT_TRUE(soon([&] { return model().player()->captions().captions() != nullptr; }));
    ASSERT_TRUE(soon([&] { return model().player()->captions().isIdle(); }));
    EXPECT_EQ(model().player()->captions().captionsURL(), first);
}

TEST_F(OpeningPlayer, ASignOffOfThePlayerShowsInTheList)
{
    startWith({"a.mp4"});
    PlayerController* player = sync();
    ASSERT_NE(player, nullptr);
    player->setSignOff(ReviewSignOff::Decision::approved);
    ASSERT_TRUE(soon([&] { return entry(0).signOff.has_value(); }));
    EXPECT_EQ(entry(0).signOff->decision, ReviewSignOff::Decision::approved);
}

/// Half a note on frame 20: words, and a drawing.
NoteDraft halfANote()
{
    return {.text = u"half a th"_s,
            .strokes = {{.id = QUuid::createUuid(), .points = {{0.1, 0.1}, {0.2, 0.2}}}},
            .tool = AnnotationTool::pen,
            .ink = AnnotationStroke::Ink::amber,
            .isComposing = true};
}

TEST_F(OpeningPlayer, ANoteInTheMakingWaitsForTheNextPlayerOfItsFile)
{
    startWith({"a.mp4", "b.mp4"});
    const NoteDraft draft = halfANote();
    sync()->seek(20);
    model().player()->notebook().setDraft(draft);
    model().files().select(entry(1).id);
    EXPECT_FALSE(sync()->notebook().hasDraft()) << "another file";
    model().files().select(entry(0).id);
    const Notebook& notebook = sync()->notebook();
    EXPECT_EQ(notebook.draftText(), draft.text);
    EXPECT_EQ(notebook.draftStrokes(), draft.strokes);
    EXPECT_EQ(notebook.tool(), draft.tool);
    EXPECT_EQ(notebook.ink(), draft.ink);
    EXPECT_TRUE(notebook.isComposing());
    EXPECT_EQ(model().player()->playhead().frame(), 20) << "the frame that it is about";
    ASSERT_TRUE(soon([&] { return notebook.isOpen(); }));
    model().player()->saveComment(std::nullopt);
    ASSERT_TRUE(soon([&] { return notebook.comments().size() == 1; }));
    EXPECT_EQ(notebook.comments()[0].frame, 20);
    model().files().select(entry(1).id);
    model().files().select(entry(0).id);
    EXPECT_FALSE(sync()->notebook().hasDraft()) << "it was kept as a note";
    EXPECT_EQ(model().player()->playhead().frame(), 0);
}

TEST_F(OpeningPlayer, ANoteInTheMakingOutlivesANewAnalysisOfItsFile)
{
    startWith({"a.mp4"});
    sync()->notebook().setDraft(halfANote());
    model().files().queueAgain(entry(0).id);
    ASSERT_EQ(model().player(), nullptr);
    m_held.release();
    ASSERT_TRUE(soonIdle());
    ASSERT_NE(sync(), nullptr);
    EXPECT_EQ(model().player()->notebook().draftText(), u"half a th"_s);
    EXPECT_THAT(model().player()->notebook().draftStrokes(), SizeIs(1));
}

TEST_F(OpeningPlayer, WithoutAnEngineThereAreStills)
{
    startHeld();
    model().files().add({anyFile("a.mp4")});
    m_held.release();
    ASSERT_TRUE(soonIdle());
    ASSERT_NE(sync(), nullptr);
    EXPECT_TRUE(model().player()->usesFrameStepper());
}

} // namespace
} // namespace vantroque
