#pragma once

#include "Text/TextRecognizer.h"

#include <opencv2/core.hpp>

#include <memory>
#include <string>
#include <vector>

namespace tesseract {
class TessBaseAPI;
}

namespace vantroque {

/// A word as the engine reads it.
struct ReadWord {
    QString text;
    double confidence = 0; ///< 0 to 100.
    cv::Rect box;          ///< In the image that was read.
};

/// A line of a page.
struct ReadLine {
    std::vector<ReadWord> words;
    cv::Rect box;
};

/// The deadline came first.
tl::unexpected<Error> tookTooLong();

/// Tesseract, for images of single lines and for still pages. One thread at a time.
class LineReader {
public:
    using Deadline = TextRecognizer::Deadline;

    /// Fails in words for the operator when a language has no data.
    static Result<std::unique_ptr<LineReader>> make(const std::vector<std::string>& languages);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// The words of an image of one line, dark on white.
    Result<std::vector<ReadWord>> readLine(const cv::Mat1b& image, Deadline deadline);
    /// The lines of a still page, in the engine's order.
    Result<std::vector<ReadLine>> readPage(const cv::Mat1b& image, Deadline deadline);
    /// How often an image was read.
    int readings() const { return m_readings; }

private:
    LineReader();
    Result<std::vector<ReadLine>> read(const cv::Mat1b& image, Deadline deadline);

    std::unique_ptr<tesseract::TessBaseAPI> m_engine;
    int m_readings = 0;
};

} // namespace vantroque
