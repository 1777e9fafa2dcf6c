// vantroque-play PARENT_PID STREAM RATE MATRIX full|video PATH
//
// Decodes one file for one player. It knows neither play nor pause: it lays the frames that it is
// asked for down in memory that the window gave it. A file may be made to do harm, so this is a
// process of its own, which the window kills when it dies, hangs or lies.

#include "Cage/Cage.h"
#include "VantroquePlay/FrameServer.h"
#include "VantroquePlay/PlayCall.h"
#include "VantroquePlay/SoundServer.h"

#include <QByteArray>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

using namespace vantroque;

namespace {

/// Sees to it that no decoder outlives its window, takes the machine's memory, leaves a core or
/// touches more than its film and what the window hands to it.
bool confine(std::int64_t parent, [[maybe_unused]] const std::string& film)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    constexpr rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
#ifndef VANTROQUE_SANITIZED // Sanitizers take terabytes of address space, and look at themselves.
    Cage::close({.reads = {film}});
    constexpr rlim_t mostMemory = rlim_t{4} << 30U;
    rlimit memory{};
    ::getrlimit(RLIMIT_AS, &memory);
    memory.rlim_cur = std::min(memory.rlim_cur, mostMemory);
    ::setrlimit(RLIMIT_AS, &memory);
    ::mallopt(M_ARENA_MAX, 4); // An arena for each thread would take most of that.
#endif
    return ::getppid() == parent; // It may have died before it could be watched.
}

int countProgress(void* desk)
{
    static_cast<OrderDesk*>(desk)->step();
    return 0;
}

[[noreturn]] void fail(const OrderDesk& desk, const Error& error)
{
    PlayProtocol::Told told{.kind = PlayProtocol::Told::Kind::failed};
    const QByteArray words = error.description.toUtf8().left(qsizetype{told.words.size()} - 1);
    std::memcpy(told.words.data(), words.constData(), static_cast<std::size_t>(words.size()));
    desk.tell(told);
    ::_exit(EXIT_FAILURE);
}

[[noreturn]] void serve(const PlayCall& call, OrderDesk& desk, SoundServer& sound)
{
    auto file = MediaFile::open(call.path, {countProgress, &desk});
    if (!file)
        fail(desk, file.error());
    const int stream = file->picture(call.stream);
    PictureReader reader(*std::move(file), stream, call.rate, [&desk] { desk.step(); });
    Libav<AVFrame> first(av_frame_alloc());
    if (const auto opened = reader.open(*first); !opened)
        fail(desk, opened.error());
    sound.setPictureStart(reader.startSeconds());
    FrameServer(desk, std::move(reader), std::move(first), call.reading).run();
}

} // namespace

int main(int argc, char** argv)
{
    const auto call = PlayCall::of(argc, argv);
    if (!call || !confine(call->parent, call->path))
        return EXIT_FAILURE;
    av_log_set_level(AV_LOG_QUIET);
    OrderDesk desk(PlayProtocol::linkDescriptor);
    SoundServer sound(call->path, {countProgress, &desk});
    desk.onSound = [&](const PlayProtocol::Order& order, FileDescriptor memory) {
        sound.take(order, std::move(memory));
    };
    const std::jthread orders([&] { desk.run(); });
    serve(*call, desk, sound);
}
