#include "Model/ModelFixture.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace vantroque {
namespace {

class Run : public ModelTest {
protected:
    /// Over the model's list and queue, with a clock that the test turns.
    QueueRun make()
    {
        return QueueRun(model().files(), model().queue(), [this] { return m_now; });
    }
    std::vector<FileUrl> files(int count)
    {
        std::vector<FileUrl> files;
        for (int i = 0; i < count; ++i)
            files.push_back(anyFile(std::to_string(i) + ".mp4"));
        return files;
    }

    QueueRun::Seconds m_now{1000};
};

TEST_F(Run, CountsTheFilesThatWereAddedTogetherAndEndsOnce)
{
    startHeld();
    const QueueRun run = make();
    const QSignalSpy ended(&run, &QueueRun::ended);
    EXPECT_FALSE(run.isRunning());
    model().files().add(files(3));
    ASSERT_TRUE(soon([&] { return run.counts() == QueueRun::Counts{.all = 3}; }));
    EXPECT_TRUE(run.isRunning());
    EXPECT_EQ(run.runningFile(), entry(0).id);
    m_held.release(2);
    ASSERT_TRUE(soon([&] { return run.counts().done == 2; }));
    model().files().add({anyFile("later.mp4")});
    ASSERT_TRUE(soon([&] { return run.counts() == QueueRun::Counts{.all = 4, .done = 2}; }));
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(run.counts(), (QueueRun::Counts{.all = 4, .done = 4}));
    EXPECT_FALSE(run.isRunning());
    EXPECT_EQ(ended.count(), 1);
    m_held.hold();
    model().files().add({anyFile("next.mp4")});
    EXPECT_TRUE(soon([&] { return run.counts() == QueueRun::Counts{.all = 1}; })) << "begins anew";
}

TEST_F(Run, TellsTroubleApartFromVerdicts)
{
    startHeld();
    const QueueRun run = make();
    m_held.failFromNowOn();
    m_held.letGo();
    model().files().add(files(2));
    ASSERT_TRUE(soonIdle());
    EXPECT_EQ(run.counts(), (QueueRun::Counts{.all = 2, .done = 2, .notAnalyzed = 2}));
}

TEST_F(Run, TellsTheTimeLeftFromTheSecondFileOn)
{
    startHeld();
    const QueueRun run = make();
    model().files().add(files(4));
    ASSERT_TRUE(soon([&] { return run.isRunning(); }));
    m_now += QueueRun::Seconds(30);
    EXPECT_FALSE(run.timeLeft());
    m_held.release();
    ASSERT_TRUE(soon([&] { return run.counts().done == 1; }));
    ASSERT_TRUE(run.timeLeft());
    EXPECT_NEAR(run.timeLeft()->count(), 90, 0.1) << "less by what is done of the second";
    m_held.letGo();
    ASSERT_TRUE(soonIdle());
    EXPECT_FALSE(run.timeLeft());
    EXPECT_DOUBLE_EQ(run.duration().count(), 30);
}

TEST_F(Run, ForgetsRemovedFilesAndDoesNotEndOfThem)
{
    startHeld();
    const QueueRun run = make();
    const QSignalSpy ended(&run, &QueueRun::ended);
    model().files().add(files(3));
    model().files().remove(entry(2).id);
    EXPECT_TRUE(soon([&] { return run.counts().all == 2; }));
    model().files().clearAll();
    EXPECT_TRUE(soon([&] { return run.counts().all == 0; }));
    EXPECT_FALSE(run.isRunning());
    EXPECT_EQ(ended.count(), 0);
}

} // namespace
} // namespace vantroque
