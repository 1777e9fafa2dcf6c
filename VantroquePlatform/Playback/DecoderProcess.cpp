#include "VantroquePlatform/Playback/DecoderProcess.h"

#include "Base/ResourceFolder.h"

#include <QByteArray>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <utility>
#include <vector>

namespace vantroque {

using namespace PlayProtocol;

namespace {

struct FileActions {
    explicit FileActions(int link)
    {
        ::posix_spawn_file_actions_init(&actions);
        for (const int output : {STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions, link, linkDescriptor);
        ::posix_spawn_file_actions_addclosefrom_np(&actions, linkDescriptor + 1);
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    posix_spawn_file_actions_t actions{};
};

/// A process group of its own, so that a key that interrupts the window does not reach it, and the
/// signals as every program finds them.
struct Attributes {
    Attributes()
    {
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_init(&attributes);
        ::posix_spawnattr_setsigmask(&attributes, &none);
        ::posix_spawnattr_setsigdefault(&attributes, &all);
        ::posix_spawnattr_setpgroup(&attributes, 0);
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK
                                                    | POSIX_SPAWN_SETSIGDEF);
    }
    ~Attributes() { ::posix_spawnattr_destroy(&attributes); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    posix_spawnattr_t attributes{};
};

std::vector<std::string> commandOf(const std::filesystem::path& program,
                                   const PlaybackSource& source)
{
    const auto number = [](auto value) { return QByteArray::number(value).toStdString(); };
    constexpr int wholeDouble = 17;
    return {program.native(),
            number(::getpid()),
            number(source.stream),
            QByteArray::number(source.rate.perSecond(), 'g', wholeDouble).toStdString(),
            std::string(enumName(source.matrix)),
            source.fullRange ? "full" : "video",
            source.url.path().native()};
}

void reap(pid_t process)
{
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

std::filesystem::path DecoderProcess::program()
{
    return ResourceFolder::executableFolder() / "../libexec/vantroque/vantroque-play";
}

Result<DecoderProcess> DecoderProcess::start(const std::filesystem::path& program,
                                             const PlaybackSource& source)
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return failure(QStringLiteral("no socket can be made"));
    FileDescriptor own(ends[0]);
    const FileDescriptor low(ends[1]);
    // Above the one that it becomes, or it would be closed there on exec.
    const FileDescriptor its(::fcntl(low.get(), F_DUPFD_CLOEXEC, linkDescriptor + 1));
    if (!its.isOpen())
        return failure(QStringLiteral("no socket can be made"));

    std::vector<std::string> command = commandOf(program, source);
    std::vector<char*> pointers;
    for (std::string& argument : command)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const FileActions files(its.get());
    const Attributes attributes;
    pid_t process = -1;
    if (::posix_spawn(&process, pointers[0], &files.actions, &attributes.attributes,
                      pointers.data(), environ)
        != 0)
        return failure(QStringLiteral("the decoder cannot be started"));
    return DecoderProcess(process, std::move(own));
}

DecoderProcess::DecoderProcess(DecoderProcess&& other) noexcept
    : m_process(std::exchange(other.m_process, -1)), m_socket(std::move(other.m_socket))
{
}

DecoderProcess& DecoderProcess::operator=(DecoderProcess&& other) noexcept
{
    std::swap(m_process, other.m_process);
    std::swap(m_socket, other.m_socket);
    return *this;
}

DecoderProcess::~DecoderProcess()
{
    if (m_process < 0)
        return;
    ::kill(m_process, SIGKILL);
    // The kernel takes down what it had in memory, and a read from a slow disk is waited for.
    std::thread(reap, m_process).detach();
}

bool DecoderProcess::send(const Order& order, const FileDescriptor& along) const
{
    Order record = order;
    iovec part{&record, sizeof record};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (along.isOpen()) {
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        const int descriptor = along.get();
        std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
    }
    ssize_t bytes = 0;
    while ((bytes = ::sendmsg(socket(), &message, MSG_DONTWAIT | MSG_NOSIGNAL)) < 0
           && errno == EINTR) {
    }
    return bytes == ssize_t{sizeof record};
}

DecoderProcess::Received DecoderProcess::receive(Told& told) const
{
    ssize_t bytes = 0;
    // MSG_TRUNC tells the true size of a record that is too long.
    while ((bytes = ::recv(socket(), &told, sizeof told, MSG_DONTWAIT | MSG_TRUNC)) < 0
           && errno == EINTR) {
    }
    if (bytes < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
        return Received::nothing;
    if (bytes != ssize_t{sizeof told})
        return Received::broken;
    told.words.back() = 0;
    return Received::record;
}

} // namespace vantroque
