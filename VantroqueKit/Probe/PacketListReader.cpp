#include "Probe/PacketListReader.h"

#include "Base/Numbers.h"

namespace vantroque {

namespace {

/// Walks the members of one flat JSON object.
class Members {
public:
    explicit Members(std::string_view object) : m_rest(object) { m_rest.remove_prefix(1); }

    /// Moves to the next member. False at the end, and then `isValid` tells which one it is.
    bool next()
    {
        skip(" \t\r\n,");
        if (m_rest == "}")
            return false;
        if (!readString(m_name))
            return fail();
        skip(" \t\r\n:");
        if (!m_rest.empty() && m_rest.front() == '"')
            return readString(m_value) || fail();
        const std::size_t end = m_rest.find_first_of(" \t\r\n,}");
        if (end == 0 || end == m_rest.npos || m_rest.find_first_of("{[") < end)
            return fail();
        m_value = m_rest.substr(0, end);
        m_rest.remove_prefix(end);
        return true;
    }

    bool isValid() const { return m_valid; }
    std::string_view name() const { return m_name; }
    std::string_view value() const { return m_value; }

private:
    void skip(std::string_view characters)
    {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(characters), m_rest.size()));
    }

    bool readString(std::string_view& target)
    {
        if (m_rest.empty() || m_rest.front() != '"')
            return false;
        std::size_t end = 1;
        while (end < m_rest.size() && m_rest[end] != '"')
            end += m_rest[end] == '\\' ? 2 : 1;
        if (end >= m_rest.size())
            return false;
        target = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        return true;
    }

    bool fail()
    {
        m_valid = false;
        return false;
    }

    std::string_view m_rest;
    std::string_view m_name;
    std::string_view m_value;
    bool m_valid = true;
};

} // namespace

void PacketListReader::feed(std::string_view bytes)
{
    for (const char c : bytes) {
        if (m_malformed)
            return;
        take(c);
    }
}

bool PacketListReader::isComplete() const
{
    return m_rootSeen && m_level == 0 && !m_malformed;
}

void PacketListReader::take(char c)
{
    const bool inPacket = m_inPackets && m_level >= packetLevel;
    if (inPacket) {
        m_packet += c;
        m_malformed = m_packet.size() > maxPacketBytes;
    }
    if (m_inString) {
        if (m_escaped)
            m_escaped = false;
        else if (c == '\\')
            m_escaped = true;
        else if (c == '"')
            m_inString = false;
        else if (m_level == 1 && m_text.size() < maxPacketBytes)
            m_text += c;
        if (!m_inString && m_level == 1)
            std::swap(m_key, m_text);
        return;
    }
    switch (c) {
    case '"':
        m_inString = true;
        m_text.clear();
        break;
    case '{':
    case '[': open(c); break;
    case '}':
    case ']': close(); break;
    default: break;
    }
}

void PacketListReader::open(char c)
{
    if (m_level == 0) {
        m_malformed = m_rootSeen || c != '{';
        m_rootSeen = true;
    } else if (m_level == 1) {
        m_inPackets = c == '[' && m_key == "packets";
    }
    ++m_level;
    if (m_inPackets && m_level == packetLevel) {
        m_malformed = c != '{';
        m_packet = c;
    }
}

void PacketListReader::close()
{
    if (m_inPackets && m_level == packetLevel)
        finishPacket();
    --m_level;
    m_malformed = m_malformed || m_level < 0;
    if (m_level == 1)
        m_inPackets = false;
}

void PacketListReader::finishPacket()
{
    Packet packet;
    Members members(m_packet);
    while (members.next()) {
        if (members.name() == "pts_time")
            packet.ptsTime = Numbers::toDouble(members.value());
        else if (members.name() == "dts_time")
            packet.dtsTime = Numbers::toDouble(members.value());
        else if (members.name() == "size")
            packet.size = Numbers::toDouble(members.value());
    }
    m_malformed = !members.isValid();
    if (!m_malformed)
        m_onPacket(packet);
}

} // namespace vantroque
