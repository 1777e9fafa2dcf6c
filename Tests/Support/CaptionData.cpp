#include "Support/CaptionData.h"

#include <bit>
#include <cstdint>

namespace vantroque {

namespace {

/// CEA-608 bytes have odd parity in their top bit.
char withParity(int byte)
{
    const auto bits = static_cast<unsigned>(byte & 0x7F);
    return static_cast<char>(std::popcount(bits) % 2 == 0 ? bits | 0x80U : bits);
}

/// The byte pairs of one pop-on caption: load, clear, row 15, text, show. Control codes are sent
/// twice.
QByteArray captionPairs()
{
    const auto control = [](char second) { return QByteArray("\x14") + second; };
    QByteArray pairs;
    for (const char code : {'\x20', '\x2E', '\x70'})
        pairs += control(code) + control(code);
    pairs += "CAPTIONS INSIDE ";
    return pairs + control('\x2F') + control('\x2F');
}

/// The pair that the picture carries; nothing to show in between.
QByteArray pairOfPicture(int picture)
{
    static const QByteArray pairs = captionPairs();
    constexpr int pauseUntil = 25;
    const qsizetype at = 2 * (picture % pauseUntil);
    const QByteArray pair = at < pairs.size() ? pairs.mid(at, 2) : QByteArray(2, '\0');
    return {withParity(pair[0]) + QByteArray(1, withParity(pair[1]))};
}

/// "GA94", the type of caption data, and one pair for field 1.
QByteArray userData(int picture)
{
    return QByteArray("GA94\x03\xC1\xFF\xFC", 8) + pairOfPicture(picture) + '\xFF';
}

/// A supplemental message, user data registered by ITU-T T.35: the United States, ATSC.
QByteArray message(int picture)
{
    const QByteArray payload = QByteArray("\xB5\x00\x31", 3) + userData(picture);
    return QByteArray("\x04", 1) + static_cast<char>(payload.size()) + payload + '\x80';
}

const QByteArray startCode("\x00\x00\x01", 3);

class Inserter {
public:
    Inserter(CaptionedCodec codec, const std::function<bool(int)>& wanted)
        : m_codec(codec), m_wanted(wanted)
    {
    }

    QByteArray run(const QByteArray& stream)
    {
        QByteArray result;
        qsizetype start = stream.indexOf(startCode);
        while (start >= 0) {
            qsizetype next = stream.indexOf(startCode, start + 3);
            const QByteArray unit =
                stream.mid(start + 3, (next < 0 ? stream.size() : next) - start - 3);
            append(result, unit);
            start = next;
        }
        return result;
    }

private:
    void append(QByteArray& result, const QByteArray& unit)
    {
        const QByteArray captions = captionsFor(unit);
        const QByteArray whole = startCode + unit;
        // Before a coded picture; in MPEG-2 after the extension of its header.
        result += m_codec == CaptionedCodec::mpeg2 ? whole + captions : captions + whole;
    }

    QByteArray captionsFor(const QByteArray& unit)
    {
        if (!startsPicture(unit))
            return {};
        const int picture = m_picture++;
        if (!m_wanted(picture))
            return {};
        switch (m_codec) {
        case CaptionedCodec::h264: return startCode + '\x06' + message(picture);
        case CaptionedCodec::hevc: return startCode + "\x4E\x01" + message(picture);
        case CaptionedCodec::mpeg2: break;
        }
        return startCode + '\xB2' + userData(picture);
    }

    bool startsPicture(const QByteArray& unit) const
    {
        const auto byte = [&](qsizetype i) {
            return i < unit.size() ? static_cast<std::uint8_t>(unit[i]) : 0U;
        };
        const auto topBit = [&](qsizetype i) { return (byte(i) & 0x80U) != 0; };
        switch (m_codec) {
        case CaptionedCodec::h264: {
            const unsigned type = byte(0) & 0x1FU;
            return (type == 1 || type == 5) && topBit(1); // first_mb_in_slice is 0
        }
        case CaptionedCodec::hevc: {
            const unsigned type = byte(0) >> 1U;
            return type < 32 && topBit(2); // first_slice_segment_in_pic_flag
        }
        case CaptionedCodec::mpeg2: break;
        }
        return byte(0) == 0xB5 && byte(1) >> 4U == 8; // picture coding extension
    }

    CaptionedCodec m_codec;
    const std::function<bool(int)>& m_wanted;
    int m_picture = 0;
};

} // namespace

QByteArray withCaptions(const QByteArray& stream, CaptionedCodec codec,
                        const std::function<bool(int picture)>& wanted)
{
    return Inserter(codec, wanted).run(stream);
}

} // namespace vantroque
