#pragma once

#include "Text/RecognizerPool.h"

#include <atomic>
#include <stdexcept>

/// Recognizers that answer from a function of the picture, and some that do not answer. Each is the
/// start of a pool.
namespace vantroque::FakeRecognizer {

using Subject = TextRecognizer::Subject;
using Lines = std::vector<RecognizedLine>;
using Answer =
    std::function<Result<Lines>(const QImage&, Subject, TextRecognizer::Deadline deadline)>;

class Fake : public TextRecognizer {
public:
    explicit Fake(Answer answer) : m_answer(std::move(answer)) {}

    Result<Lines> recognize(const QImage& picture, Subject subject, Deadline deadline) override
    {
        return m_answer(picture, subject, deadline);
    }
    void forget() override {}

private:
    Answer m_answer;
};

/// `answer` may be called on several threads at a time.
inline RecognizerPool::Start answering(Answer answer)
{
    return [answer = std::move(answer)]() -> Result<std::unique_ptr<TextRecognizer>> {
        return std::make_unique<Fake>(answer);
    };
}

inline RecognizerPool::Start finding(const Lines& lines)
{
    return answering([lines](const QImage&, Subject, auto) { return lines; });
}

/// Finds the lines when it may take that long, and otherwise fails as if the deadline had passed.
inline RecognizerPool::Start slow(std::chrono::milliseconds time, const Lines& lines)
{
    return answering([=](const QImage&, Subject, auto deadline) -> Result<Lines> {
        if (std::chrono::steady_clock::now() + time > deadline)
            return failure(QStringLiteral("too slow"));
        return lines;
    });
}

inline RecognizerPool::Start failing()
{
    return answering([](const QImage&, Subject, auto) -> Result<Lines> {
        return failure(QStringLiteral("the engine failed"));
    });
}

inline RecognizerPool::Start throwing()
{
    return answering([](const QImage&, Subject, auto) -> Result<Lines> {
        throw std::runtime_error("the engine threw");
    });
}

inline RecognizerPool::Start notStarting()
{
    return []() -> Result<std::unique_ptr<TextRecognizer>> {
        return failure(QStringLiteral("no language data"));
    };
}

/// Whether the middle of that part of the picture is white.
inline bool isWhiteIn(const QImage& picture, const NormalizedRect& part)
{
    constexpr int white = 200;
    return picture
               .pixelColor(static_cast<int>(part.centerX() * picture.width()),
                           static_cast<int>(part.centerY() * picture.height()))
               .lightness()
           > white;
}

/// Reads "TEXT {n}" at each of those places that is white, and text all over a crop whose middle
/// is.
inline Answer lookingAt(std::vector<NormalizedRect> places)
{
    return [places = std::move(places)](const QImage& picture, Subject subject,
                                        auto) -> Result<Lines> {
        if (subject == Subject::crop)
            return isWhiteIn(picture, {0, 0, 1, 1})
                       ? Lines{{{0.05, 0.1, 0.9, 0.8}, QStringLiteral("TEXT")}}
                       : Lines();
        Lines lines;
        for (std::size_t i = 0; i < places.size(); ++i)
            if (isWhiteIn(picture, places[i]))
                lines.push_back({places[i], QStringLiteral("TEXT %1").arg(i)});
        return lines;
    };
}

} // namespace vantroque::FakeRecognizer
