#include "Base/Files.h"
#include "Draw/FramePainter.h"
#include "Framing/FrameShape.h"
#include "Picture/ScopeRenderer.h"
#include "Tools/FrameExporter.h"
#include "VantroqueCLI/ChosenFrame.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array names{"waveform.png", "parade.png", "vectorscope.png", "out-of-range.png"};

/// The samples of a frame, scaled to that size; ffmpeg brings them to video range, whatever the
/// file is tagged.
Result<ScopeFrame> samples(const ChosenFrame& frame, int width, int height)
{
    const QByteArray bytes =
        TRY(FrameExporter::rawFrame(frame.media.url, frame.seconds, width, height));
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const auto read = ScopeFrame::fromYuv444(view, width, height, false,
                                             frame.media.video->measuredMatrix().matrix);
    if (!read)
        return failure(u"ffmpeg gave half a frame"_s);
    return *read;
}

/// In the order of `names`. Scopes are drawn of a small frame, marks over every pixel.
Result<std::vector<QImage>> pictures(const ChosenFrame& frame)
{
    constexpr int width = 320;
    const VideoStreamInfo& video = *frame.media.video;
    const FrameShape shape = FrameShape::of(video);
    if (shape.isEmpty())
        return failure(u"there is no picture in it"_s);
    const auto proportional = std::int64_t{width} * shape.height / shape.width / 2 * 2;
    const int height = static_cast<int>(std::clamp<std::int64_t>(proportional, 2, 4096));
    const ScopeFrame small = TRY(samples(frame, width, height));
    const ScopeFrame whole = TRY(samples(frame, shape.width, shape.height));
    Overlay hatch;
    hatch.outOfRange = ScopeRenderer::outOfRangeImage(whole);
    return std::vector<QImage>{ScopeRenderer::waveform(small, 256, 128),
                               ScopeRenderer::parade(small, 384, 128),
                               ScopeRenderer::vectorscope(small, 128),
                               FramePainter::burnIn(ScopeRenderer::picture(whole), hatch,
                                                    {shape.squareWidth(), shape.height})};
}

Result<void> writeScopes(const Arguments& arguments)
{
    if (!arguments.has("output"))
        return failure(u"scopes takes -o DIR for its pictures"_s);
    const auto frame = TRY(ChosenFrame::of(arguments, u"scopes"_s));
    TRY(Files::makeFolder(arguments.value("output", {})));
    // All of them may be written, or none is begun.
    std::vector<OutputTarget> targets;
    for (const char* name : names)
        targets.push_back(TRY(OutputTarget::inFolder(arguments, arguments.files(), name)));
    const auto images = TRY(pictures(frame));
    for (std::size_t i = 0; i < images.size(); ++i) {
        const QByteArray data = ScopeRenderer::pngData(images[i]);
        if (data.isEmpty())
            return failure(u"this frame is too large to be drawn on"_s);
        TRY(targets[i].write(data));
    }
    return {};
}

} // namespace

ExitStatus scopes(const Arguments& arguments)
{
    const auto written = writeScopes(arguments);
    if (written)
        return ExitStatus::passed;
    Output::complain(written.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque
