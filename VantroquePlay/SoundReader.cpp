#include "VantroquePlay/SoundReader.h"

#include "Base/Numbers.h"

extern "C" {
#include <libavutil/channel_layout.h>
}

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr std::int64_t perSecond = SoundRing::samplesPerSecond;
/// Time stamps of many files are rounded; what is farther off is a gap or an overlap.
constexpr std::int64_t tolerance = perSecond / 20;
/// A file may state any time. No more silence than this is made at once.
constexpr std::int64_t longestGap = 10 * perSecond;

bool isMono(const AVStream& stream)
{
    return stream.codecpar->ch_layout.nb_channels == 1;
}

} // namespace

Result<SoundReader> SoundReader::open(const std::string& path, const AVIOInterruptCB& interrupt)
{
    SoundReader reader(TRY(MediaFile::open(path, interrupt)));
    TRY(reader.choose());
    return reader;
}

Result<void> SoundReader::choose()
{
    std::vector<int> streams;
    for (int i = 0; i < m_file.streams(); ++i)
        if (m_file.stream(i)->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            streams.push_back(i);
    if (streams.empty())
        return failure(QStringLiteral("there is no sound"));
    const bool isPair = streams.size() > 1 && isMono(*m_file.stream(streams[0]))
                        && isMono(*m_file.stream(streams[1]));
    streams.resize(isPair ? 2 : 1);
    m_file.readOnly(streams.front(), streams.back());
    for (const int stream : streams)
        m_tracks.push_back(TRY(trackOf(stream)));
    return {};
}

Result<SoundReader::Track> SoundReader::trackOf(int stream) const
{
    Track track{.stream = stream, .decoder = TRY(m_file.decoderOf(stream))};
    if (const int error = avcodec_open2(track.decoder.get(), track.decoder->codec, nullptr);
        error < 0)
        return tl::unexpected(libavError(error));
    return track;
}

bool SoundReader::readPacket()
{
    av_packet_unref(m_packet.get());
    return av_read_frame(m_file.get(), m_packet.get()) >= 0;
}

bool SoundReader::entersBefore(double seconds, double earlier)
{
    const Track& track = m_tracks.front();
    const double unit = av_q2d(m_file.stream(track.stream)->time_base);
    const auto at = Numbers::roundedToInt((seconds - earlier) / unit);
    if (av_seek_frame(m_file.get(), track.stream, at, AVSEEK_FLAG_BACKWARD) < 0)
        return false;
    while (readPacket())
        if (m_packet->stream_index == track.stream && m_packet->pts != AV_NOPTS_VALUE)
            return static_cast<double>(m_packet->pts) * unit <= seconds;
    return false;
}

void SoundReader::seek(double seconds)
{
    m_start = seconds;
    m_hasEnded = false;
    for (Track& track : m_tracks) {
        avcodec_flush_buffers(track.decoder.get());
        track.format = {};
        track.samples.clear();
        track.position = 0;
    }
    // Decoders need some sound before they sound right, and streams are entered too late.
    m_hasPacket = std::ranges::any_of(std::vector{0.3, 2.0, 10.0}, [&](double earlier) {
        return entersBefore(seconds, earlier);
    });
    if (!m_hasPacket)
        toStart();
}

void SoundReader::toStart()
{
    // Streams can be read from any byte on; of other files that is no place to enter.
    const bool isStream = (m_file.get()->iformat->flags & AVFMT_TS_DISCONT) != 0;
    if (isStream && av_seek_frame(m_file.get(), -1, 0, AVSEEK_FLAG_BYTE) >= 0)
        return;
    if (av_seek_frame(m_file.get(), -1, 0, AVSEEK_FLAG_BACKWARD) < 0)
        avformat_seek_file(m_file.get(), -1, INT64_MIN, 0, INT64_MAX, 0);
}

std::vector<SoundReader::Pair> SoundReader::next()
{
    constexpr std::size_t fewest = 1024;
    const auto pairsIn = [&](const Track& track) {
        return track.samples.size() / static_cast<std::size_t>(channelsOfTrack());
    };
    const auto isShort = [&](const Track& track) { return pairsIn(track) < fewest; };
    while (!m_hasEnded && std::ranges::any_of(m_tracks, isShort))
        read();
    if (m_hasEnded)
        for (Track& track : m_tracks)
            fillTo(track, track.position + static_cast<std::int64_t>(fewest));

    std::size_t count = pairsIn(m_tracks.front());
    for (const Track& track : m_tracks)
        count = std::min(count, pairsIn(track));
    std::vector<Pair> pairs(count);
    for (std::size_t i = 0; i < count; ++i)
        pairs[i] = m_tracks.size() == 2
                       ? Pair{m_tracks[0].samples[i], m_tracks[1].samples[i]}
                       : Pair{m_tracks[0].samples[2 * i], m_tracks[0].samples[2 * i + 1]};
    const auto taken = static_cast<std::ptrdiff_t>(count) * channelsOfTrack();
    for (Track& track : m_tracks)
        track.samples.erase(track.samples.begin(), track.samples.begin() + taken);
    return pairs;
}

void SoundReader::read()
{
    if (!m_hasPacket && !readPacket()) {
        m_hasEnded = true;
        for (Track& track : m_tracks)
            decode(track, nullptr);
        return;
    }
    m_hasPacket = false;
    for (Track& track : m_tracks)
        if (m_packet->stream_index == track.stream)
            decode(track, m_packet.get());
}

void SoundReader::decode(Track& track, const AVPacket* packet)
{
    if (avcodec_send_packet(track.decoder.get(), packet) < 0)
        return;
    while (avcodec_receive_frame(track.decoder.get(), m_frame.get()) >= 0)
        add(track, *m_frame);
}

void SoundReader::add(Track& track, const AVFrame& frame)
{
    if (!configure(track, frame))
        return;
    const auto channels = static_cast<std::size_t>(channelsOfTrack());
    const int room = swr_get_out_samples(track.resampler.get(), frame.nb_samples);
    std::vector<float> out(static_cast<std::size_t>(std::max(room, 0)) * channels);
    auto* to = reinterpret_cast<std::uint8_t*>(out.data());
    const int made =
        swr_convert(track.resampler.get(), &to, room,
                    const_cast<const std::uint8_t**>(frame.extended_data), frame.nb_samples);
    if (made <= 0)
        return;

    std::int64_t from = track.position;
    if (frame.best_effort_timestamp != AV_NOPTS_VALUE) {
        const double unit = av_q2d(m_file.stream(track.stream)->time_base);
        const double seconds = static_cast<double>(frame.best_effort_timestamp) * unit - m_start;
        const std::int64_t stated = Numbers::roundedToInt(seconds * perSecond);
        if (track.position == 0 || std::abs(stated - track.position) > tolerance)
            from = stated;
    }
    const bool isFar = from - track.position > longestGap;
    fillTo(track, from);
    if (isFar)
        return; // Its time has not come; a part of it is missed rather than heard too early.
    const std::int64_t late = std::clamp<std::int64_t>(track.position - from, 0, made);
    const auto first = static_cast<std::size_t>(late) * channels;
    const auto last = static_cast<std::size_t>(made) * channels;
    track.samples.insert(track.samples.end(), out.begin() + static_cast<std::ptrdiff_t>(first),
                         out.begin() + static_cast<std::ptrdiff_t>(last));
    track.position += made - late;
}

/// Silence up to that position.
void SoundReader::fillTo(Track& track, std::int64_t position) const
{
    const std::int64_t gap = std::clamp<std::int64_t>(position - track.position, 0, longestGap);
    const auto more = static_cast<std::size_t>(gap * channelsOfTrack());
    track.samples.resize(track.samples.size() + more);
    track.position += gap;
}

bool SoundReader::configure(Track& track, const AVFrame& frame) const
{
    // Channels without names, or with names of their own, are taken to be in the usual order.
    AVChannelLayout layout{};
    if (frame.ch_layout.order == AV_CHANNEL_ORDER_NATIVE)
        layout = frame.ch_layout;
    else
        av_channel_layout_default(&layout, frame.ch_layout.nb_channels);
    const Format format{layout.u.mask, frame.sample_rate, frame.format};
    if (format == track.format)
        return true;
    AVChannelLayout wanted{};
    av_channel_layout_default(&wanted, channelsOfTrack());
    SwrContext* resampler = nullptr;
    // As floats, which are not scaled down where channels are mixed into two.
    const int error = swr_alloc_set_opts2(
        &resampler, &wanted, AV_SAMPLE_FMT_FLT, SoundRing::samplesPerSecond, &layout,
        static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    track.resampler.reset(resampler);
    const bool isMade = error >= 0 && swr_init(resampler) >= 0;
    track.format = isMade ? format : Format();
    return isMade;
}

} // namespace vantroque
