#include "Text/SlateReader.h"

#include "Base/ScratchFolder.h"
#include "Tools/FrameExporter.h"

#include <algorithm>

namespace vantroque::SlateReader {

std::optional<QStringList> readText(const FileUrl& media, double time, RecognizerPool& recognizers)
{
    constexpr int readingWidth = 1920;
    constexpr std::chrono::seconds longestReading{30};
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
    auto lines = linesIn(picture, **recognizer, TextRecognizer::Subject::slate, longestReading);
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
