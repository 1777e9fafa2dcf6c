#include "Text/TextRecognizer.h"

namespace vantroque {

std::optional<std::vector<RecognizedLine>> linesIn(const QImage& picture,
                                                   TextRecognizer& recognizer,
                                                   TextRecognizer::Subject subject,
                                                   std::chrono::seconds longest)
{
    const auto deadline = std::chrono::steady_clock::now() + longest;
    try {
        auto lines = recognizer.recognize(picture, subject, deadline);
        return lines ? std::optional(*std::move(lines)) : std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace vantroque
