#include "Support/FieldPictures.h"

#include "Support/Media.h"
#include "Support/TestFolder.h"

#include <initializer_list>

namespace vantroque::FieldPictures {

namespace {

constexpr int group = 12;           // frames
constexpr int fieldMacroblocks = 8; // 64x32

/// Bits in the notation of ITU-T H.264, 7.2.
class Bits {
public:
    Bits& u(int count, unsigned value)
    {
        for (int bit = count - 1; bit >= 0; --bit)
            put((value >> static_cast<unsigned>(bit)) & 1U);
        return *this;
    }
    Bits& golomb(unsigned value)
    {
        int length = 0;
        while (((value + 1) >> static_cast<unsigned>(length)) > 1)
            ++length;
        return u(length, 0).u(length + 1, value + 1);
    }
    Bits& flags(std::initializer_list<unsigned> values)
    {
        for (const unsigned value : values)
            u(1, value);
        return *this;
    }
    Bits& aligned()
    {
        while (m_bits % 8 != 0)
            put(0);
        return *this;
    }
    QByteArray trailed() { return u(1, 1).aligned().m_bytes; }

private:
    void put(unsigned bit)
    {
        if (m_bits++ % 8 == 0)
            m_bytes.append('\0');
        if (bit != 0)
            m_bytes.back() = static_cast<char>(m_bytes.back() | (0x80 >> ((m_bits - 1) % 8)));
    }

    QByteArray m_bytes;
    int m_bits = 0;
};

QByteArray unit(char header, const QByteArray& payload)
{
    QByteArray out = QByteArrayLiteral("\0\0\0\1") + header;
    int zeros = 0;
    for (const char byte : payload) {
        if (zeros >= 2 && static_cast<unsigned char>(byte) <= 3) {
            out.append('\3');
            zeros = 0;
        }
        out.append(byte);
        zeros = byte == 0 ? zeros + 1 : 0;
    }
    return out;
}

/// Main profile, 64x64 in fields, 50 fields a second.
QByteArray parameterSets()
{
    Bits sequence;
    sequence.u(8, 77)
        .u(8, 0)
        .u(8, 21)
        .golomb(0)
        .golomb(4)
        .golomb(0)
        .golomb(4)
        .golomb(2)
        .u(1, 0)
        .golomb(3)
        .golomb(1);
    sequence.flags({0, 0, 1, 0, 1, 0, 0, 0, 0, 1}).u(32, 1).u(32, 50).flags({1, 0, 0, 0, 0});
    Bits picture;
    picture.golomb(0)
        .golomb(0)
        .flags({0, 1})
        .golomb(0)
        .golomb(0)
        .golomb(0)
        .flags({0, 0, 0})
        .golomb(0)
        .golomb(0)
        .golomb(0);
    picture.flags({1, 0, 0});
    return unit(0x67, sequence.trailed()) + unit(0x68, picture.trailed());
}

enum class Structure { frame, top, bottom };

/// A picture of uncompressed macroblocks, or one that repeats the field before it.
QByteArray slice(int frame, Structure structure, bool repeats)
{
    const bool isField = structure != Structure::frame;
    const bool isBottom = structure == Structure::bottom;
    const auto number = static_cast<unsigned>(frame % group);
    const bool isFirst = number == 0 && !isBottom;
    Bits bits;
    bits.golomb(0).golomb(repeats ? 5 : 7).golomb(0).u(8, number).u(1, isField ? 1 : 0);
    if (isField)
        bits.u(1, isBottom ? 1 : 0);
    if (isFirst)
        bits.golomb(0);
    bits.u(8, 2 * number + (isBottom ? 1 : 0));
    if (!isField)
        bits.golomb(1); // the bottom field is shown one later
    if (repeats)
        bits.flags({0, 0});
    bits.u(isFirst ? 2 : 1, 0).golomb(0).golomb(1);
    const int macroblocks = isField ? fieldMacroblocks : 2 * fieldMacroblocks;
    if (repeats)
        bits.golomb(static_cast<unsigned>(macroblocks));
    for (int i = 0; i < macroblocks && !repeats; ++i) {
        bits.golomb(25).aligned(); // I_PCM: 256 samples of luma, 128 of chroma
        for (int sample = 0; sample < 256; ++sample)
            bits.u(8, static_cast<unsigned>(40 + frame * 7 % 100 + 8 * (i % 8) + sample % 16));
        for (int sample = 0; sample < 128; ++sample)
            bits.u(8, 128);
    }
    return unit(isFirst ? 0x65 : 0x61, bits.trailed());
}

} // namespace

QByteArray h264(int frames, bool isMixed)
{
    const QByteArray delimiter = unit(0x09, "\xf0");
    QByteArray stream;
    for (int frame = 0; frame < frames; ++frame) {
        stream += delimiter + (frame % group == 0 ? parameterSets() : QByteArray());
        if (isMixed && frame % 3 == 1) {
            stream += slice(frame, Structure::frame, false);
            continue;
        }
        stream += slice(frame, Structure::top, false);
        stream += delimiter + slice(frame, Structure::bottom, frame % 2 == 1);
    }
    return stream;
}

std::filesystem::path clip(const std::string& name, int frames, bool isMixed)
{
    const std::vector<std::string> key{"field pictures", QByteArray::number(frames).toStdString(),
                                       isMixed ? "mixed" : "all"};
    return Media::make(name, key, [&](const std::filesystem::path& target) {
        const TestFolder folder;
        const auto stream = folder.write("fields.h264", h264(frames, isMixed));
        // Elementary streams have no times of their own; only a transport stream may lack some.
        const auto timed = folder.path() / "fields.ts";
        Media::ffmpeg({"-i", stream.native(), "-c", "copy", timed.native()});
        Media::ffmpeg({"-i", timed.native(), "-c", "copy", target.native()});
    });
}

} // namespace vantroque::FieldPictures
