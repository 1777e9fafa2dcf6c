// What ffprobe prints of a file and of its frames.

#include "Fuzz/Target.h"
#include "Probe/FFProbeOutput.h"
#include "Probe/Prober.h"

using namespace vantroque;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = Fuzz::bytesOf(data, size);
    Prober::hdrMetadata(bytes);
    const auto probe = FFProbeOutput::decode(bytes);
    if (!probe)
        return 0;
    Prober::startTimecode(*probe);
    for (const auto& stream : probe->streams.value_or(std::vector<FFProbeOutput::Stream>())) {
        Prober::parseRate(stream.avg_frame_rate);
        Prober::chroma(stream.pix_fmt);
        Prober::pictureBitDepth(stream.pix_fmt);
        Prober::bitDepth(stream.codec_name.value_or(QString()), stream.bits_per_raw_sample);
        Prober::proresProfile(stream.codec_tag_string, stream.profile);
    }
    return 0;
}
