#include "PlantedDamage/DamagedClips.h"

#include "Support/Media.h"
#include "Support/Program.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <random>
#include <stdexcept>

namespace vantroque::DamagedClips {

using Media::operator+;

namespace {

using Arguments = std::vector<std::string>;

const Arguments inputs{"-f",
                       "lavfi",
                       "-i",
                       "testsrc2=s=320x180:r=25:d=4",
                       "-f",
                       "lavfi",
                       "-i",
                       "aevalsrc=exprs='0.3*sin(2*PI*440*t)|0.3*sin(2*PI*660*t)':s=48000:c=stereo:"
                       "d=4"};
const Arguments h264{"-c:v", "libx264",  "-preset", "veryfast", "-g",   "12",       "-bf",
                     "2",    "-pix_fmt", "yuv420p", "-b:v",     "400k", "-threads", "1"};
const Arguments aac{"-c:a", "aac"};

qsizetype share(const QByteArray& whole, int percent)
{
    return whole.size() * percent / 100;
}

/// The first packet of the picture, or of a file that has none of the sound, from there on.
PacketPlace packetFrom(const std::vector<PacketPlace>& packets, qsizetype position)
{
    const bool hasPicture = std::ranges::any_of(packets, &PacketPlace::isPicture);
    const auto found = std::ranges::find_if(packets, [&](const PacketPlace& packet) {
        return packet.isPicture == hasPicture && packet.position >= position;
    });
    if (found == packets.end())
        throw std::runtime_error("no packet there");
    return *found;
}

} // namespace

const std::vector<Clip>& clips()
{
    static const std::vector<Clip> all{
        {"mp4, index at the end", "index-at-end.mp4", h264 + aac},
        {"mp4, fast start", "fast-start.mp4", h264 + aac + Arguments{"-movflags", "+faststart"}},
        {"mp4, fragmented", "fragmented.mp4",
         h264 + aac + Arguments{"-movflags", "+frag_keyframe+empty_moov"}},
        {"mov, ProRes",
         "prores.mov",
         {"-c:v", "prores_ks", "-profile:v", "2", "-c:a", "pcm_s24le"}},
        {"mkv, H.264", "h264.mkv", h264 + aac},
        {"webm, VP9",
         "vp9.webm",
         {"-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "8", "-g", "12", "-b:v",
          "400k", "-c:a", "libopus"}},
        {"ts, H.264", "h264.ts", h264 + aac},
        {"mxf, MPEG-2",
         "mpeg2.mxf",
         {"-c:v", "mpeg2video", "-g", "12", "-bf", "2", "-b:v", "2M", "-c:a", "pcm_s16le"}},
        {"avi, MPEG-4 Visual",
         "mpeg4.avi",
         {"-c:v", "mpeg4", "-g", "12", "-b:v", "600k", "-c:a", "libmp3lame"}},
        {"flv, H.264", "h264.flv", h264 + aac},
        {"m4a, AAC", "aac.m4a", Arguments{"-map", "1:a"} + aac},
        {"wav, PCM", "pcm.wav", {"-map", "1:a", "-c:a", "pcm_s24le"}},
    };
    return all;
}

std::filesystem::path intact(const Clip& clip)
{
    return Media::make({clip.file, inputs + clip.arguments});
}

std::vector<PacketPlace> packets(const std::filesystem::path& clip)
{
    const ProgramRun run =
        runProgram({"ffprobe", "-v", "error", "-of", "compact=p=0", "-show_entries",
                    "packet=codec_type,pts_time,dts_time,pos,size", clip.native()});
    std::vector<PacketPlace> found;
    for (const QString& line : QString::fromUtf8(run.out).split(u'\n', Qt::SkipEmptyParts)) {
        PacketPlace packet;
        packet.position = -1;
        for (const QString& field : line.split(u'|')) {
            const QString value = field.section(u'=', 1);
            if (field.startsWith(u"codec_type="))
                packet.isPicture = value == u"video";
            else if (field.startsWith(u"pts_time=") || field.startsWith(u"dts_time="))
                packet.time = value == u"N/A" ? packet.time : value.toDouble();
            else if (field.startsWith(u"pos="))
                packet.position = value == u"N/A" ? -1 : value.toLongLong();
            else if (field.startsWith(u"size="))
                packet.size = value.toLongLong();
        }
        if (packet.position >= 0)
            found.push_back(packet);
    }
    if (run.status != 0 || found.empty())
        throw std::runtime_error("no packets in " + clip.native() + ": " + run.err.toStdString());
    std::ranges::stable_sort(found, {}, &PacketPlace::position);
    return found;
}

std::vector<Planted> faults(const QByteArray& whole, const std::vector<PacketPlace>& packets)
{
    using enum Fault::Kind;
    constexpr qsizetype noiseBytes = 1000;
    constexpr qsizetype indexBytes = 500; // too few for a packet, enough to break any index
    constexpr qsizetype transportPacket = 188;
    const auto cut = [&](qsizetype from) { return Fault{removed, from, whole.size() - from}; };
    const PacketPlace frame = packetFrom(packets, share(whole, 60));
    const PacketPlace noisy = packetFrom(packets, share(whole, 50));
    const PacketPlace lost = packetFrom(packets, share(whole, 45));
    return {{"cut at 90 %", cut(share(whole, 90))},
            {"cut at 55 %", cut(share(whole, 55))},
            {"cut at 10 %", cut(share(whole, 10))},
            {"a frame zeroed", {zeroed, frame.position, frame.size}},
            {"30 % zeroed", {zeroed, share(whole, 40), share(whole, 30)}},
            {"1,000 bytes of noise", {noise, noisy.position, noiseBytes}},
            {"packets lost",
             {removed, lost.position, share(whole, 5) / transportPacket * transportPacket}},
            {"tail lost", cut(whole.size() - indexBytes)}};
}

QByteArray damaged(QByteArray whole, const Fault& fault)
{
    using enum Fault::Kind;
    switch (fault.kind) {
    case removed: whole.remove(fault.start, fault.length); break;
    case zeroed: std::fill_n(whole.begin() + fault.start, fault.length, '\0'); break;
    case noise: {
        std::mt19937 chance(1); // NOLINT: the same noise each time
        std::generate_n(whole.begin() + fault.start,
                        std::min(fault.length, whole.size() - fault.start),
                        [&] { return static_cast<char>(chance() & 0xffU); });
        break;
    }
    }
    return whole;
}

std::optional<double> firstTouched(const std::vector<PacketPlace>& packets, const Fault& fault)
{
    std::optional<double> touched;
    std::optional<double> first;
    const bool hasPicture = std::ranges::any_of(packets, &PacketPlace::isPicture);
    for (const PacketPlace& packet : packets) {
        if (packet.isPicture == hasPicture)
            first = std::min(first.value_or(packet.time), packet.time);
        if (packet.position < fault.start + fault.length
            && packet.position + packet.size > fault.start)
            touched = std::min(touched.value_or(packet.time), packet.time);
    }
    return touched ? std::optional(*touched - first.value_or(0)) : std::nullopt;
}

} // namespace vantroque::DamagedClips
