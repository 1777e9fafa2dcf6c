#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantroque {

/// One packet as ffprobe lists it. Times in seconds, size in bytes.
struct Packet {
    std::optional<double> ptsTime;
    std::optional<double> dtsTime;
    std::optional<double> size;
};

/// Reads ffprobe's JSON packet list while it arrives, since that of a long film would fill the
/// memory. Never holds more than one packet.
class PacketListReader {
public:
    explicit PacketListReader(std::function<void(const Packet&)> onPacket)
        : m_onPacket(std::move(onPacket))
    {
    }

    void feed(std::string_view bytes);
    /// Whether all that came in was one whole JSON object with a list of packets or none.
    bool isComplete() const;

private:
    std::size_t takeOfPacket(std::string_view bytes);
    void take(char c);
    void takeInString(char c);
    void takeBracket(char c);
    void open(char c);
    void close(char c);
    void finishPacket();
    std::size_t level() const { return m_open.size(); }
    bool isInPacket() const { return m_inPackets && level() >= packetLevel; }

    /// The root is level 1, a list in it 2, an element of that list 3.
    static constexpr std::size_t packetLevel = 3;
    static constexpr std::size_t deepest = 512;
    /// No packet comes near; a longer one is not ffprobe's.
    static constexpr std::size_t maxPacketBytes = 65536;

    std::function<void(const Packet&)> m_onPacket;
    std::string m_packet; ///< The bytes of the packet that is being read.
    std::string m_text;   ///< The last string at the root: before a list, its key.
    std::string m_open;   ///< The brackets that wait for their partners.
    bool m_inString = false;
    bool m_escaped = false;
    bool m_inPackets = false;
    bool m_rootSeen = false;
    bool m_malformed = false;
};

} // namespace vantroque
