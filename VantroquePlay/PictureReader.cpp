#include "VantroquePlay/PictureReader.h"

#include "Base/Numbers.h"

extern "C" {
#include <libavutil/display.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <thread>

namespace vantroque {

namespace {

/// Beyond any time or number of a film, and not at the ends of 64 bits.
std::int64_t wholeOf(double value)
{
    constexpr double most = 4e18;
    return Numbers::roundedToInt(std::clamp(value, -most, most));
}

/// A broken file may complain about every packet, and at its end without an end.
constexpr int mostTroubles = 1000;

int threads()
{
    // More of them share a loaded machine better; each takes address space.
    constexpr unsigned most = 16;
    return static_cast<int>(std::min(std::thread::hardware_concurrency() + 2, most));
}

} // namespace

PictureReader::PictureReader(MediaFile file, int stream, FrameRate rate,
                             std::function<void()> progress)
    : m_file(std::move(file)), m_index(stream), m_rate(rate), m_progress(std::move(progress))
{
}

Result<void> PictureReader::open(AVFrame& first)
{
    m_decoder = TRY(m_file.decoderOf(m_index));
    m_stream = m_file.stream(m_index);
    m_file.readOnly(m_index);
    m_decoder->thread_count = threads();
    // Threads that each decode a frame run ahead, in vain where single frames are wanted.
    const bool hasSlices = (m_decoder->codec->capabilities & AV_CODEC_CAP_SLICE_THREADS) != 0;
    m_decoder->thread_type =
        hasOnlyKeys() && hasSlices ? FF_THREAD_SLICE : FF_THREAD_FRAME | FF_THREAD_SLICE;
    if (const int error = avcodec_open2(m_decoder.get(), m_decoder->codec, nullptr); error < 0)
        return tl::unexpected(libavError(error));

    m_firstTime = m_entryTime = INT64_MIN;
    if (next(first, INT64_MIN, Decode::all, [] { return false; }) != Step::picture)
        return failure(QStringLiteral("no picture can be decoded"));
    m_firstTime = first.pts;
    readIndex();
    return {};
}

// A file may state any time: these never overflow.

std::int64_t PictureReader::numberAt(std::int64_t time) const
{
    const double since = static_cast<double>(time) - static_cast<double>(m_firstTime);
    return wholeOf(since * av_q2d(m_stream->time_base) * m_rate.perSecond());
}

std::int64_t PictureReader::timeOf(std::int64_t number) const
{
    // A time between two frames, late enough to hold all that is rounded to the number.
    const double seconds = (static_cast<double>(number) + 0.4) / m_rate.perSecond();
    return later(m_firstTime, seconds);
}

std::int64_t PictureReader::later(std::int64_t time, double seconds) const
{
    return wholeOf(static_cast<double>(time) + seconds / av_q2d(m_stream->time_base));
}

std::int64_t PictureReader::numberOf(const AVFrame& picture) const
{
    return numberAt(picture.pts);
}

std::int64_t PictureReader::lengthOf(const AVFrame& picture) const
{
    constexpr std::int64_t most = 1'000'000;
    const double seconds = static_cast<double>(picture.pkt_duration) * av_q2d(m_stream->time_base);
    return std::clamp<std::int64_t>(Numbers::roundedToInt(seconds * m_rate.perSecond()), 1, most);
}

bool PictureReader::readPacket()
{
    int troubles = 0;
    for (;;) {
        av_packet_unref(m_packet.get());
        m_progress();
        const int error = av_read_frame(m_file.get(), m_packet.get());
        if (error == AVERROR(EAGAIN) && ++troubles < mostTroubles)
            continue;
        if (error < 0)
            return false;
        if (m_packet->stream_index == m_index)
            return true;
    }
}

/// Enters the file at a time and reads on to a key frame, which must be shown by `time`.
bool PictureReader::findKey(std::int64_t time, std::int64_t enteredAt)
{
    if (av_seek_frame(m_file.get(), m_index, enteredAt, AVSEEK_FLAG_BACKWARD) < 0)
        return false;
    while (readPacket())
        if ((m_packet->flags & AV_PKT_FLAG_KEY) != 0 && m_packet->pts != AV_NOPTS_VALUE)
            return m_packet->pts <= time;
    return false;
}

bool PictureReader::isStream() const
{
    return (m_file.get()->iformat->flags & AVFMT_TS_DISCONT) != 0;
}

void PictureReader::toStart()
{
    m_entryTime = INT64_MIN;
    // Clocks of streams may jump, but their first byte stays the first.
    if (isStream() && av_seek_frame(m_file.get(), m_index, 0, AVSEEK_FLAG_BYTE) >= 0)
        return;
    std::int64_t start = m_stream->start_time == AV_NOPTS_VALUE ? 0 : m_stream->start_time;
    if (const AVIndexEntry* const entry = avformat_index_get_entry(m_stream, 0))
        start = std::min(start, entry->timestamp);
    if (av_seek_frame(m_file.get(), m_index, start, AVSEEK_FLAG_BACKWARD) < 0)
        avformat_seek_file(m_file.get(), m_index, INT64_MIN, start, INT64_MAX, 0);
}

void PictureReader::seek(std::int64_t number)
{
    avcodec_flush_buffers(m_decoder.get());
    m_isDraining = m_hasPacket = false;
    m_troubles = 0;
    m_lastKey = -1;
    m_lastTime.reset();
    const std::int64_t time = timeOf(number);
    // Files without an index are entered at any packet, and the next key frame lies up to one group
    // of pictures after that.
    const double group = static_cast<double>(m_longestGroup) / m_rate.perSecond();
    for (const double seconds : {isStream() ? group : 0, group + 1, group + 3, group + 10})
        if (number > 0 && findKey(time, later(time, -seconds))) {
            m_hasPacket = true;
            m_entryTime = m_packet->pts;
            m_entry = std::max<std::int64_t>(numberAt(m_entryTime), 0);
            return;
        }
    toStart();
    m_entry = 0;
}

bool PictureReader::send(std::int64_t from, Decode decode)
{
    if (!m_hasPacket && !readPacket()) {
        m_isDraining = true;
        return avcodec_send_packet(m_decoder.get(), nullptr) >= 0;
    }
    m_hasPacket = false;
    const bool hasTime = m_packet->pts != AV_NOPTS_VALUE;
    const std::int64_t number =
        hasTime && m_firstTime != INT64_MIN ? numberAt(m_packet->pts) : INT64_MAX;
    if (hasTime && (m_packet->flags & AV_PKT_FLAG_KEY) != 0 && m_firstTime != INT64_MIN) {
        if (m_lastKey >= 0)
            m_longestGroup = std::max(m_longestGroup, number - m_lastKey);
        m_lastKey = number;
    }
    if (decode == Decode::keys)
        m_decoder->skip_frame = AVDISCARD_NONKEY;
    else
        m_decoder->skip_frame =
            number < from || decode == Decode::references ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
    return avcodec_send_packet(m_decoder.get(), m_packet.get()) >= 0;
}

bool PictureReader::takeTime(AVFrame& picture)
{
    std::int64_t time = picture.best_effort_timestamp;
    // Programme streams state the time of some pictures only.
    if (time == AV_NOPTS_VALUE && m_lastTime)
        time = later(*m_lastTime, 1 / m_rate.perSecond());
    if (time == AV_NOPTS_VALUE)
        return false;
    picture.pts = time;
    m_lastTime = time;
    // Before the key frame at which decoding began come pictures whose references are missing.
    return time >= m_entryTime && time >= m_firstTime;
}

PictureReader::Step PictureReader::next(AVFrame& picture, std::int64_t from, Decode decode,
                                        const std::function<bool()>& isInterrupted)
{
    for (;;) {
        const int got = avcodec_receive_frame(m_decoder.get(), &picture);
        if (got >= 0) {
            m_progress();
            m_troubles = 0;
            if (takeTime(picture))
                return Step::picture;
            continue;
        }
        if (got == AVERROR_EOF || (got != AVERROR(EAGAIN) && ++m_troubles > mostTroubles))
            return Step::end;
        if (got != AVERROR(EAGAIN))
            continue;
        if (m_isDraining)
            return Step::end;
        if (isInterrupted())
            return Step::interrupted;
        if (!send(from, decode) && ++m_troubles > mostTroubles)
            return Step::end;
    }
}

PictureReader::Step PictureReader::glimpse(AVFrame& picture)
{
    if (!m_hasPacket)
        return Step::end;
    send(INT64_MIN, Decode::all);
    avcodec_send_packet(m_decoder.get(), nullptr);
    m_isDraining = true;
    return next(picture, INT64_MIN, Decode::all, [] { return false; });
}

std::optional<std::int64_t> PictureReader::keyBefore(std::int64_t number) const
{
    const int entry = av_index_search_timestamp(m_stream, timeOf(number), AVSEEK_FLAG_BACKWARD);
    const AVIndexEntry* const found = avformat_index_get_entry(m_stream, entry);
    if (found == nullptr)
        return std::nullopt;
    return numberAt(found->timestamp);
}

void PictureReader::readIndex()
{
    // An index that grows while a file is read says nothing about the rest.
    constexpr int fewest = 2;
    std::optional<std::int64_t> last;
    const int entries = avformat_index_get_entries_count(m_stream);
    for (int i = 0; i < entries && entries >= fewest; ++i) {
        const AVIndexEntry* const entry = avformat_index_get_entry(m_stream, i);
        if ((entry->flags & AVINDEX_KEYFRAME) == 0)
            continue;
        const std::int64_t number = numberAt(entry->timestamp);
        if (last)
            m_longestGroup = std::max(m_longestGroup, number - *last);
        last = number;
    }
    const double seconds = static_cast<double>(m_stream->duration) * av_q2d(m_stream->time_base);
    if (last && seconds > 0)
        m_longestGroup = std::max(m_longestGroup, numberAt(later(m_firstTime, seconds)) - *last);
}

Orientation PictureReader::orientation() const
{
    std::array<std::int32_t, 9> matrix{};
    std::size_t bytes = 0;
    const std::uint8_t* const data =
        av_stream_get_side_data(m_stream, AV_PKT_DATA_DISPLAYMATRIX, &bytes);
    if (data == nullptr || bytes < sizeof matrix)
        return {};
    std::memcpy(matrix.data(), data, sizeof matrix);
    const double degrees = av_display_rotation_get(matrix.data()); // Counterclockwise.
    if (!std::isfinite(degrees))
        return {};
    const std::int64_t turns = Numbers::roundedToInt(-degrees / 90);
    // A mirror turns the way from the right to what is below around.
    const auto product = [&](std::size_t i, std::size_t j) {
        return static_cast<double>(matrix[i]) * matrix[j];
    };
    return {.isFlipped = product(0, 4) < product(1, 3),
            .quarterTurns = static_cast<int>((turns % 4 + 4) % 4)};
}

bool PictureReader::hasOnlyKeys() const
{
    const AVCodecDescriptor* const codec = avcodec_descriptor_get(m_stream->codecpar->codec_id);
    return codec != nullptr && (codec->props & AV_CODEC_PROP_INTRA_ONLY) != 0;
}

} // namespace vantroque
