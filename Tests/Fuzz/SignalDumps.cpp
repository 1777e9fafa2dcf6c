// The raw pictures and statistics that a decode writes beside its log.

#include "Fuzz/Target.h"
#include "Signal/SignalLogParser.h"

using namespace vantroque;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes = Fuzz::bytesOf(data, size);
    MediaInfo media;
    media.video.emplace().width = Fuzz::takeNumber(bytes) * 16;
    media.video->height = Fuzz::takeNumber(bytes) * 16;
    media.video->nominalFrameRate = Fuzz::takeNumber(bytes);
    media.video->bitDepth = Fuzz::takeNumber(bytes) % 17;
    media.durationSeconds = Fuzz::takeNumber(bytes);
    SignalAnalyzer::SideOutputs outputs;
    outputs.levelsRate = Fuzz::takeNumber(bytes) / 4.0;
    // One byte repeated makes whole pictures of a small input.
    const int times = Fuzz::takeNumber(bytes);
    const qsizetype cut = bytes.size() * Fuzz::takeNumber(bytes) / 256;
    outputs.levelsDump = bytes.first(cut).repeated(times * 8);
    outputs.halfStats = bytes.sliced(cut);
    outputs.quarterStats = bytes.sliced(cut / 2);
    outputs.bitsDump = bytes;
    SignalInfo info;
    const SignalLog log;
    SignalAnalyzer::extend(info, log, media, outputs);
    Fuzz::holdThroughJson(info);
    return 0;
}
