#include "Text/TextPlacementReader.h"

#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Text/TextFrameScan.h"
#include "Tools/FFmpegCall.h"
#include "Tools/Playlists.h"
#include "Tools/StreamSeek.h"

#include <algorithm>

namespace vantroque::TextPlacementReader {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;

namespace {

/// A frame that takes longer counts as one without text.
constexpr std::chrono::seconds longestReading{5};

bool holdsLetterOrDigit(const QString& text)
{
    for (const char32_t character : text.toUcs4())
        if (QChar::isLetterOrNumber(character))
            return true;
    return false;
}

/// ffmpeg itself takes the first picture that is no cover.
Arguments mapping(const MediaInfo& media)
{
    if (media.video->specifier() == "v:0")
        return {};
    return {"-map", "0:" + media.video->specifier()};
}

std::string fixed(double value, int decimals)
{
    return Numbers::fixed(value, decimals).toStdString();
}

Result<FFTool::ToolOutput, FFToolError> writeFrames(const fs::path& ffmpeg, const MediaInfo& media,
                                                    double start, double span,
                                                    const std::string& filters,
                                                    const fs::path& pattern)
{
    if (StreamSeek::isNeeded(media.url)) {
        return StreamSeek::run(
            ffmpeg, {.media = media.url,
                     .time = start,
                     .span = span,
                     .before = {"-y"},
                     .filters = filters,
                     .output = FFmpegCall().add(mapping(media)).forReading().files(pattern).words(),
                     .writes = {pattern.parent_path()}});
    }
    // ffmpeg turns the picture as its tag says: type that lies on its side could not be read.
    FFmpegCall call(FFmpegCall::Log::complaints);
    call.overwriting().from(start, 4).input(media.url).add(mapping(media)).lasting(span, 4);
    call.filtered(filters).forReading().files(pattern);
    return FFTool::run(ffmpeg, call.words(),
                       {.reads = {media.url.path()}, .writes = {pattern.parent_path()}});
}

} // namespace

double sampleRate(double duration)
{
    constexpr double longFile = 120;
    return Numbers::above(duration, longFile) ? 1.0 : 2.0;
}

SignalAnalyzer::TextFrameRequest request(const MediaInfo& media, const fs::path& directory)
{
    constexpr int maxWidth = 960;
    return {directory, sampleRate(media.durationSeconds), media.video->nominalFrameRate, maxWidth};
}

std::vector<TextSample::Box> detectBoxes(const QImage& picture, TextRecognizer& recognizer,
                                         TextRecognizer::Subject subject)
{
    if (picture.isNull())
        return {};
    std::vector<TextSample::Box> boxes;
    const auto lines = linesIn(picture, recognizer, subject, longestReading);
    if (!lines || lines->empty())
        return {};
    const auto pixels = InkExtent::Pixels::from(picture);
    for (const RecognizedLine& line : *lines) {
        const NormalizedRect rect = line.box.grown(0);
        if (!holdsLetterOrDigit(line.text) || rect.width <= 0 || rect.height <= 0)
            continue;
        boxes.push_back(
            {(pixels ? InkExtent::refine(rect, *pixels) : std::nullopt).value_or(rect), line.text});
    }
    return boxes;
}

std::vector<Frame> frames(const MediaInfo& media, double from, double span,
                          const NormalizedRect& crop, const fs::path& directory)
{
    constexpr double shortest = 0.0001;
    constexpr double around = 0.01;
    const auto ffmpeg = FFTool::find("ffmpeg");
    std::error_code error;
    if (span <= shortest || !ffmpeg || !fs::create_directories(directory, error))
        return {};
    const NormalizedRect part = crop.grown(around);
    // Rounded down, since ffmpeg begins with the first frame that is not before this time.
    const double start = std::floor(from * 1e4 + 1e-6) / 1e4;
    const std::string filters = "crop=iw*" + fixed(part.width, 6) + ":ih*" + fixed(part.height, 6)
                                + ":iw*" + fixed(part.x, 6) + ":ih*" + fixed(part.y, 6)
                                + ",scale='min(320,iw)':-2";
    if (!writeFrames(*ffmpeg, media, start, span, filters, directory / "%05d.png"))
        return {};
    std::vector<Frame> list;
    for (const auto& entry : fs::directory_iterator(directory, error))
        if (entry.path().extension() == ".png")
            list.push_back({0, entry.path()});
    std::ranges::sort(list, {}, &Frame::file);
    const FrameRate rate =
        FrameRate::of(media.video->nominalFrameRate).value_or(FrameRate::television());
    for (std::size_t i = 0; i < list.size(); ++i)
        list[i].time = from + rate.secondsOf(static_cast<std::int64_t>(i));
    return list;
}

std::optional<std::vector<TextRegion>> read(const MediaInfo& media, RecognizerPool& recognizers,
                                            AnalysisProgress* progress)
{
    const auto ffmpeg = FFTool::find("ffmpeg");
    const auto scratch = ScratchFolder::make();
    if (!ffmpeg || !scratch || !media.video || !Playlists::refuse(media.url))
        return std::nullopt;
    const auto wanted = request(media, scratch->path());
    TextFrameScan scan(wanted, media, recognizers, progress);
    scan.start();
    FFmpegCall call(FFmpegCall::Log::complaints);
    call.overwriting().input(media.url).add(mapping(media));
    call.filtered(wanted.selectFilter() + ",scale='min(" + Numbers::wholeText(wanted.maxWidth)
                  + ",iw)':-2");
    call.forReading().add({"-fps_mode", "passthrough"}).files(wanted.directory / "%05d.png");
    if (!FFTool::run(*ffmpeg, call.words(),
                     {.reads = {media.url.path()}, .writes = {wanted.directory}}))
        return std::nullopt;
    return scan.finish(media.signal ? media.signal->pictureStart.value_or(0) : 0);
}

} // namespace vantroque::TextPlacementReader
