// Stands in for vantroque-play, and does what the name of its file says. It is asked as that is.

#include "Playback/PictureLayout.h"
#include "Playback/PlayProtocol.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

using namespace vantroque;
using namespace PlayProtocol;

namespace {

constexpr PictureLayout layout{192, 96, 8};

void tell(const Told& told, std::size_t bytes = sizeof(Told))
{
    if (::send(linkDescriptor, &told, bytes, MSG_NOSIGNAL) < 0)
        ::_exit(EXIT_SUCCESS);
}

Told opened(int width = layout.width, int turns = 0, int flipped = 0)
{
    return {.kind = Told::Kind::opened,
            .width = width,
            .height = layout.height,
            .sampleBits = layout.sampleBits,
            .isFlipped = flipped,
            .quarterTurns = turns};
}

Told frame(const Order& want)
{
    return {.kind = Told::Kind::frame,
            .token = want.token,
            .first = want.first,
            .last = want.first,
            .width = layout.width,
            .height = layout.height,
            .sampleBits = layout.sampleBits};
}

Order next()
{
    Order order;
    // The descriptors that come along are not needed here.
    if (::recv(linkDescriptor, &order, sizeof order, 0) != ssize_t{sizeof order})
        ::_exit(EXIT_SUCCESS);
    return order;
}

/// Answers pings until the window wants something.
Order nextWant()
{
    for (std::uint64_t progress = 0;;) {
        const Order order = next();
        if (order.kind == Order::Kind::want)
            return order;
        if (order.kind == Order::Kind::ping)
            tell({.kind = Told::Kind::pong, .token = order.token, .progress = ++progress});
    }
}

/// Tells, in answer to the first want, what `change` makes of a frame.
std::function<void()> asFrame(std::function<void(Told&)> change)
{
    return [change = std::move(change)] {
        tell(opened());
        Told told = frame(nextWant());
        change(told);
        tell(told);
    };
}

/// Tells frames, and now and then what is none, by chance, until nobody listens.
void tellAnything(unsigned seed)
{
    std::mt19937_64 chance(seed);
    const auto oneOf = [&](std::uint64_t count) { return chance() % count; };
    const auto anyNumber = [&]() -> std::int64_t {
        const std::array<std::int64_t, 6> edges{-1, 0, 1, INT32_MAX, INT64_MAX, INT64_MIN};
        return oneOf(2) == 0 ? edges.at(oneOf(edges.size())) : static_cast<std::int64_t>(chance());
    };
    tell(opened());
    const Order want = nextWant();
    for (std::int64_t number = want.first;; ++number) {
        Told told = frame(want);
        told.first = told.last = number;
        told.kind = static_cast<Told::Kind>(oneOf(4) == 0 ? oneOf(8) : 2);
        told.slot = static_cast<std::uint32_t>(oneOf(8));
        if (oneOf(4) == 0)
            told.token = static_cast<std::uint64_t>(anyNumber());
        if (oneOf(4) == 0)
            told.last = anyNumber();
        if (oneOf(4) == 0)
            told.group = anyNumber();
        if (oneOf(8) == 0)
            told.width = static_cast<std::int32_t>(anyNumber());
        if (oneOf(8) == 0)
            std::ranges::fill(told.words, 'a'); // without an end
        tell(told);
    }
}

const std::map<std::string, std::function<void()>> lies{
    {"ends", [] { ::_exit(EXIT_SUCCESS); }},
    {"ends-later",
     [] {
         tell(opened());
         nextWant();
         ::_exit(EXIT_SUCCESS);
     }},
    {"crashes", [] { std::abort(); }},
    {"is-silent",
     [] {
         for (;;)
             next();
     }},
    {"hangs",
     [] {
         for (;;)
             if (const Order order = next(); order.kind == Order::Kind::ping)
                 tell({.kind = Told::Kind::pong, .token = order.token, .progress = 7});
     }},
    {"width", [] { tell(opened(1 << 20)); }},
    {"no-width", [] { tell(opened(0)); }},
    {"turns", [] { tell(opened(layout.width, 4)); }},
    {"flipped", [] { tell(opened(layout.width, 0, 2)); }},
    {"twice",
     [] {
         tell(opened());
         tell(opened());
     }},
    {"early", [] { tell(frame({.token = 0})); }},
    {"short", [] { tell(opened(), sizeof(Told) - 1); }},
    {"kind", [] { tell({.kind = static_cast<Told::Kind>(77)}); }},
    {"pong", [] { tell({.kind = Told::Kind::pong, .token = 1}); }},
    {"floods",
     [] {
         tell(opened());
         const Order want = nextWant();
         for (;;)
             tell({.kind = Told::Kind::end, .token = want.token + 1});
     }},
    {"slot", asFrame([](Told& told) { told.slot = 4'000'000'000; })},
    {"slot-of-the-window",
     [] {
         tell(opened());
         const Told told = frame(nextWant());
         tell(told);
         tell(told);
     }},
    {"size", asFrame([](Told& told) { told.width = 256; })},
    {"height", asFrame([](Told& told) { told.height = -1; })},
    {"bits", asFrame([](Told& told) { told.sampleBits = 10; })},
    {"number", asFrame([](Told& told) { told.first = told.last = -1; })},
    {"huge-number", asFrame([](Told& told) { told.first = told.last = INT64_MAX; })},
    {"range", asFrame([](Told& told) { told.last = told.first + 5; })},
    {"token", asFrame([](Told& told) { told.token += 1; })},
    {"no-token", asFrame([](Told& told) { told.token = 0; })},
    {"extended", asFrame([](Told& told) {
         told.kind = Told::Kind::extended;
         told.last = told.first + 5;
     })},
    {"end", asFrame([](Told& told) {
         told.kind = Told::Kind::end;
         told.last = INT64_MAX;
     })},
    {"failed-later", asFrame([](Told& told) { told.kind = Told::Kind::failed; })},
};

} // namespace

int main(int, char** argv)
{
    const std::string path = argv[6];
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::string anything = "anything-";
    if (name.starts_with(anything))
        tellAnything(static_cast<unsigned>(std::stoul(name.substr(anything.size()))));
    const auto lie = lies.find(name);
    if (lie == lies.end())
        return EXIT_FAILURE;
    lie->second();
    for (;;) // To be killed.
        ::pause();
}
