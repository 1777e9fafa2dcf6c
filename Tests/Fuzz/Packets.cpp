// ffprobe's list of packets, which arrives in pieces.

#include "Fuzz/Target.h"
#include "Probe/PacketListReader.h"

#include <tuple>
#include <vector>

using namespace vantroque;

namespace {

struct Heard {
    std::vector<std::tuple<std::optional<double>, std::optional<double>, std::optional<double>>>
        packets;
    bool isComplete = false;

    bool operator==(const Heard&) const = default;
};

Heard heard(std::string_view text, std::size_t piece)
{
    Heard heard;
    PacketListReader reader([&](const Packet& packet) {
        heard.packets.emplace_back(packet.ptsTime, packet.dtsTime, packet.size);
    });
    for (std::size_t at = 0; at < text.size(); at += piece)
        reader.feed(text.substr(at, piece));
    heard.isComplete = reader.isComplete();
    return heard;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes = Fuzz::bytesOf(data, size);
    const auto piece = static_cast<std::size_t>(Fuzz::takeNumber(bytes)) + 1;
    const auto text = Fuzz::textOf(bytes);
    Fuzz::hold(heard(text, piece) == heard(text, text.size() + 1),
               "where the pieces are cut makes no difference");
    return 0;
}
