#include "App/AppFixture.h"
#include "VantroqueApp/SingleInstance.h"

#include <QLocalSocket>

#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class Start : public AppTest {
protected:
    static std::unique_ptr<QLocalSocket> call()
    {
        auto socket = std::make_unique<QLocalSocket>();
        socket->setSocketOptions(QLocalSocket::AbstractNamespaceOption);
        socket->connectToServer(SingleInstance::name());
        EXPECT_TRUE(socket->waitForConnected());
        return socket;
    }
    /// Whether a connection waits beside the socket that listens.
    static bool isCalled()
    {
        return contents("/proc/net/unix").count(SingleInstance::name().toUtf8() + '\n') >= 2;
    }
    static void say(QLocalSocket& socket, const QByteArray& text)
    {
        socket.write(text);
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten()) {
        }
    }
};

TEST_F(Start, AnalysesTheFilesOnItsCommandLine)
{
    const std::string odd = "caf\xE9 100%\n#1.mp4";
    const Program window = open({file("b.mp4"), file(odd), file("notes.txt")});
    EXPECT_TRUE(soonAnalysed(2));
    EXPECT_THAT(storedNames(), ElementsAre("b.mp4", odd));
}

TEST_F(Start, ALaterOneHandsItsFilesToTheWindowAndEnds)
{
    const Program window = open({file("a.mp4")});
    const std::string odd = "caf\xE9 100%\n#1.mp4";
    EXPECT_EQ(start({file("c.mp4"), file(odd)}).wait().status, 0);
    EXPECT_TRUE(soonStored({"a.mp4", "c.mp4", odd}));
    EXPECT_EQ(start({}).wait().status, 0);
    EXPECT_TRUE(isRunning(window.id()));
}

TEST_F(Start, ManyAtOnceMakeOneWindowThatHasAllFiles)
{
    std::vector<std::unique_ptr<Program>> starts;
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4", "d.mp4"})
        starts.push_back(std::make_unique<Program>(start({file(name)})));
    const auto running = [&] {
        return std::ranges::count_if(starts, [](const auto& one) { return isRunning(one->id()); });
    };
    EXPECT_TRUE(comesTrue([&] { return storedNames().size() == 4; }));
    EXPECT_THAT(storedNames(), UnorderedElementsAre("a.mp4", "b.mp4", "c.mp4", "d.mp4"));
    EXPECT_TRUE(comesTrue([&] { return running() == 1; }));
    for (const auto& one : starts)
        if (!isRunning(one->id())) {
            EXPECT_EQ(one->wait().status, 0);
        }
}

TEST_F(Start, ABusyWindowLosesNoFile)
{
    Program window = open();
    std::vector<Path> files;
    std::vector<std::string> names;
    for (int i = 0; i < 3000; ++i) {
        names.push_back("a file with a name of some length " + std::to_string(i) + ".mp4");
        files.push_back(m_home.write(names.back(), "no video"));
    }
    window.signal(SIGSTOP);
    Program later = start(files);
    EXPECT_TRUE(comesTrue(isCalled));
    window.signal(SIGCONT);
    EXPECT_EQ(later.wait().status, 0);
    window.signal(SIGTERM);
    window.wait();
    EXPECT_EQ(storedNames(), names);
}

TEST_F(Start, AWindowThatDoesNotAnswerIsReported)
{
    const Program window = open();
    window.signal(SIGSTOP);
    SingleInstance later;
    const auto outcome = later.start({FileUrl::fromPath(file("a.mp4"))}, 100ms);
    window.signal(SIGCONT);
    ASSERT_FALSE(outcome.has_value());
    EXPECT_EQ(outcome.error().description, u"it is open already, but does not answer"_s);
}

TEST_F(Start, TakesThePlaceOfAWindowThatWasKilled)
{
    Program killed = open({file("a.mp4")});
    EXPECT_TRUE(soonStored({"a.mp4"}));
    killed.signal(SIGKILL);
    killed.wait();
    const Program window = open({file("b.mp4")});
    EXPECT_TRUE(soonStored({"a.mp4", "b.mp4"}));
}

TEST_F(Start, WhileTheWindowEndsTakesItsPlaceWithAllItsFiles)
{
    Program ending = open({file("a.mp4")});
    EXPECT_TRUE(soonStored({"a.mp4"}));
    ending.signal(SIGTERM);
    Program window = start({file("b.mp4")});
    EXPECT_EQ(ending.wait().status, 0);
    // The file came to the one or to the other.
    EXPECT_TRUE(soonStored({"a.mp4", "b.mp4"}));
}

TEST_F(Start, AnotherDataFolderHasAWindowOfItsOwn)
{
    const Program window = open({file("a.mp4")});
    const ScopedVariable other("XDG_DATA_HOME", m_home / "other");
    const Program second = open({file("b.mp4")});
    EXPECT_TRUE(soonStored({"b.mp4"}));
    EXPECT_TRUE(isRunning(window.id()));
    EXPECT_TRUE(isRunning(second.id()));
}

TEST_F(Start, WhatIsNoCallDoesNoHarm)
{
    const Program window = open();
    const auto garbage = call();
    say(*garbage, QByteArray("\0\xFF\n./a.mp4\nfile://elsewhere/a.mp4\nfile:///%00\n\n", 44));
    const auto huge = call();
    say(*huge, QByteArray(10'000'000, 'x'));
    const auto partial = call();
    say(*partial, "file:///partial.mp4\nfile:///more");
    const auto broken = call();
    say(*broken, "file:///broken.mp4\n");
    broken->disconnectFromServer();
    EXPECT_TRUE(huge->state() == QLocalSocket::UnconnectedState || huge->waitForDisconnected());
    EXPECT_EQ(start({file("good.mp4")}).wait().status, 0);
    EXPECT_TRUE(soonStored({"good.mp4"}));
}

TEST_F(Start, ANameInTheHandsOfAnotherUserStopsNobody)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can be two users";
    const QByteArray name = SingleInstance::name().toUtf8();
    const Path ready = m_home / "ready";
    const int opened = ::open(ready.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0666);
    ForkedChild squatter([&] {
        ::setgroups(0, nullptr);
        if (::setgid(65534) != 0 || ::setuid(65534) != 0)
            return;
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy(name, address.sun_path + 1);
        const auto size =
            offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(name.size());
        if (::bind(socket, reinterpret_cast<sockaddr*>(&address), static_cast<socklen_t>(size)) != 0
            || ::listen(socket, 5) != 0 || ::write(opened, "x", 1) != 1)
            return;
        char heard = 0;
        if (const int peer = ::accept(socket, nullptr, nullptr);
            peer >= 0 && ::read(peer, &heard, 1) == 1) [[maybe_unused]]
            const auto told = ::write(opened, "heard", 5);
        ::pause();
    });
    ::close(opened);
    ASSERT_TRUE(comesTrue([&] { return contents(ready) == "x"; }));
    const Program window = start({file("a.mp4")});
    EXPECT_TRUE(soonStored({"a.mp4"}));
    EXPECT_EQ(contents(ready), "x"); // it was told nothing
}

} // namespace
} // namespace vantroque
