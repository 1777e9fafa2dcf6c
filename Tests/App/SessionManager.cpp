#include "App/SessionManager.h"

#include "Tools/ProcessTable.h"

#include <array>
#include <cstdlib>
#include <mutex>
#include <poll.h>
#include <span>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>

namespace vantroque {

namespace {

/// What is known of the program.
struct Client {
    SmsConn connection = nullptr;
    int timesSaved = 0;
};

Client& of(SmPointer data)
{
    return *static_cast<Client*>(data);
}

Status take(SmsConn connection, SmPointer client, char*)
{
    std::array<char, 2> name{'1', '\0'};
    SmsRegisterClientReply(connection, name.data());
    // A program that is new to a session first saves how it can be started again.
    SmsSaveYourself(connection, SmSaveLocal, False, SmInteractStyleNone, False);
    of(client).connection = connection;
    return True;
}

Status meet(SmsConn, SmPointer client, unsigned long* mask, SmsCallbacks* calls, char**)
{
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask
            | SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask
            | SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask
            | SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
    calls->register_client = {take, client};
    calls->interact_request = {[](SmsConn connection, auto, auto) { SmsInteract(connection); },
                               client};
    calls->interact_done = {[](auto...) {}, client};
    calls->save_yourself_request = {[](auto...) {}, client};
    calls->save_yourself_phase2_request = {
        [](SmsConn connection, auto) { SmsSaveYourselfPhase2(connection); }, client};
    calls->save_yourself_done = {[](SmsConn connection, SmPointer data, Bool) {
                                     ++of(data).timesSaved;
                                     SmsSaveComplete(connection);
                                 },
                                 client};
    calls->close_connection = {[](SmsConn connection, SmPointer data, int count, char** reasons) {
                                   of(data).connection = nullptr;
                                   SmsCleanUp(connection);
                                   SmFreeReasons(count, reasons);
                               },
                               client};
    calls->set_properties = {[](auto, auto, int count, SmProp** properties) {
                                 for (SmProp* one : std::span(properties, std::size_t(count)))
                                     SmFreeProperty(one);
                                 std::free(properties);
                             },
                             client};
    calls->delete_properties = {[](auto, auto, int count, char** names) {
                                    for (char* one : std::span(names, std::size_t(count)))
                                        std::free(one);
                                    std::free(names);
                                },
                                client};
    calls->get_properties = {
        [](SmsConn connection, auto) { SmsReturnProperties(connection, 0, nullptr); }, client};
    return True;
}

Bool trust(char*)
{
    return True;
}

} // namespace

struct SessionManager::Listening {
    Listening()
    {
        std::array<char, 256> error{};
        IceSetIOErrorHandler([](IceConn) {}); // the library's own ends the test
        std::string vendor = "Vantroque";
        std::string release = "1";
        if (SmsInitialize(vendor.data(), release.data(), meet, &client, trust, error.size(),
                          error.data())
                == 0
            || IceListenForConnections(&count, &sockets, error.size(), error.data()) == 0)
            throw std::runtime_error(error.data());
        for (int i = 0; i < count; ++i)
            IceSetHostBasedAuthProc(sockets[i], trust);
        m_thread = std::jthread([this](const std::stop_token& stop) {
            while (!stop.stop_requested())
                answer();
        });
    }
    ~Listening()
    {
        m_thread.request_stop();
        m_thread.join();
        for (IceConn connection : m_connections)
            close(connection);
        IceFreeListenObjs(count, sockets);
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    int count = 0;
    IceListenObj* sockets = nullptr;
    std::mutex mutex; ///< Guards what follows, and the library.
    Client client;

private:
    /// A program waits for its session while it starts.
    void answer()
    {
        constexpr int milliseconds = 20;
        std::vector<pollfd> waiting;
        for (int i = 0; i < count; ++i)
            waiting.push_back({IceGetListenConnectionNumber(sockets[i]), POLLIN, 0});
        for (IceConn connection : m_connections)
            waiting.push_back({IceConnectionNumber(connection), POLLIN, 0});
        ::poll(waiting.data(), waiting.size(), milliseconds);
        const std::scoped_lock lock(mutex);
        for (std::size_t i = m_connections.size(); i-- > 0;)
            if (waiting[std::size_t(count) + i].revents != 0)
                hear(i);
        for (int i = 0; i < count; ++i)
            if (waiting[std::size_t(i)].revents != 0)
                accept(sockets[i]);
    }
    void accept(IceListenObj socket)
    {
        IceAcceptStatus status{};
        if (IceConn connection = IceAcceptConnection(socket, &status))
            m_connections.push_back(connection);
    }
    void hear(std::size_t index)
    {
        IceConn connection = m_connections[index];
        const auto heard = IceProcessMessages(connection, nullptr, nullptr);
        if (heard == IceProcessMessagesSuccess)
            return;
        if (heard == IceProcessMessagesIOError)
            close(connection);
        m_connections.erase(m_connections.begin() + std::ptrdiff_t(index));
    }

    /// A program that is gone may not have taken its leave.
    void close(IceConn connection)
    {
        if (client.connection != nullptr && SmsGetIceConnection(client.connection) == connection)
            SmsCleanUp(std::exchange(client.connection, nullptr));
        IceCloseConnection(connection);
    }

    std::vector<IceConn> m_connections;
    std::jthread m_thread; ///< Ends first.
};

SessionManager::SessionManager() : m_listening(std::make_unique<Listening>())
{
    char* address = IceComposeNetworkIdList(m_listening->count, m_listening->sockets);
    m_address = std::make_unique<ScopedVariable>("SESSION_MANAGER", address);
    std::free(address);
}

SessionManager::~SessionManager() = default;

bool SessionManager::soonHasProgram()
{
    return soonSaved(1);
}

bool SessionManager::askToSave()
{
    {
        const std::scoped_lock lock(m_listening->mutex);
        SmsSaveYourself(m_listening->client.connection, SmSaveBoth, True, SmInteractStyleNone,
                        False);
    }
    return soonSaved(2);
}

void SessionManager::askToEnd()
{
    const std::scoped_lock lock(m_listening->mutex);
    SmsDie(m_listening->client.connection);
}

bool SessionManager::soonSaved(int times) const
{
    return comesTrue([&] {
        const std::scoped_lock lock(m_listening->mutex);
        return m_listening->client.timesSaved == times;
    });
}

} // namespace vantroque
