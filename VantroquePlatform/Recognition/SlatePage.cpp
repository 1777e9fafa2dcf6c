#include "VantroquePlatform/Recognition/SlatePage.h"

#include "VantroquePlatform/Recognition/LeadingColons.h"
#include "VantroquePlatform/Recognition/LookAlikes.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The word that begins after a colon.
ReadWord* wordAfter(const LeadingColon& colon, std::vector<ReadLine>& lines)
{
    const cv::Point middle = (colon.next.tl() + colon.next.br()) / 2;
    for (ReadLine& line : lines)
        for (ReadWord& word : line.words)
            if (word.box.contains(middle) && word.box.x > colon.dots.x - colon.next.width)
                return &word;
    return nullptr;
}

/// The part of the page after a colon, up to the first wide gap.
cv::Mat1b fieldAfter(const LeadingColon& colon, const cv::Mat1b& page)
{
    const int height = colon.next.height;
    const cv::Rect field(colon.next.x - height / 4, colon.next.y - height / 3, 2 * height,
                         height + 2 * (height / 3));
    cv::Mat1b image = page(field & cv::Rect({}, page.size())).clone();
    if (cv::mean(image)[0] < 128)
        image = 255 - image;
    const double scale = 26.0 / height;
    cv::resize(image, image, {}, scale, scale, scale < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    cv::copyMakeBorder(image, image, 10, 10, 10, 10, cv::BORDER_REPLICATE);
    return image;
}

} // namespace

Result<std::vector<ReadLine>> readSlate(const cv::Mat1b& page, LineReader& reader,
                                        TextRecognizer::Deadline deadline)
{
    const auto colons = findLeadingColons(page);
    const cv::Mat1b blanked = withoutColons(page, colons);
    auto lines = TRY(reader.readPage(blanked, deadline));
    for (ReadLine& line : lines)
        for (ReadWord& word : line.words)
            word.text = settledLookAlikes(word.text, page(word.box & cv::Rect({}, page.size())));
    for (const LeadingColon& colon : colons) {
        if (ReadWord* word = wordAfter(colon, lines)) {
            word->text.prepend(u':');
            continue;
        }
        // Layout analysis drops a short field that stands alone.
        auto words = TRY(reader.readLine(fieldAfter(colon, blanked), deadline));
        if (words.empty())
            continue;
        words.front().text.prepend(u':');
        lines.push_back({std::move(words), colon.dots | colon.next});
    }
    std::ranges::stable_sort(lines, {},
                             [](const ReadLine& line) { return 2 * line.box.y + line.box.height; });
    return lines;
}

} // namespace vantroque
