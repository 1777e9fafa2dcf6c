#include "VantroquePlatform/Recognition/TesseractRecognizer.h"

#include "VantroquePlatform/Recognition/LineSearch.h"
#include "VantroquePlatform/Recognition/PictureMatrix.h"
#include "VantroquePlatform/Recognition/SlatePage.h"

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

std::vector<RecognizedLine> recognized(const std::vector<FoundLine>& found, cv::Size picture)
{
    std::vector<RecognizedLine> lines;
    for (const FoundLine& line : found)
        lines.push_back({inFractions(line.box, picture), line.text});
    return lines;
}

Result<std::vector<RecognizedLine>> readFrame(const cv::Mat3b& picture, LineReader& reader,
                                              FrameMemory& memory, Deadline deadline)
{
    LineSearch search(picture, TextScale::ofFrame(picture.rows), isText, reader);
    return recognized(TRY(search.run(memory, deadline)), picture.size());
}

/// Low crops are enlarged, since no letter of a few pixels can be read.
cv::Mat3b enlargedCrop(cv::Mat3b picture)
{
    constexpr double enough = 64;
    if (picture.rows < enough) {
        const double scale = std::min(enough / picture.rows, 4.0);
        cv::resize(picture, picture, {}, scale, scale, cv::INTER_CUBIC);
    }
    return picture;
}

/// A crop is small; what makes it one is known to hold text at times. Once its line was read in one
/// crop of a place, it is only looked for in those that follow.
Result<std::vector<RecognizedLine>> readCrop(const cv::Mat3b& crop, LineReader& reader,
                                             KnownLines& known, Deadline deadline)
{
    const cv::Mat3b picture = enlargedCrop(crop);
    const auto standing = known.standingIn(picture);
    if (!standing.empty())
        return recognized(standing, picture.size());
    LineSearch search(picture, TextScale::ofCrop(picture.rows), isLikelyText, reader);
    FrameMemory none;
    const auto read = TRY(search.run(none, deadline));
    return recognized(known.isEmpty() ? known.learn(read, picture) : known.movedIn(read),
                      picture.size());
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
    case Subject::frame: return readFrame(picture, *m_reader, m_memory, deadline);
    case Subject::crop: return readCrop(picture, *m_reader, m_known, deadline);
    case Subject::slate: return readSlatePage(picture, *m_reader, deadline);
    }
    return std::vector<RecognizedLine>();
} catch (const std::exception& error) {
    // OpenCV and the engine throw, such as when memory ends.
    return failure(u"the text could not be read: %1"_s.arg(QString::fromUtf8(error.what())));
}

void TesseractRecognizer::forget()
{
    m_memory.forget();
    m_known.forget();
}

} // namespace vantroque
