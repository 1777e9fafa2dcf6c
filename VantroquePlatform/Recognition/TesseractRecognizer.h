#pragma once

#include "Text/TextRecognizer.h"
#include "VantroquePlatform/Recognition/FrameMemory.h"
#include "VantroquePlatform/Recognition/KnownLine.h"
#include "VantroquePlatform/Recognition/LineReader.h"
#include "VantroquePlatform/Recognition/TextMaps.h"

#include <memory>
#include <string>
#include <vector>

namespace vantroque {

/// Finds lines of text in a picture by their shape and gives each alone to Tesseract, which is lost
/// in a whole frame of video. Takes a fifteenth of a second to start.
class TesseractRecognizer : public TextRecognizer {
public:
    /// Languages by Tesseract's codes, such as "eng". Fails when one has no data.
    static Result<std::unique_ptr<TextRecognizer>> make(const std::vector<std::string>& languages);

    Result<std::vector<RecognizedLine>> recognize(const QImage& picture, Subject subject,
                                                  Deadline deadline) override;
    void forget() override;
    /// How often the engine was asked.
    int readings() const { return m_reader->readings(); }

private:
    explicit TesseractRecognizer(std::unique_ptr<LineReader> reader);

    std::unique_ptr<LineReader> m_reader;
    FrameMemory m_memory;
    KnownLines m_known; ///< Of the crops of one place.
};

} // namespace vantroque
