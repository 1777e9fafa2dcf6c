// When exactly a text came and went: a few single frames around the samples are looked at.

#include "Base/Cancellation.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Text/TextPlacement.h"
#include "Text/TextPlacementReader.h"
#include "Tools/ToolContext.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <future>
#include <thread>

namespace vantroque::TextPlacementReader {

namespace {

/// What the search for one region's edges costs at most: two exports, and on each side a binary
/// search over the frames between two samples.
int searchUnits(double interval, double frameRate)
{
    const auto frames = std::max<std::int64_t>(Numbers::roundedToInt(interval * frameRate), 1);
    // The bits of n are ceil(log2(n + 1)).
    return 2 * static_cast<int>(std::bit_width(static_cast<std::uint64_t>(frames))) + 2;
}

/// Whether text that fills a good part of the picture stands in the file's frame.
bool holdsText(const std::filesystem::path& file, TextRecognizer& recognizer)
{
    constexpr double narrowest = 0.25;
    const auto boxes = detectBoxes(QImage(QString::fromStdString(file.native())), recognizer,
                                   TextRecognizer::Subject::crop);
    return std::ranges::any_of(boxes, [](const TextSample::Box& box) {
        return !Numbers::below(box.rect.width, narrowest);
    });
}

std::vector<double> times(const std::vector<Frame>& frames)
{
    std::vector<double> list;
    for (const Frame& frame : frames)
        list.push_back(frame.time);
    return list;
}

} // namespace

TextRegion narrowEdges(const TextRegion& region, const MediaInfo& media, double pictureStart,
                       double interval, TextRecognizer& recognizer,
                       const std::function<void()>& noteUnit)
{
    recognizer.forget();
    const auto scratch = ScratchFolder::make();
    if (!scratch)
        return region;
    const double before = std::max(region.start - interval, 0.0);
    const double after = std::min(region.end + interval, media.durationSeconds);
    const auto framesFrom = [&](double from, double span, const char* folder) {
        auto list =
            frames(media, pictureStart + from, span, region.rect(), scratch->path() / folder);
        for (Frame& frame : list)
            frame.time -= pictureStart;
        noteUnit();
        return list;
    };
    auto inFront = std::async([&, context = ToolContext()] {
        const ToolContext::Scope scope(context);
        return framesFrom(before, region.start - before, "head");
    });
    const auto tail = framesFrom(region.end, after - region.end, "tail");
    auto all = inFront.get();
    const std::vector<double> head = times(all);
    // Here the text stands for sure, so that a recognizer that remembers gets to know it.
    const bool isAtEnd = !tail.empty() && holdsText(tail.front().file, recognizer);
    all.insert(all.end(), tail.begin(), tail.end());
    return TextPlacement::narrowed(region, head, times(tail), [&](double time) {
        noteUnit();
        if (!tail.empty() && time == tail.front().time)
            return isAtEnd;
        const auto frame = std::ranges::find(all, time, &Frame::time);
        return frame != all.end() && holdsText(frame->file, recognizer);
    });
}

std::vector<TextRegion> narrowEdges(std::vector<TextRegion> regions, const MediaInfo& media,
                                    double pictureStart, double interval,
                                    RecognizerPool& recognizers, AnalysisProgress* progress,
                                    const EdgesAhead* ahead)
{
    const std::size_t count = std::min(regions.size(), edgeRefinementLimit);
    if (count == 0 || media.durationSeconds <= 0 || interval <= 0 || !FFTool::find("ffmpeg"))
        return regions;
    if (progress != nullptr)
        progress->startTextEdges(static_cast<int>(count)
                                 * searchUnits(interval, media.video->nominalFrameRate));
    const auto noteUnit = [progress] {
        if (progress != nullptr)
            progress->noteTextEdgeUnit();
    };
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < count; ++i) {
        // What was found ahead holds for a picture that begins with the file.
        const auto known =
            ahead != nullptr && pictureStart == 0 ? ahead->narrowed(regions[i]) : std::nullopt;
        if (known)
            regions[i] = *known;
        else
            open.push_back(i);
    }
    std::atomic<std::size_t> next = 0;
    const auto work = [&, context = ToolContext()] {
        const ToolContext::Scope scope(context);
        const auto recognizer = recognizers.take();
        for (std::size_t i = 0;
             recognizer && !Cancellation::isRequested() && (i = next++) < open.size();)
            regions[open[i]] = narrowEdges(regions[open[i]], media, pictureStart, interval,
                                           **recognizer, noteUnit);
    };
    if (!open.empty()) {
        std::vector<std::jthread> helpers;
        const std::size_t threads =
            std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, open.size());
        for (std::size_t i = 1; i < threads; ++i)
            helpers.emplace_back(work);
        work();
    }
    if (progress != nullptr)
        progress->finishTextEdges();
    return TextPlacement::fold(regions);
}

} // namespace vantroque::TextPlacementReader
