#include "Text/InkExtent.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vantroque::InkExtent {

namespace {

/// A stretch of rows or columns, the end not included.
struct Range {
    int start = 0;
    int end = 0;

    int length() const { return end - start; }
};

/// The whole pixels of a fraction of an axis that has `size` pixels.
Range pixelsOf(double start, double end, int size)
{
    const auto bounded = [size](double pixel) {
        return static_cast<int>(std::clamp<std::int64_t>(Numbers::truncatedToInt(pixel), 0, size));
    };
    return {bounded(std::floor(start * size)), bounded(std::ceil(end * size))};
}

/// How much ink each row and each column of a box has.
struct InkCounts {
    std::vector<int> rows;
    std::vector<int> columns;
};

InkCounts count(const Pixels& pixels, const Range& columns, const Range& rows)
{
    InkCounts counts{std::vector<int>(static_cast<std::size_t>(rows.length())),
                     std::vector<int>(static_cast<std::size_t>(columns.length()))};
    std::vector<std::uint8_t> sorted;
    for (std::size_t y = 0; y < counts.rows.size(); ++y) {
        const auto row = pixels.luma.begin()
                         + (rows.start + static_cast<std::ptrdiff_t>(y)) * pixels.width
                         + columns.start;
        sorted.assign(row, row + columns.length());
        const auto middle = sorted.begin() + columns.length() / 2;
        std::ranges::nth_element(sorted, middle);
        // The median of a row is its background, whether the text is light or dark.
        const int background = *middle;
        for (std::size_t x = 0; x < counts.columns.size(); ++x)
            if (std::abs(row[static_cast<std::ptrdiff_t>(x)] - background) >= contrast) {
                ++counts.rows[y];
                ++counts.columns[x];
            }
    }
    return counts;
}

/// From the first to the last count that has a fair share of the largest.
std::optional<Range> extent(const std::vector<int>& counts, int least)
{
    const int fairShare = (15 * std::ranges::max(counts) + 99) / 100; // 15 %, rounded up
    const int needed = std::max(fairShare, least);
    const auto isInk = [needed](int each) { return each >= needed; };
    const auto first = std::ranges::find_if(counts, isInk);
    const auto last = std::find_if(counts.rbegin(), counts.rend(), isInk);
    if (first == counts.end())
        return std::nullopt;
    return Range{static_cast<int>(first - counts.begin()), static_cast<int>(counts.rend() - last)};
}

} // namespace

std::optional<Pixels> Pixels::from(const QImage& image)
{
    if (image.isNull())
        return std::nullopt;
    const QImage gray = image.convertToFormat(QImage::Format_Grayscale8);
    Pixels pixels{gray.width(), gray.height(), {}};
    for (int y = 0; y < gray.height(); ++y)
        pixels.luma.insert(pixels.luma.end(), gray.constScanLine(y),
                           gray.constScanLine(y) + gray.width());
    return pixels;
}

std::optional<NormalizedRect> refine(const NormalizedRect& rect, const Pixels& pixels)
{
    constexpr int smallest = 4;
    const Range columns = pixelsOf(rect.x, rect.right(), pixels.width);
    const Range rows = pixelsOf(rect.y, rect.bottom(), pixels.height);
    if (columns.length() < smallest || rows.length() < smallest)
        return std::nullopt;
    const InkCounts counts = count(pixels, columns, rows);
    if (std::ranges::max(counts.rows) < smallest)
        return std::nullopt;
    const auto inkRows = extent(counts.rows, 2);
    const auto inkColumns = extent(counts.columns, 1);
    if (!inkRows || !inkColumns || 100 * inkRows->length() < 35 * rows.length()
        || 2 * inkColumns->length() < columns.length())
        return std::nullopt;
    const double width = pixels.width;
    const double height = pixels.height;
    return NormalizedRect{(columns.start + inkColumns->start) / width,
                          (rows.start + inkRows->start) / height, inkColumns->length() / width,
                          inkRows->length() / height};
}

} // namespace vantroque::InkExtent
