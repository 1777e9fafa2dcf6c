// The log of a decode, which holds the tags of the file.

#include "Analysis/Analyzer.h"
#include "Fuzz/Target.h"
#include "Progress/AnalysisProgress.h"
#include "Signal/DecodeTrouble.h"
#include "Signal/LiveLogReader.h"
#include "Signal/LogHeaders.h"
#include "Signal/SignalLogParser.h"
#include "Tools/ToolWords.h"

using namespace vantroque;

namespace {

void readAlong(std::string_view text)
{
    AnalysisProgress progress([](const AnalysisProgress::Snapshot&) {});
    LiveLogReader reader(progress, 2);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        reader.feed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    reader.flush();
}

void readWords(std::string_view text)
{
    ToolWords::ShortageWatch whole;
    whole.feed(text);
    ToolWords::ShortageWatch pieces;
    for (std::size_t at = 0; at < text.size(); at += 7)
        pieces.feed(text.substr(at, 7));
    Fuzz::hold(whole.complaint() == pieces.complaint(),
               "where the pieces are cut makes no difference");
    whole.lastWordsOnMemory();
    const QString words = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    ToolWords::sentence(words);
    ToolWords::shown(words);
    ToolWords::lineThatMatters(words);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray bytes = Fuzz::bytesOf(data, size);
    const double duration = Fuzz::takeNumber(bytes);
    const auto text = Fuzz::textOf(bytes);
    const SignalLog log(text);
    MediaInfo media;
    media.durationSeconds = duration;
    media.video.emplace().width = 1920;
    media.video->height = 1080;
    media.video->nominalFrameRate = 25;
    media.audio.emplace().channels = 2;
    media.signal = SignalAnalyzer::parse(log, duration, media.audio);
    SignalAnalyzer::extend(*media.signal, log, media, {});
    Fuzz::holdThroughJson(*media.signal);
    Analyzer::report(media, {});
    DecodeTrouble::joined(DecodeTrouble(text, "film.mp4", 25).complaints());
    LogHeaders::without(bytes);
    readAlong(text);
    readWords(text);
    return 0;
}
