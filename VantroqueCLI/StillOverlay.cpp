#include "VantroqueCLI/StillOverlay.h"

#include "Analysis/Analyzer.h"
#include "Framing/GuideBuilder.h"
#include "Review/ReviewStore.h"
#include "VantroqueCLI/CaptionSource.h"
#include "VantroqueCLI/GuideChoice.h"
#include "VantroqueCLI/Output.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Of the frame itself and of those beside it, since a note is often made a frame off.
std::vector<AnnotationStroke> strokes(const ChosenFrame& frame)
{
    constexpr std::int64_t tolerance = 1;
    const auto fingerprint = ReviewStore::fingerprint(frame.media.url);
    const auto review = fingerprint ? ReviewStore::peek(*fingerprint) : std::nullopt;
    return review ? review->strokesAt(frame.time.frame(), tolerance)
                  : std::vector<AnnotationStroke>();
}

Result<std::vector<Guide>> guides(const GuideOptions& options, const ChosenFrame& frame)
{
    const VideoStreamInfo& video = *frame.media.video;
    std::optional<CropRect> activePicture;
    if (options.detectedPicture) {
        const auto signal = TRY(Analyzer::decode(frame.media, {}, {}, nullptr));
        if (signal.activePicture)
            activePicture = video.shown(*signal.activePicture);
        else // As of a picture that is black from end to end.
            Output::complain(frame.media.url.fileName()
                             + u": the edges of its picture could not be measured"_s);
    }
    return GuideBuilder::guides(options, FrameShape::of(video), activePicture);
}

} // namespace

Result<Overlay> stillOverlay(const Arguments& arguments, const ChosenFrame& frame)
{
    const bool isClean = arguments.has("clean");
    if (isClean && (arguments.has("guides") || arguments.has("captions")))
        return failure(u"--clean leaves out what --guides and --captions ask for"_s);
    Overlay overlay;
    if (isClean)
        return overlay;
    if (arguments.has("guides"))
        overlay.guides = TRY(guides(TRY(chooseGuides(arguments.value("guides", {}))), frame));
    if (arguments.has("captions")) {
        const auto captions = TRY(loadCaptions(FileUrl::fromPath(arguments.value("captions", {}))));
        overlay.captions =
            captions.track.autoShifted(frame.media.durationSeconds).cues(frame.time.seconds());
    }
    overlay.strokes = strokes(frame);
    return overlay;
}

} // namespace vantroque
