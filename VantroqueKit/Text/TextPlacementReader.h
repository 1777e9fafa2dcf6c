#pragma once

#include "Progress/AnalysisProgress.h"
#include "Records/MediaInfo.h"
#include "Signal/SignalAnalyzer.h"
#include "Text/EdgesAhead.h"
#include "Text/InkExtent.h"
#include "Text/RecognizerPool.h"
#include "Text/TextSample.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

/// Text in the frames of a file, with the tools: which frames to look at, what stands in one, and
/// when exactly a text came and went.
namespace vantroque::TextPlacementReader {

/// Only so many regions, the earliest, have their edges narrowed to single frames.
constexpr std::size_t edgeRefinementLimit = 8;

/// Frames a second to look at in a file of that many seconds.
double sampleRate(double duration);
/// The frames to look at: into which folder, and how many of a file.
SignalAnalyzer::TextFrameRequest request(const MediaInfo& media,
                                         const std::filesystem::path& directory);

/// What stands in a picture, taken down to the ink. A recognizer that fails, or takes longer than
/// a frame may, finds nothing.
std::vector<TextSample::Box> detectBoxes(const QImage& picture, TextRecognizer& recognizer,
                                         TextRecognizer::Subject subject);

/// A picture file and the time of its frame.
struct Frame {
    double time = 0; ///< Seconds.
    std::filesystem::path file;
};

/// Writes the frames of a stretch of a file, in the file's time, cut to `crop` with a little around
/// it, into a new folder. None when that fails. Blocks.
std::vector<Frame> frames(const MediaInfo& media, double from, double span,
                          const NormalizedRect& crop, const std::filesystem::path& directory);

/// Moves the start and end of a region to the very frame. Its times count from the first frame,
/// which lies at `pictureStart` in the file; `interval` is the seconds between two samples.
/// `noteUnit` is called after each export and for each frame that is asked about. Blocks.
TextRegion narrowEdges(
    const TextRegion& region, const MediaInfo& media, double pictureStart, double interval,
    TextRecognizer& recognizer, const std::function<void()>& noteUnit = [] {});
/// The same for the first regions, and folds the list. `ahead`, which may be null, has ended; what
/// it knows is taken from it. Blocks; `progress` may be null.
std::vector<TextRegion> narrowEdges(std::vector<TextRegion> regions, const MediaInfo& media,
                                    double pictureStart, double interval,
                                    RecognizerPool& recognizers, AnalysisProgress* progress,
                                    const EdgesAhead* ahead = nullptr);

/// Reads the text of a file in a decode of its own. Nothing when its frames cannot be read. Blocks;
/// `progress` may be null.
std::optional<std::vector<TextRegion>> read(const MediaInfo& media, RecognizerPool& recognizers,
                                            AnalysisProgress* progress);

} // namespace vantroque::TextPlacementReader
