#include "Cage/Escapes.h"

#include "Base/FileDescriptor.h"

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <functional>
#include <future>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace vantroque {
namespace {

namespace fs = std::filesystem;

/// Somebody outside to whom the tool would speak.
class Listener {
public:
    /// On this machine's own address, of that type.
    explicit Listener(int type) : m_socket(::socket(AF_INET, type | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        listenAt(address);
        socklen_t length = sizeof address;
        ::getsockname(m_socket.get(), reinterpret_cast<sockaddr*>(&address), &length);
        m_place = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }
    explicit Listener(const fs::path& path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        path.native().copy(address.sun_path, sizeof address.sun_path - 1);
        listenAt(address);
    }

    /// "127.0.0.1:1234".
    const std::string& place() const { return m_place; }
    /// Whether somebody has spoken, or has come to; within that time.
    bool isSpokenTo(std::chrono::milliseconds within = {}) const
    {
        pollfd ready{m_socket.get(), POLLIN, 0};
        return ::poll(&ready, 1, static_cast<int>(within.count())) > 0;
    }
    /// The first that is said, after which the other side hears the end. Waits for it.
    std::string heard() const
    {
        if (!isSpokenTo(std::chrono::seconds(30)))
            return {};
        const FileDescriptor caller(::accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
        std::string bytes(64, '\0');
        const int from = caller.isOpen() ? caller.get() : m_socket.get();
        bytes.resize(static_cast<std::size_t>(
            std::max<ssize_t>(::recv(from, bytes.data(), bytes.size(), 0), 0)));
        return bytes;
    }
    /// Drops datagrams that nobody has heard.
    void forget() const
    {
        char byte = 0;
        while (::recv(m_socket.get(), &byte, 1, MSG_DONTWAIT) >= 0) {
        }
    }

private:
    template<typename Address>
    void listenAt(const Address& address) const
    {
        EXPECT_EQ(
            ::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::listen(m_socket.get(), 4); // Fails for datagrams, which need none.
    }

    FileDescriptor m_socket;
    std::string m_place;
};

class NetworkEscapes : public Escapes {
protected:
    /// The cage open, something is heard; closed, nothing.
    void expectUnheard(const Listener& listener,
                       const std::function<void(const char*)>& attempt) const
    {
        auto heard = std::async(std::launch::async, [&] { return listener.heard(); });
        attempt(open);
        EXPECT_NE(heard.get(), "") << "cannot be reached at all";
        listener.forget();
        for (const char* version : versions) {
            attempt(version);
            EXPECT_FALSE(listener.isSpokenTo()) << version;
        }
    }
    void expectUnheardFfmpeg(const Listener& listener, const std::string& address) const
    {
        SCOPED_TRACE(address);
        expectUnheard(listener, [&](const char* cage) {
            const auto ran = ffmpeg(
                {"-f", "lavfi", "-i", "color=s=64x64:d=0.04", "-f", "mpegts", address}, cage);
            if (cage != open) {
                EXPECT_NE(ran.status, 0) << cage;
            }
        });
    }
};

TEST_F(NetworkEscapes, NoSocketIsMade)
{
    expectStopped({"socket"});
    const Listener bus(m_folder / "bus");
    expectStopped({"speak", m_folder / "bus"});
}

TEST_F(NetworkEscapes, NoOutputLeavesTheMachine)
{
    const Listener tcp(SOCK_STREAM);
    expectUnheardFfmpeg(tcp, "tcp://" + tcp.place());
    const Listener udp(SOCK_DGRAM);
    expectUnheardFfmpeg(udp, "udp://" + udp.place());
    const Listener bus(m_folder / "bus");
    expectUnheardFfmpeg(bus, "unix:" + (m_folder / "bus").native());
}

TEST_F(NetworkEscapes, APlaylistFetchesNothing)
{
    const Listener server(SOCK_STREAM);
    m_folder.write("film.mov",
                   QByteArray::fromStdString("#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nhttp://"
                                             + server.place() + "/a.ts\n#EXT-X-ENDLIST\n"));
    expectUnheard(server, [&](const char* cage) {
        ffmpeg(
            {"-protocol_whitelist", "file,http,tcp", "-f", "hls", "-i", m_film, "-f", "null", "-"},
            cage);
    });
}

} // namespace
} // namespace vantroque
