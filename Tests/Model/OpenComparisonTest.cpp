#include "Model/ModelFixture.h"

#include <QSignalSpy>

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class OpenCompare : public ModelTest {
protected:
    /// Files that are analysed at once, of which those with a picture can be compared.
    void add(int count, int from = 0)
    {
        std::vector<FileUrl> files;
        for (int i = from; i < from + count; ++i)
            files.push_back(anyFile(std::to_string(i) + ".mp4"));
        model().files().add(files);
        ASSERT_TRUE(soonIdle());
    }
    void begin(int count)
    {
        startHeld();
        m_held.letGo();
        add(count);
    }
    OpenComparison& opened() { return model().openComparison(); }
    QStringList compared()
    {
        QStringList names;
        for (const auto& tile : opened().controller()->tiles())
            names << tile->name();
        return names;
    }
    void compare() { model().comparison().setComparing(true); }
};

TEST_F(OpenCompare, NothingIsOpenUntilFilesAreCompared)
{
    begin(2);
    EXPECT_EQ(opened().controller(), nullptr);
    EXPECT_TRUE(model().comparison().canCompare());
    compare();
    ASSERT_NE(opened().controller(), nullptr);
    EXPECT_THAT(compared(), ElementsAre(u"0.mp4"_s, u"1.mp4"_s));
    model().comparison().setComparing(false);
    EXPECT_EQ(opened().controller(), nullptr);
}

TEST_F(OpenCompare, OneFileIsNotEnough)
{
    begin(1);
    EXPECT_FALSE(model().comparison().canCompare());
}

TEST_F(OpenCompare, SeveralThatAreSelectedAreTheOnesThatAreCompared)
{
    begin(4);
    model().files().select(FileSelection{{entry(3).id, entry(1).id}, entry(3).id});
    compare();
    EXPECT_THAT(compared(), ElementsAre(u"1.mp4"_s, u"3.mp4"_s));
    EXPECT_EQ(opened().leftOut(), 0U);
}

TEST_F(OpenCompare, OfManyTheFirstTwelveAre)
{
    begin(30);
    compare();
    EXPECT_THAT(compared(), SizeIs(12));
    EXPECT_EQ(compared().front(), u"0.mp4"_s);
    EXPECT_EQ(opened().leftOut(), 18U);
}

TEST_F(OpenCompare, AFileThatIsAnalysedMeanwhileJoins)
{
    begin(2);
    compare();
    opened().controller()->seek(12);
    const QSignalSpy came(opened().controller(), &CompareController::tilesChanged);
    add(1, 2);
    ASSERT_TRUE(soon([&] { return opened().controller()->tiles().size() == 3; }));
    EXPECT_THAT(came, SizeIs(1));
    EXPECT_EQ(compared().back(), u"2.mp4"_s);
    EXPECT_EQ(opened().controller()->position(), 12);
}

TEST_F(OpenCompare, OneThatWasThereAndNotSelectedDoesNot)
{
    begin(3);
    model().files().select(FileSelection{{entry(0).id, entry(1).id}, entry(0).id});
    compare();
    Q_EMIT model().files().entryChanged(entry(2).id);
    EXPECT_THAT(compared(), SizeIs(2));
}

TEST_F(OpenCompare, EndsWhenFewerThanTwoAreLeft)
{
    begin(2);
    compare();
    const QSignalSpy going(&opened(), &OpenComparison::aboutToGo);
    model().files().remove(entry(0).id);
    EXPECT_THAT(going, SizeIs(1));
    EXPECT_EQ(opened().controller(), nullptr);
}

TEST_F(OpenCompare, ThePlayerRestsMeanwhile)
{
    begin(2);
    model().openPlayer().syncPlayer();
    ASSERT_NE(model().player(), nullptr);
    model().player()->togglePlay();
    EXPECT_FALSE(model().player()->shuttle().state().isStopped());
    compare();
    EXPECT_TRUE(model().player()->shuttle().state().isStopped());
}

} // namespace
} // namespace vantroque
