#include "VantroquePlatform/Recognition/LineSearch.h"

#include "VantroquePlatform/Recognition/LineExtension.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace vantroque {

namespace {

constexpr int usualHeight = 40; // of the image of a line

double overlap(const cv::Rect& a, const cv::Rect& b)
{
    return (a & b).area() / std::max(1.0, static_cast<double>(std::min(a.area(), b.area())));
}

bool areOfOnePlace(const FoundLine& a, const FoundLine& b)
{
    return overlap(a.box, b.box) > 0.3;
}

/// Whether a candidate goes on to the left or right of a line that was read.
bool goesBeyond(const LineCandidate& candidate, const FoundLine& line)
{
    const double slack = candidate.letterHeight;
    return candidate.box.x < line.box.x - slack || candidate.box.br().x > line.box.br().x + slack;
}

std::vector<Glyph> glyphsBetween(const std::vector<Glyph>& glyphs, double lowest, double highest)
{
    std::vector<Glyph> some;
    std::ranges::copy_if(glyphs, std::back_inserter(some), [&](const Glyph& glyph) {
        return glyph.box.height >= lowest && glyph.box.height <= highest;
    });
    return some;
}

/// The letters' box, without what the scene makes single ones stand out by: of ten, one.
cv::Rect boxAround(const std::vector<cv::Rect>& letters, double letterHeight)
{
    std::vector<int> tops;
    std::vector<int> bottoms;
    cv::Rect box = letters.front();
    for (const cv::Rect& letter : letters) {
        box |= letter;
        tops.push_back(letter.y);
        bottoms.push_back(letter.br().y);
    }
    std::ranges::sort(tops);
    std::ranges::sort(bottoms, std::greater());
    const std::size_t few = letters.size() / 10;
    const auto slack = few > 0 ? static_cast<int>(0.35 * letterHeight) : 0;
    const int top = std::max(box.y, tops[few] - slack);
    const int bottom = std::min(box.br().y, bottoms[few] + slack);
    return {box.x, top, box.width, bottom - top};
}

double sureness(const TextReading& reading)
{
    return reading.letters * reading.confidence;
}

/// Letters that are not sure count as well, but less.
double worth(const FoundLine& line)
{
    return line.letters * (100 + line.confidence);
}

/// Whether next to nothing was read in what hardly looks like text. A long line can be text though
/// hardly a word of it is sure.
bool isHopeless(const TextReading& reading, const LineCandidate& candidate)
{
    constexpr double hopeless = 40;
    constexpr double promising = 300;
    const bool saysNothing =
        reading.letters < 2 || (reading.letters < 8 && reading.confidence < hopeless);
    return saysNothing && candidate.score < promising;
}

/// Whether nearly all letters of a candidate were read.
bool isWhole(const TextReading& reading, const LineCandidate& candidate)
{
    const auto read = std::ranges::count_if(candidate.glyphs, [&](const Glyph& glyph) {
        const int middle = glyph.box.x + glyph.box.width / 2;
        return middle >= reading.box.x && middle <= reading.box.br().x;
    });
    return 10 * read >= 8 * std::ssize(candidate.glyphs);
}

} // namespace

LineSearch::LineSearch(const cv::Mat3b& picture, const TextScale& scale, IsText isText,
                       LineReader& reader)
    : m_picture(picture), m_scale(scale), m_isText(isText), m_reader(reader)
{
    cv::cvtColor(picture, m_luma, cv::COLOR_RGB2GRAY);
}

Result<std::vector<FoundLine>> LineSearch::run(FrameMemory& memory, Deadline deadline)
{
    m_memory = &memory;
    m_deadline = deadline;
    memory.moveTo(m_picture);
    m_lines = memory.lines();
    m_maps = textMaps(m_picture, m_scale);
    TRY(tryAll(candidatesIn(m_maps)));
    // A line that broke in every map holds together in its own color.
    TRY(tryAll(candidatesIn(mapsOfSureColors())));
    TRY(lookAgain());
    if (std::chrono::steady_clock::now() > deadline)
        return tookTooLong();
    memory.remember(m_lines, m_picture);
    return std::move(m_lines);
}

Result<void> LineSearch::lookAgain()
{
    for (const FoundLine& line : m_memory->doubtfulLines())
        if (!isKnown(line) && TRY(isStillThere(line)))
            add(line);
    return {};
}

Result<bool> LineSearch::isStillThere(const FoundLine& line)
{
    constexpr int lowHeight = 30;
    for (const LineImage& image :
         {inkImage(m_picture, line.line, usualHeight), inkImage(m_picture, line.line, lowHeight),
          grayImage(m_luma, line.line, usualHeight)}) {
        const TextReading reading = TRY(readImage(image));
        if (isLikelyText(reading) && areAlike(reading.text, line.text))
            return true;
    }
    return false;
}

std::vector<LineCandidate> LineSearch::candidatesIn(const std::vector<cv::Mat1b>& maps) const
{
    std::vector<LineCandidate> candidates;
    for (const cv::Mat1b& map : maps) {
        const auto glyphs = findGlyphs(map, m_picture, m_luma, m_scale);
        // Apart, so that what is large behind small type does not become part of its line.
        for (const auto& some : {glyphsBetween(glyphs, 0, m_scale.smallType),
                                 glyphsBetween(glyphs, 0.6 * m_scale.smallType, m_scale.largest)})
            std::ranges::move(groupIntoLines(some), std::back_inserter(candidates));
    }
    std::vector<LineCandidate> pieces;
    std::ranges::copy_if(candidates, std::back_inserter(pieces), [&](const LineCandidate& each) {
        return each.letterHeight <= m_scale.smallType;
    });
    std::ranges::sort(pieces, {}, [](const LineCandidate& each) { return each.box.x; });
    std::ranges::move(joinedPieces(pieces), std::back_inserter(candidates));
    std::ranges::stable_sort(candidates, std::greater(), &LineCandidate::score);
    return candidates;
}

std::vector<cv::Mat1b> LineSearch::mapsOfSureColors() const
{
    constexpr std::size_t most = 3;
    constexpr double sure = 80;
    std::vector<cv::Mat1b> maps;
    for (const FoundLine& line : m_lines)
        if (line.confidence >= sure && maps.size() < most)
            maps.push_back(colorMap(m_picture, line.line.color));
    return maps;
}

Result<void> LineSearch::tryAll(const std::vector<LineCandidate>& candidates)
{
    constexpr int mostReadings = 24;
    for (const LineCandidate& candidate : candidates)
        if (m_readings < mostReadings && !isRead(candidate) && !hasFailed(candidate)
            && TRY(tryOne(candidate)))
            TRY(extend());
    return {};
}

Result<void> LineSearch::extend()
{
    constexpr int mostReadings = 36;
    for (bool grows = true; grows && m_readings < mostReadings;) {
        const FoundLine line = m_lines.back();
        const LineCandidate longer = extended(line.line, m_maps, m_picture, m_luma);
        grows = goesBeyond(longer, line) && !hasFailed(longer) && TRY(tryOne(longer));
        if (!grows)
            grows = TRY(lookBeside());
    }
    return {};
}

Result<bool> LineSearch::lookBeside()
{
    constexpr int reach = 12;         // letter heights
    constexpr double widestGap = 1.6; // letter heights, between two words
    constexpr double sure = 70;
    constexpr int fewest = 5;
    const FoundLine& line = m_lines.back();
    if (line.confidence < sure || line.letters < fewest
        || line.line.letterHeight > m_scale.smallType)
        return false;
    LineCandidate wide = line.line;
    const auto beside = static_cast<int>(reach * wide.letterHeight);
    wide.box = (line.box + cv::Size(2 * beside, 0) - cv::Point(beside, 0))
               & cv::Rect({}, m_picture.size());
    const LineImage image = inkImage(m_picture, wide, usualHeight);
    const auto air = static_cast<int>(0.5 * wide.letterHeight);
    if (!image.hasInkBeside(line.box + cv::Size(2 * air, 0) - cv::Point(air, 0)))
        return false;
    const auto gap = static_cast<int>(widestGap * wide.letterHeight);
    const TextReading reading = grownReading(TRY(wordsIn(image)), line.box, gap);
    const cv::Rect whole = reading.box | line.box;
    wide.box = {whole.x, line.box.y, whole.width, line.box.height};
    if (!m_isText(reading) || !goesBeyond(wide, line) || overlap(reading.box, line.box) < 0.8)
        return false;
    return add({wide, wide.box, reading.text, reading.letters, reading.confidence});
}

Result<bool> LineSearch::tryOne(const LineCandidate& candidate)
{
    if (!m_memory->isKnownEmpty(candidate)) {
        const TextReading reading = TRY(readWell(candidate));
        if (m_isText(reading) && take(candidate, reading))
            return true;
        m_memory->rememberEmpty(candidate, m_picture);
    }
    m_failed.push_back(candidate.box);
    return false;
}

bool LineSearch::isRead(const LineCandidate& candidate) const
{
    return std::ranges::any_of(m_lines, [&](const FoundLine& line) {
        return overlap(candidate.box, line.box) > 0.6 && !goesBeyond(candidate, line);
    });
}

bool LineSearch::hasFailed(const LineCandidate& candidate) const
{
    const auto tries = std::ranges::count_if(m_failed, [&](const cv::Rect& box) {
        return 10 * (box & candidate.box).area() > 8 * (box | candidate.box).area();
    });
    return tries >= 2;
}

Result<TextReading> LineSearch::readWell(const LineCandidate& candidate)
{
    constexpr int lowHeight = 30;
    TextReading best = TRY(readImage(inkImage(m_picture, candidate, usualHeight)));
    if (m_isText(best) ? isWhole(best, candidate) : isHopeless(best, candidate))
        return best;
    if (const auto letters = lettersImage(m_picture, candidate, usualHeight)) {
        TextReading other = TRY(readImage(*letters));
        if (m_isText(best) ? m_isText(other) && other.letters > best.letters
                           : m_isText(other) || sureness(other) > sureness(best))
            best = std::move(other);
    }
    if (m_isText(best))
        return best;
    for (const LineImage& image :
         {grayImage(m_luma, candidate, usualHeight), inkImage(m_picture, candidate, lowHeight)}) {
        const TextReading other = TRY(readImage(image));
        if (m_isText(other))
            return other;
    }
    return best;
}

Result<TextReading> LineSearch::readImage(const LineImage& image)
{
    return textReading(TRY(wordsIn(image)));
}

Result<std::vector<ReadWord>> LineSearch::wordsIn(const LineImage& image)
{
    ++m_readings;
    auto words = TRY(m_reader.readLine(image.pixels, m_deadline));
    for (ReadWord& word : words)
        word.box = image.inPicture(word.box);
    return words;
}

bool LineSearch::take(const LineCandidate& candidate, const TextReading& reading)
{
    FoundLine found{candidate, {}, reading.text, reading.letters, reading.confidence};
    std::vector<cv::Rect> letters;
    for (const Glyph& glyph : candidate.glyphs)
        if (glyph.box.br().x >= reading.box.x && glyph.box.x <= reading.box.br().x)
            letters.push_back(glyph.box);
    if (!letters.empty())
        found.box = boxAround(letters, candidate.letterHeight);
    // The engine sees what of the glyphs is ink of the line, though its sides are vague.
    const auto slack = static_cast<int>(0.3 * candidate.letterHeight);
    const cv::Rect read = reading.box + cv::Size(2 * slack, 0) - cv::Point(slack, 0);
    found.box = (found.box.empty() ? candidate.box : found.box) & read;
    if (found.box.empty())
        found.box = candidate.box;
    return add(std::move(found));
}

bool LineSearch::isKnown(const FoundLine& found) const
{
    return std::ranges::any_of(m_lines, [&](const FoundLine& line) {
        return areOfOnePlace(found, line) && worth(line) >= worth(found);
    });
}

bool LineSearch::add(FoundLine found)
{
    // What goes beyond a line takes its place, unless it lost more than it won.
    if (isKnown(found))
        return false;
    std::erase_if(m_lines, [&](const FoundLine& line) { return areOfOnePlace(found, line); });
    m_lines.push_back(std::move(found));
    return true;
}

} // namespace vantroque
