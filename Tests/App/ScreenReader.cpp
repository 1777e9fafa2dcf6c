#include "App/ScreenReader.h"

#include <tesseract/baseapi.h>

#include <stdexcept>

extern "C" void omp_set_max_active_levels(int levels); // of Tesseract's OpenMP

namespace vantroque {

namespace {

constexpr int scale = 3; ///< Letters on a screen are smaller than print.

/// Tesseract's texts are the caller's to free.
QString taken(char* text)
{
    const std::unique_ptr<char[]> owned(text);
    return QString::fromUtf8(owned.get()).simplified();
}

} // namespace

ScreenReader::ScreenReader() : m_engine(std::make_unique<tesseract::TessBaseAPI>())
{
    omp_set_max_active_levels(0); // its threads wait for each other with all their might
    if (m_engine->Init(nullptr, "eng", tesseract::OEM_LSTM_ONLY) != 0)
        throw std::runtime_error("nobody to read the screen");
    m_engine->SetVariable("debug_file", "/dev/null");
}

ScreenReader::~ScreenReader() = default;

/// Dark on light, as in books.
void ScreenReader::look(const QImage& screen, const QRect& part)
{
    QImage page = screen.copy(part)
                      .scaled(part.size() * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_Grayscale8);
    page.invertPixels();
    m_engine->SetImage(page.constBits(), page.width(), page.height(), 1,
                       static_cast<int>(page.bytesPerLine()));
    constexpr int pointsPerInch = 300;
    m_engine->SetSourceResolution(pointsPerInch);
}

std::vector<ScreenReader::Word> ScreenReader::words(const QImage& screen, const QRect& part)
{
    m_engine->SetVariable("tessedit_char_whitelist", "");
    m_engine->SetPageSegMode(tesseract::PSM_SPARSE_TEXT);
    look(screen, part);
    std::vector<Word> words;
    if (m_engine->Recognize(nullptr) != 0)
        return words;
    const std::unique_ptr<tesseract::ResultIterator> each(m_engine->GetIterator());
    if (!each)
        return words;
    do {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        if (!each->BoundingBox(tesseract::RIL_WORD, &left, &top, &right, &bottom))
            continue;
        const QRect place(QPoint(left, top) / scale, QPoint(right, bottom) / scale);
        words.push_back({.text = taken(each->GetUTF8Text(tesseract::RIL_WORD)),
                         .place = place.translated(part.topLeft())});
    } while (each->Next(tesseract::RIL_WORD));
    return words;
}

QString ScreenReader::digits(const QImage& screen, const QRect& part)
{
    m_engine->SetVariable("tessedit_char_whitelist", "0123456789:");
    m_engine->SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    look(screen, part);
    return taken(m_engine->GetUTF8Text());
}

} // namespace vantroque
