#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <memory>
#include <vector>

namespace tesseract {
class TessBaseAPI;
}

namespace vantroque {

/// Reads the words of a window from its pixels, as a person does. Independent of the program's own
/// reading of text.
class ScreenReader {
public:
    ScreenReader();
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    struct Word {
        QString text;
        QRect place; ///< On the screen.
    };

    /// The words in that part of the screen, line after line.
    std::vector<Word> words(const QImage& screen, const QRect& part);
    /// The digits and colons in a part of the screen that holds one line of them.
    QString digits(const QImage& screen, const QRect& part);

private:
    void look(const QImage& screen, const QRect& part);

    const std::unique_ptr<tesseract::TessBaseAPI> m_engine;
};

} // namespace vantroque
