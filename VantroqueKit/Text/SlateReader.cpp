#include "Text/SlateReader.h"

#include "Base/ScratchFolder.h"
#include "Tools/FrameExporter.h"

#include <algorithm>

namespace vantroque::SlateReader {

namespace {

/// What stands in a slate; nothing when the recognizer fails in whatever way.
std::optional<std::vector<RecognizedLine>> linesIn(const QImage& picture,
                                                   TextRecognizer& recognizer)
{
    constexpr std::chrono::seconds longestReading{30};
    const auto deadline = std::chrono::steady_clock::now() + longestReading;
    try {
        auto lines = recognizer.recognize(picture, TextRecognizer::Subject::slate, deadline);
        return lines ? std::optional(*std::move(lines)) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace

std::optional<QStringList> readText(const FileUrl& media, double time, RecognizerPool& recognizers)
{
    constexpr int readingWidth = 1920;
    const auto scratch = ScratchFolder::make();
    if (!scratch)
        return std::nullopt;
    const auto file = scratch->path() / "slate.png";
    if (!FrameExporter::writeFrame(media, time, file, readingWidth))
        return std::nullopt;
    const auto recognizer = recognizers.take();
    const QImage picture(QString::fromStdString(file.native()));
    if (!recognizer || picture.isNull())
        return std::nullopt;
    auto lines = linesIn(picture, **recognizer);
    if (!lines)
        return std::nullopt;
    std::ranges::stable_sort(*lines, {},
                             [](const RecognizedLine& line) { return line.box.centerY(); });
    QStringList texts;
    for (const RecognizedLine& line : *lines)
        texts << line.text;
    return texts;
}

} // namespace vantroque::SlateReader
