#include "VantroquePlatform/Recognition/LineImage.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr int margin = 10;

/// Where the letters are.
cv::Mat1b boxesOfLetters(const LineCandidate& line, const cv::Rect& region)
{
    cv::Mat1b letters(region.size(), uchar{0});
    for (const Glyph& glyph : line.glyphs)
        letters((glyph.box - region.tl() + cv::Size(2, 2) - cv::Point(1, 1))
                & cv::Rect({}, region.size()))
            .setTo(255);
    return letters;
}

/// The patches of dark pixels that hang together; 0 labels what is not dark.
struct DarkPatches {
    explicit DarkPatches(const cv::Mat1b& ink)
    {
        constexpr int dark = 128;
        cv::Mat1d centroids;
        count = cv::connectedComponentsWithStats(ink < dark, labels, stats, centroids, 8);
    }
    cv::Rect box(int label) const
    {
        return {stats(label, cv::CC_STAT_LEFT), stats(label, cv::CC_STAT_TOP),
                stats(label, cv::CC_STAT_WIDTH), stats(label, cv::CC_STAT_HEIGHT)};
    }

    cv::Mat1i labels;
    cv::Mat1i stats;
    int count = 0;
};

/// Paints over what is too high for the line, or reaches into it from outside, but for what lies in
/// the boxes of the letters.
void whitenOthers(cv::Mat1b& ink, const LineCandidate& line, const cv::Rect& region)
{
    const cv::Mat1b letters = boxesOfLetters(line, region);
    const DarkPatches patches(ink);
    cv::Mat1b others(ink.size(), uchar{0});
    for (int label = 1; label < patches.count; ++label) {
        const cv::Rect box = patches.box(label);
        if (box.y == 0 || box.br().y == ink.rows || box.x == 0 || box.br().x == ink.cols
            || box.height > 1.6 * line.letterHeight + 2)
            others.setTo(255, patches.labels == label);
    }
    cv::dilate(others, others, cv::Mat());
    ink.setTo(255, others & ~letters);
}

/// Whether a patch, which is none of the glyphs, can be of the line: a letter that stands on its
/// base line, the dot of one, or a mark after a word.
bool fitsIn(const cv::Rect& box, const LineCandidate& line)
{
    const double height = line.letterHeight;
    const double slack = 0.15 * height + 1;
    const double base = rowsOfLetters(line.glyphs, height).end - 0.5 * height;
    const bool stands = std::abs(box.br().y - base) <= slack;
    if (box.height > 0.4 * height)
        return stands && box.height <= 1.2 * height && box.width <= 1.5 * height;
    if (box.width > 0.4 * height + 1)
        return false;
    const int middle = box.x + box.width / 2;
    return stands || std::ranges::any_of(line.glyphs, [&](const Glyph& glyph) {
               return glyph.box.width < 0.5 * height && middle >= glyph.box.x
                      && middle <= glyph.box.br().x && box.br().y <= glyph.box.y + 1
                      && box.br().y >= glyph.box.y - 0.4 * height;
           });
}

/// The dark patches that are mostly in the boxes of the letters, or fit in with them.
cv::Mat1b patchesOfLine(const cv::Mat1b& ink, const LineCandidate& line, const cv::Rect& region)
{
    const cv::Mat1b boxes = boxesOfLetters(line, region);
    const DarkPatches patches(ink);
    cv::Mat1b kept(ink.size(), uchar{0});
    for (int label = 1; label < patches.count; ++label) {
        const cv::Rect box = patches.box(label);
        const cv::Mat1b patch(patches.labels(box) == label);
        const cv::Mat1b inside(patch & boxes(box));
        const bool isWhole =
            10 * cv::countNonZero(inside) >= 7 * patches.stats(label, cv::CC_STAT_AREA)
            || fitsIn(box + region.tl(), line);
        kept(box).setTo(255, isWhole ? patch : inside);
    }
    return kept;
}

/// Paints over all but the letters and what fits in with them. Whether that was more than a little.
bool whitenAllButLetters(cv::Mat1b& ink, const LineCandidate& line, const cv::Rect& region)
{
    constexpr int visible = 230;
    cv::Mat1b kept = patchesOfLine(ink, line, region);
    cv::dilate(kept, kept, cv::Mat());
    cv::Mat1b others;
    cv::compare(ink, cv::Scalar(visible), others, cv::CMP_LT);
    others &= ~kept;
    ink.setTo(255, others);
    return 100 * cv::countNonZero(others) > ink.rows * ink.cols;
}

uchar percentile(std::vector<uchar> values, int percent)
{
    const std::size_t place = values.size() * static_cast<std::size_t>(percent) / 100;
    const auto chosen = values.begin() + static_cast<std::ptrdiff_t>(place);
    std::ranges::nth_element(values, chosen);
    return *chosen;
}

/// How far from the line's color what is behind it begins, so that all of it turns white, however
/// uneven it is.
double backgroundDistance(const cv::Mat1b& distance)
{
    constexpr double least = 20;
    // Letters cover less than half of their line.
    const double middle = percentile({distance.begin(), distance.end()}, 70);
    cv::Mat1b letters;
    cv::compare(distance, cv::Scalar(std::min(0.4 * middle, 45.0)), letters, cv::CMP_LT);
    cv::dilate(letters, letters, cv::Mat());
    std::vector<uchar> behind;
    for (int y = 0; y < distance.rows; ++y)
        for (int x = 0; x < distance.cols; ++x)
            if (letters(y, x) == 0)
                behind.push_back(distance(y, x));
    const double nearest = behind.empty() ? middle : percentile(std::move(behind), 15);
    return std::max(nearest, least);
}

LineImage enlarged(const cv::Mat1b& pixels, const cv::Rect& region, int height)
{
    LineImage image{{}, region, static_cast<double>(height) / region.height};
    cv::Mat1b resized;
    cv::resize(pixels, resized, {}, image.scale, image.scale,
               image.scale > 1 ? cv::INTER_LANCZOS4 : cv::INTER_AREA);
    cv::copyMakeBorder(resized, image.pixels, margin, margin, margin, margin, cv::BORDER_CONSTANT,
                       cv::Scalar(255));
    return image;
}

cv::Mat1f squares(const cv::Mat3f& vectors)
{
    std::vector<cv::Mat1f> channels;
    cv::split(vectors, channels);
    cv::Mat1f sum;
    sum =
        channels[0].mul(channels[0]) + channels[1].mul(channels[1]) + channels[2].mul(channels[2]);
    return sum;
}

/// Thin strokes are mixed with what is behind them, so that the middle of a wide one goes beyond
/// their color: such pixels are of the line as well. Takes differences from the line's color.
void dropOvershoot(cv::Mat3f& difference)
{
    const cv::Mat1f far = squares(difference);
    const double middle = cv::mean(far)[0];
    const cv::Scalar mean = cv::mean(difference, far > middle);
    cv::Vec3f behind(static_cast<float>(mean[0]), static_cast<float>(mean[1]),
                     static_cast<float>(mean[2]));
    const auto length = static_cast<float>(cv::norm(behind));
    if (length < 1)
        return;
    behind /= length;
    for (cv::Vec3f& each : difference)
        each -= std::min(each.dot(behind), 0.0F) * behind;
}

} // namespace

cv::Rect LineImage::inPicture(const cv::Rect& box) const
{
    const auto place = [&](int x, int y) {
        return cv::Point2d(region.tl()) + cv::Point2d(x - margin, y - margin) / scale;
    };
    const cv::Point2d first = place(box.x, box.y);
    const cv::Point2d last = place(box.br().x, box.br().y);
    return {cv::Point(cvFloor(first.x), cvFloor(first.y)),
            cv::Point(cvCeil(last.x), cvCeil(last.y))};
}

bool LineImage::hasInkBeside(const cv::Rect& box) const
{
    constexpr int dark = 100;
    const auto column = [&](int x) {
        return std::clamp(cvRound((x - region.x) * scale) + margin, 0, pixels.cols);
    };
    const cv::Mat1b left = pixels.colRange(0, column(box.x));
    const cv::Mat1b right = pixels.colRange(column(box.br().x), pixels.cols);
    return cv::countNonZero(left < dark) + cv::countNonZero(right < dark) > 0;
}

cv::Rect lineRegion(const LineCandidate& line, cv::Size picture)
{
    const int across = static_cast<int>(std::ceil(0.3 * line.letterHeight));
    const int above = static_cast<int>(std::ceil(0.3 * line.letterHeight));
    return cv::Rect(line.box.x - across, line.box.y - above, line.box.width + 2 * across,
                    line.box.height + 2 * above)
           & cv::Rect({}, picture);
}

cv::Mat1b inkIn(const cv::Mat3b& picture, const LineCandidate& line, const cv::Rect& region)
{
    cv::Mat3f difference;
    picture(region).convertTo(difference, CV_32F);
    difference -= cv::Scalar(line.color[0], line.color[1], line.color[2]);
    if (line.letterHeight < 14)
        dropOvershoot(difference);
    cv::Mat1f square = squares(difference);
    cv::sqrt(square / 3, square);
    cv::Mat1b distance;
    square.convertTo(distance, CV_8U);
    const double background = backgroundDistance(distance);
    cv::Mat1b ink;
    distance.convertTo(ink, CV_8U, 255 / (0.65 * background), -255 * 0.1 / 0.65);
    return ink;
}

LineImage inkImage(const cv::Mat3b& picture, const LineCandidate& line, int height)
{
    const cv::Rect region = lineRegion(line, picture.size());
    cv::Mat1b ink = inkIn(picture, line, region);
    whitenOthers(ink, line, region);
    return enlarged(ink, region, height);
}

std::optional<LineImage> lettersImage(const cv::Mat3b& picture, const LineCandidate& line,
                                      int height)
{
    const cv::Rect region = lineRegion(line, picture.size());
    cv::Mat1b ink = inkIn(picture, line, region);
    if (!whitenAllButLetters(ink, line, region))
        return std::nullopt;
    return enlarged(ink, region, height);
}

LineImage grayImage(const cv::Mat1b& luma, const LineCandidate& line, int height)
{
    const cv::Rect region = lineRegion(line, luma.size());
    cv::Mat1b gray = luma(region).clone();
    if (line.glyphs.front().step > 0)
        gray = 255 - gray;
    // What is wider than a stroke is of the scene.
    const int wide = std::max(3, cvRound(0.4 * line.letterHeight) | 1);
    cv::Mat1b scene;
    cv::morphologyEx(gray, scene, cv::MORPH_CLOSE,
                     cv::getStructuringElement(cv::MORPH_RECT, {wide, wide}));
    gray = 255 - (scene - gray);
    const std::vector<uchar> values(gray.begin(), gray.end());
    const double low = percentile(values, 2);
    const double high = std::max(low + 20.0, static_cast<double>(percentile(values, 80)));
    gray.convertTo(gray, CV_8U, 255 / (high - low), -255 * low / (high - low));
    return enlarged(gray, region, height);
}

} // namespace vantroque
