#include "VantroquePlatform/Recognition/LineReader.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>

#include <algorithm>

/// OpenMP 5.0, 3.2.15, of the runtime that Tesseract is linked with. The header of another compiler
/// would lead to another runtime.
extern "C" void omp_set_max_active_levels(int levels);

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString packageOf(QString language)
{
    return u"tesseract-ocr-"_s + language.replace(u'_', u'-');
}

/// Loads the data; the languages that have none.
std::vector<std::string> load(tesseract::TessBaseAPI& engine,
                              const std::vector<std::string>& languages)
{
    std::string list;
    for (const std::string& language : languages)
        list += (list.empty() ? "" : "+") + language;
    // It loads what it can, and is content with one of several.
    std::vector<std::string> loaded;
    if (engine.Init(nullptr, list.c_str(), tesseract::OEM_LSTM_ONLY) == 0)
        engine.GetLoadedLanguagesAsVector(&loaded);
    std::vector<std::string> missing;
    std::ranges::copy_if(languages, std::back_inserter(missing), [&](const std::string& each) {
        return std::ranges::find(loaded, each) == loaded.end();
    });
    return missing;
}

cv::Rect boxOf(const tesseract::ResultIterator& place, tesseract::PageIteratorLevel level)
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    place.BoundingBox(level, &left, &top, &right, &bottom);
    return {left, top, right - left, bottom - top};
}

std::vector<ReadLine> resultsOf(tesseract::TessBaseAPI& engine)
{
    std::vector<ReadLine> lines;
    const std::unique_ptr<tesseract::ResultIterator> place(engine.GetIterator());
    if (!place || place->Empty(tesseract::RIL_WORD))
        return lines;
    do {
        if (lines.empty() || place->IsAtBeginningOf(tesseract::RIL_TEXTLINE))
            lines.push_back({{}, boxOf(*place, tesseract::RIL_TEXTLINE)});
        const std::unique_ptr<char[]> text(place->GetUTF8Text(tesseract::RIL_WORD));
        if (text)
            lines.back().words.push_back({QString::fromUtf8(text.get()).trimmed(),
                                          place->Confidence(tesseract::RIL_WORD),
                                          boxOf(*place, tesseract::RIL_WORD)});
    } while (place->Next(tesseract::RIL_WORD));
    return lines;
}

/// The engine spreads a line over threads, which costs several times what it gains. The setting
/// belongs to the calling thread.
void keepToThisThread()
{
    omp_set_max_active_levels(0);
}

} // namespace

tl::unexpected<Error> tookTooLong()
{
    return failure(u"reading the text took too long"_s);
}

LineReader::LineReader() : m_engine(std::make_unique<tesseract::TessBaseAPI>())
{
}

LineReader::~LineReader() = default;

Result<std::unique_ptr<LineReader>> LineReader::make(const std::vector<std::string>& languages)
{
    keepToThisThread();
    std::unique_ptr<LineReader> reader(new LineReader);
    // Its own words on standard error would mix with the program's output.
    reader->m_engine->SetVariable("debug_file", "/dev/null");
    setMsgSeverity(L_SEVERITY_NONE);
    const auto missing = load(*reader->m_engine, languages);
    if (!missing.empty()) {
        const QString language = QString::fromStdString(missing.front());
        return failure(u"no data for the text language \"%1\": install %2"_s.arg(
            language, packageOf(language)));
    }
    return reader;
}

Result<std::vector<ReadWord>> LineReader::readLine(const cv::Mat1b& image, Deadline deadline)
{
    m_engine->SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    m_engine->SetVariable("tessedit_do_invert", "0");
    std::vector<ReadWord> words;
    for (ReadLine& line : TRY(read(image, deadline)))
        std::ranges::move(line.words, std::back_inserter(words));
    return words;
}

Result<std::vector<ReadLine>> LineReader::readPage(const cv::Mat1b& image, Deadline deadline)
{
    m_engine->SetPageSegMode(tesseract::PSM_AUTO);
    m_engine->SetVariable("tessedit_do_invert", "1");
    return read(image, deadline);
}

Result<std::vector<ReadLine>> LineReader::read(const cv::Mat1b& image, Deadline deadline)
{
    constexpr int dotsPerInch = 300;
    const auto left =
        std::chrono::floor<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    // A limit of 0 would mean none.
    if (left.count() <= 0)
        return tookTooLong();
    keepToThisThread();
    ++m_readings;
    m_engine->SetImage(image.data, image.cols, image.rows, 1, static_cast<int>(image.step));
    m_engine->SetSourceResolution(dotsPerInch);
    tesseract::ETEXT_DESC monitor;
    monitor.set_deadline_msecs(static_cast<int>(std::min<std::int64_t>(left.count(), 3'600'000)));
    const bool isRead = m_engine->Recognize(&monitor) == 0;
    auto lines = isRead ? resultsOf(*m_engine) : std::vector<ReadLine>();
    m_engine->Clear();
    if (std::chrono::steady_clock::now() > deadline)
        return tookTooLong();
    if (!isRead)
        return failure(u"the text could not be read"_s);
    return lines;
}

} // namespace vantroque
