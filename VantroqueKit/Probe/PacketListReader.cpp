#include "Probe/PacketListReader.h"

#include "Base/Numbers.h"

namespace vantroque {

namespace {

constexpr bool isWhiteSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

constexpr bool isBracket(char c)
{
    return c == '{' || c == '}' || c == '[' || c == ']';
}

/// Reads the members of one JSON object whose brackets are known to match. Only the values that
/// matter are looked at; lists and objects inside, such as side data, are skipped.
class PacketText {
public:
    explicit PacketText(std::string_view object) : m_rest(object) { m_rest.remove_prefix(1); }

    /// Nothing when it is not an object.
    std::optional<Packet> packet()
    {
        if (take('}'))
            return m_packet;
        do {
            if (!readMember())
                return std::nullopt;
        } while (take(','));
        return take('}') ? std::optional(m_packet) : std::nullopt;
    }

private:
    bool readMember()
    {
        skipWhiteSpace();
        const auto name = readString();
        if (!name || !take(':'))
            return false;
        skipWhiteSpace();
        if (m_rest.front() == '{' || m_rest.front() == '[')
            return skipNested();
        const auto value = m_rest.front() == '"' ? readString() : readWord();
        if (!value)
            return false;
        if (*name == "pts_time")
            m_packet.ptsTime = Numbers::toDouble(*value);
        else if (*name == "dts_time")
            m_packet.dtsTime = Numbers::toDouble(*value);
        else if (*name == "size")
            m_packet.size = Numbers::toDouble(*value);
        return true;
    }

    // The closing bracket of the object is always there, so that `front` is safe until it is taken.

    void skipWhiteSpace()
    {
        while (isWhiteSpace(m_rest.front()))
            m_rest.remove_prefix(1);
    }

    bool take(char mark)
    {
        skipWhiteSpace();
        if (m_rest.front() != mark)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    std::string_view takeFirst(std::size_t count)
    {
        const std::string_view first = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return first;
    }

    std::optional<std::string_view> readString()
    {
        if (m_rest.front() != '"')
            return std::nullopt;
        std::size_t end = 1;
        while (m_rest[end] != '"')
            end += m_rest[end] == '\\' ? 2 : 1;
        return takeFirst(end + 1).substr(1, end - 1);
    }

    /// A number, true, false or null.
    std::optional<std::string_view> readWord()
    {
        const std::size_t end = m_rest.find_first_of(" \t\r\n,\"{}[]");
        return end == 0 ? std::nullopt : std::optional(takeFirst(end));
    }

    bool skipNested()
    {
        std::size_t depth = 0;
        do {
            const char c = m_rest.front();
            if (c == '"') {
                readString();
                continue;
            }
            if (isBracket(c))
                depth += c == '{' || c == '[' ? 1 : -1;
            m_rest.remove_prefix(1);
        } while (depth > 0);
        return true;
    }

    std::string_view m_rest;
    Packet m_packet;
};

} // namespace

void PacketListReader::feed(std::string_view bytes)
{
    while (!bytes.empty() && !m_malformed) {
        if (isInPacket()) {
            bytes.remove_prefix(takeOfPacket(bytes));
        } else {
            take(bytes.front());
            bytes.remove_prefix(1);
        }
    }
}

bool PacketListReader::isComplete() const
{
    return m_rootSeen && m_open.empty() && !m_malformed;
}

/// Up to the next bracket, which is nearly always the packet's end. Returns the number of bytes.
std::size_t PacketListReader::takeOfPacket(std::string_view bytes)
{
    std::size_t end = 0;
    char bracket = '\0';
    while (end < bytes.size() && bracket == '\0') {
        const char c = bytes[end++];
        if (m_inString)
            takeInString(c);
        else if (c == '"')
            m_inString = true;
        else if (isBracket(c))
            bracket = c;
    }
    m_packet.append(bytes.substr(0, end));
    m_malformed = m_packet.size() > maxPacketBytes;
    if (bracket != '\0')
        takeBracket(bracket);
    return end;
}

void PacketListReader::take(char c)
{
    if (m_inString) {
        takeInString(c);
        if (m_inString && level() == 1 && m_text.size() < maxPacketBytes)
            m_text += c;
        return;
    }
    if (isWhiteSpace(c))
        return;
    if (isBracket(c)) {
        takeBracket(c);
        return;
    }
    if (c == '"') {
        m_inString = true;
        m_text.clear();
    }
    // Outside the root there is nothing else, and a list of packets holds objects alone.
    const bool betweenPackets = m_inPackets && level() < packetLevel;
    m_malformed = m_open.empty() || (betweenPackets && c != ',');
}

void PacketListReader::takeInString(char c)
{
    if (m_escaped)
        m_escaped = false;
    else if (c == '\\')
        m_escaped = true;
    else
        m_inString = c != '"';
}

void PacketListReader::takeBracket(char c)
{
    if (c == '{' || c == '[')
        open(c);
    else
        close(c);
}

void PacketListReader::open(char c)
{
    if (m_open.empty()) {
        m_malformed = m_rootSeen || c != '{';
        m_rootSeen = true;
    } else if (level() == 1) {
        m_inPackets = m_text == "packets";
        m_malformed = m_inPackets && c != '[';
    }
    m_open += c;
    m_malformed = m_malformed || level() > deepest;
    if (m_inPackets && level() == packetLevel) {
        m_malformed = m_malformed || c != '{';
        m_packet = c;
    }
}

void PacketListReader::close(char c)
{
    if (m_open.empty() || m_open.back() != (c == '}' ? '{' : '[')) {
        m_malformed = true;
        return;
    }
    if (m_inPackets && level() == packetLevel)
        finishPacket();
    m_open.pop_back();
    m_inPackets = m_inPackets && level() > 1;
}

void PacketListReader::finishPacket()
{
    if (const auto packet = PacketText(m_packet).packet())
        m_onPacket(*packet);
    else
        m_malformed = true;
}

} // namespace vantroque
