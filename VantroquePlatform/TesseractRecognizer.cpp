#include "VantroquePlatform/TesseractRecognizer.h"

#include "VantroquePlatform/LineSearch.h"
#include "VantroquePlatform/PictureMatrix.h"
#include "VantroquePlatform/SlatePage.h"

#include <QStringList>

#include <opencv2/imgproc.hpp>

namespace vantroque {

using namespace Qt::StringLiterals;
using Deadline = TextRecognizer::Deadline;

namespace {

NormalizedRect inFractions(const cv::Rect& box, cv::Size picture)
{
    const double width = picture.width;
    const double height = picture.height;
    return {box.x / width, box.y / height, box.width / width, box.height / height};
}

Result<std::vector<RecognizedLine>> readFrame(const cv::Mat3b& picture, const TextScale& scale,
                                              LineSearch::IsText isText, LineReader& reader,
                                              FrameMemory& memory, Deadline deadline)
{
    LineSearch search(picture, scale, isText, reader);
    std::vector<RecognizedLine> lines;
    for (const FoundLine& line : TRY(search.run(memory, deadline)))
        lines.push_back({inFractions(line.box, picture.size()), line.text});
    return lines;
}

/// A crop is small; what makes it one is known to hold text at times.
Result<std::vector<RecognizedLine>> readCrop(cv::Mat3b picture, LineReader& reader,
                                             Deadline deadline)
{
    constexpr double enough = 64;
    if (picture.rows < enough) {
        const double scale = std::min(enough / picture.rows, 4.0);
        cv::resize(picture, picture, {}, scale, scale, cv::INTER_CUBIC);
    }
    FrameMemory none;
    return readFrame(picture, TextScale::ofCrop(picture.rows), isLikelyText, reader, none,
                     deadline);
}

Result<std::vector<RecognizedLine>> readSlatePage(const cv::Mat3b& picture, LineReader& reader,
                                                  Deadline deadline)
{
    cv::Mat1b page;
    cv::cvtColor(picture, page, cv::COLOR_RGB2GRAY);
    std::vector<RecognizedLine> lines;
    for (const ReadLine& line : TRY(readSlate(page, reader, deadline))) {
        QStringList words;
        for (const ReadWord& word : line.words)
            words << word.text;
        lines.push_back({inFractions(line.box, picture.size()), words.join(u' ')});
    }
    return lines;
}

/// Nothing lower can hold letters.
bool isTooSmall(const cv::Mat3b& picture)
{
    constexpr int fewest = 8;
    return picture.rows < fewest || picture.cols < fewest;
}

} // namespace

TesseractRecognizer::TesseractRecognizer(std::unique_ptr<LineReader> reader)
    : m_reader(std::move(reader))
{
    // Each recognizer has a thread of its own; more would only take turns.
    cv::setNumThreads(1);
}

Result<std::unique_ptr<TextRecognizer>>
TesseractRecognizer::make(const std::vector<std::string>& languages)
{
    auto reader = TRY(LineReader::make(languages));
    return std::unique_ptr<TextRecognizer>(new TesseractRecognizer(std::move(reader)));
}

Result<std::vector<RecognizedLine>>
TesseractRecognizer::recognize(const QImage& image, Subject subject, Deadline deadline)
try {
    constexpr int frameRows = 960;
    constexpr int slateRows = 1920;
    const cv::Mat3b picture =
        pictureMatrix(image, subject == Subject::slate ? slateRows : frameRows);
    if (isTooSmall(picture))
        return std::vector<RecognizedLine>();
    switch (subject) {
    case Subject::frame:
        return readFrame(picture, TextScale::ofFrame(picture.rows), isText, *m_reader, m_memory,
                         deadline);
    case Subject::crop: return readCrop(picture, *m_reader, deadline);
    case Subject::slate: return readSlatePage(picture, *m_reader, deadline);
    }
    return std::vector<RecognizedLine>();
} catch (const std::exception& error) {
    // OpenCV and the engine throw, such as when memory ends.
    return failure(u"the text could not be read: %1"_s.arg(QString::fromUtf8(error.what())));
}

} // namespace vantroque
