#include "Model/ModelFixture.h"

#include "VantroqueApp/Model/Worker.h"

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
    Worker::Job job;
    {
        Worker worker;
        // There is always one more to do.
        job = [&] {
            ++begun;
            worker.run(job);
            ++finished;
        };
        worker.run(job);
        while (begun == 0)
            std::this_thread::yield();
    }
    EXPECT_EQ(finished, begun);
}

TEST_F(Workers, OneOfLowPriorityGivesWay)
{
    int niceness = 0;
    Worker worker(Worker::Priority::low);
    worker.run([&] { niceness = ::getpriority(PRIO_PROCESS, 0); });
    worker.waitUntilIdle();
    EXPECT_EQ(niceness, 10);
    EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), 0) << "the main thread does not";
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

TEST_F(Workers, ALongQueueLeavesRoomForTheWindow)
{
    Mailbox mailbox;
    int delivered = 0;
    int deliveredAtFirstEvent = 0;
    for (int i = 0; i < 50; ++i)
        mailbox.post([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            ++delivered;
        });
    QMetaObject::invokeMethod(
        &mailbox, [&] { deliveredAtFirstEvent = delivered; }, Qt::QueuedConnection);
    ASSERT_TRUE(soon([&] { return delivered == 50; }));
    EXPECT_GT(deliveredAtFirstEvent, 0);
    EXPECT_LT(deliveredAtFirstEvent, 10);
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
        order << u"behind it"_s;
        mailbox.post([&] { order << u"posted meanwhile"_s; });
    });
    ASSERT_TRUE(soon([&] { return order.size() == 4; }));
    EXPECT_THAT(order, ElementsAre(u"outer begins"_s, u"behind it"_s, u"posted meanwhile"_s,
                                   u"outer ends"_s));
}

} // namespace
} // namespace vantroque
