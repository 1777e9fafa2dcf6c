#include "Model/ModelFixture.h"

#include "VantroqueApp/Model/Background/LatestOnly.h"

#include <chrono>
#include <semaphore>
#include <sys/resource.h>

// Jobs in the background and their way back.

namespace vantroque {
namespace {

using testing::ElementsAre;

class Workers : public ModelTest {};

TEST_F(Workers, JobsRunInOrderOnOneOtherThread)
{
    std::vector<int> order;
    std::set<std::thread::id> threads;
    Worker worker;
    for (int i = 0; i < 100; ++i)
        worker.run([&, i] {
            order.push_back(i);
            threads.insert(std::this_thread::get_id());
        });
    worker.waitUntilIdle();
    EXPECT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
    EXPECT_EQ(threads.size(), 1U);
    EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
}

TEST_F(Workers, AnIdleWorkerIsNotWaitedFor)
{
    Worker worker;
    worker.waitUntilIdle();
    bool hasRun = false;
    worker.run([&] { hasRun = true; });
    worker.waitUntilIdle();
    EXPECT_TRUE(hasRun);
}

TEST_F(Workers, AtTheEndTheJobAtHandIsFinishedAndTheRestDropped)
{
    std::atomic<int> begun = 0;
    std::atomic<int> finished = 0;
    std::counting_semaphore<> hasBegun(0);
    Worker::Job job;
    {
        Worker worker;
        // There is always one more to do.
        job = [&] {
            ++begun;
            hasBegun.release();
            worker.run(job);
            ++finished;
        };
        worker.run(job);
        hasBegun.acquire();
    }
    EXPECT_EQ(finished, begun);
}

TEST_F(Workers, OneOfLowPriorityGivesWay)
{
    const int usual = ::getpriority(PRIO_PROCESS, 0);
    int niceness = usual;
    Worker worker(Worker::Priority::low);
    worker.run([&] { niceness = ::getpriority(PRIO_PROCESS, 0); });
    worker.waitUntilIdle();
    EXPECT_GT(niceness, usual);
    EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), usual) << "the main thread does not";
}

TEST_F(Workers, TheMailboxDeliversOnItsThreadAndInOrder)
{
    Mailbox mailbox;
    std::vector<int> order;
    Worker worker;
    for (int i = 0; i < 1000; ++i)
        worker.run([&, i] {
            mailbox.post([&, i, main = std::this_thread::get_id()] {
                EXPECT_NE(main, std::this_thread::get_id());
                order.push_back(i);
            });
        });
    ASSERT_TRUE(soon([&] { return order.size() == 1000; }));
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

/// How many of 50 calls a mailbox has delivered when an event that came after them is handled.
int deliveredBeforeAnEvent(std::chrono::nanoseconds slice)
{
    Mailbox mailbox(slice);
    int delivered = 0;
    std::optional<int> atEvent;
    for (int i = 0; i < 50; ++i)
        mailbox.post([&] { ++delivered; });
    QMetaObject::invokeMethod(
        &mailbox, [&] { atEvent = delivered; }, Qt::QueuedConnection);
    EXPECT_TRUE(QTest::qWaitFor([&] { return delivered == 50 && atEvent.has_value(); }, 60'000));
    return atEvent.value_or(0);
}

TEST_F(Workers, ALongQueueLeavesRoomForTheWindow)
{
    EXPECT_EQ(deliveredBeforeAnEvent(std::chrono::nanoseconds(0)), 1) << "a slice is over at once";
    EXPECT_EQ(deliveredBeforeAnEvent(std::chrono::hours(1)), 50);
    EXPECT_LT(Mailbox::usualSlice, std::chrono::milliseconds(16)) << "a frame";
}

TEST_F(Workers, WhatIsLeftInTheMailboxGoesWithIt)
{
    bool wasCalled = false;
    {
        Mailbox mailbox;
        mailbox.post([&] { wasCalled = true; });
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(wasCalled);
}

TEST_F(Workers, TheMailboxDeliversWhileACallRunsALoopOfItsOwn)
{
    Mailbox mailbox;
    QStringList order;
    mailbox.post([&] {
        order << u"outer begins"_s;
        EXPECT_TRUE(soon([&] { return order.size() == 3; }));
        order << u"outer ends"_s;
    });
    mailbox.post([&] {
        order << u"after it"_s;
        mailbox.post([&] { order << u"posted meanwhile"_s; });
    });
    ASSERT_TRUE(soon([&] { return order.size() == 4; }));
    EXPECT_THAT(order, ElementsAre(u"outer begins"_s, u"after it"_s, u"posted meanwhile"_s,
                                   u"outer ends"_s));
}

class TasksInBackground : public ModelTest {};

TEST_F(TasksInBackground, BringTheirOutcomesBackInOrder)
{
    Tasks tasks;
    const auto main = std::this_thread::get_id();
    std::vector<int> outcomes;
    EXPECT_TRUE(tasks.isIdle());
    for (int i = 0; i < 100; ++i)
        tasks.run(
            [i, main] {
                EXPECT_NE(std::this_thread::get_id(), main);
                return i;
            },
            [&, main](int outcome) {
                EXPECT_EQ(std::this_thread::get_id(), main);
                outcomes.push_back(outcome);
            });
    EXPECT_FALSE(tasks.isIdle());
    ASSERT_TRUE(soon([&] { return tasks.isIdle(); }));
    EXPECT_EQ(outcomes.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(outcomes));
}

TEST_F(TasksInBackground, AreNotIdleBeforeTheLastOutcomeIsBack)
{
    Tasks tasks;
    bool isBack = false;
    tasks.run([] { return 0; }, [&](int) { isBack = true; });
    tasks.waitUntilDone();
    EXPECT_FALSE(tasks.isIdle());
    EXPECT_FALSE(isBack);
    ASSERT_TRUE(soon([&] { return tasks.isIdle(); }));
    EXPECT_TRUE(isBack);
}

TEST_F(TasksInBackground, MayTellSomethingBeforeTheyAreDone)
{
    Tasks tasks;
    QStringList told;
    tasks.run(
        [&] {
            tasks.tell([&] { told << u"half of it"_s; });
            return u"all of it"_s;
        },
        [&](const QString& outcome) { told << outcome; });
    ASSERT_TRUE(soon([&] { return tasks.isIdle(); }));
    EXPECT_THAT(told, ElementsAre(u"half of it"_s, u"all of it"_s));
}

TEST_F(TasksInBackground, BringNothingBackAfterTheirEnd)
{
    bool isBack = false;
    {
        Tasks tasks;
        tasks.run([] { return 0; }, [&](int) { isBack = true; });
        tasks.waitUntilDone();
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(isBack);
}

/// Drawings of numbered frames, of which the first waits until the test lets it end.
class Latest : public ModelTest {
protected:
    void draw(int frame)
    {
        m_latest.run(
            [this, frame] {
                if (frame == 0)
                    m_held.acquire();
                m_begun.push_back(frame);
                return frame;
            },
            [this](int drawn) { m_shown.push_back(drawn); });
    }
    void letGo()
    {
        m_held.release();
        ASSERT_TRUE(soon([this] { return m_latest.isIdle(); }));
    }

    std::binary_semaphore m_held{0};
    std::vector<int> m_begun;
    std::vector<int> m_shown;
    LatestOnly m_latest;
};

TEST_F(Latest, OfWhatComesMeanwhileOnlyTheLastIsDone)
{
    for (int frame = 0; frame < 50; ++frame)
        draw(frame);
    letGo();
    EXPECT_THAT(m_begun, ElementsAre(0, 49));
    EXPECT_THAT(m_shown, ElementsAre(0, 49));
    draw(50);
    ASSERT_TRUE(soon([this] { return m_latest.isIdle(); }));
    EXPECT_THAT(m_shown, ElementsAre(0, 49, 50));
}

TEST_F(Latest, NothingComesOfWhatIsForgotten)
{
    draw(0);
    draw(1);
    m_latest.forget();
    draw(2);
    letGo();
    EXPECT_THAT(m_begun, ElementsAre(0, 2));
    EXPECT_THAT(m_shown, ElementsAre(2));
}

TEST_F(Latest, MayBeAskedForMoreByWhoGetsAnOutcome)
{
    int left = 3;
    std::function<void(int)> again = [&](int drawn) {
        m_shown.push_back(drawn);
        if (--left > 0)
            m_latest.run([drawn] { return drawn + 1; }, again);
    };
    m_latest.run([] { return 1; }, again);
    ASSERT_TRUE(soon([&] { return left == 0 && m_latest.isIdle(); }));
    EXPECT_THAT(m_shown, ElementsAre(1, 2, 3));
}

} // namespace
} // namespace vantroque
