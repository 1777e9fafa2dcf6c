#include "VantroquePlatform/Recognition/LookAlikes.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace vantroque {

namespace {

/// The widths of the characters from left to right, if each is one patch.
std::vector<int> widths(const cv::Mat1b& image)
{
    cv::Mat1b ink;
    cv::threshold(image, ink, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    if (2 * cv::countNonZero(ink) > ink.rows * ink.cols)
        cv::bitwise_not(ink, ink);
    cv::Mat1i labels;
    cv::Mat1i stats;
    cv::Mat1d centroids;
    const int count = cv::connectedComponentsWithStats(ink, labels, stats, centroids, 8);
    std::vector<std::pair<int, int>> places;
    for (int label = 1; label < count; ++label)
        if (2 * stats(label, cv::CC_STAT_HEIGHT) > image.rows)
            places.emplace_back(stats(label, cv::CC_STAT_LEFT), stats(label, cv::CC_STAT_WIDTH));
    std::ranges::sort(places);
    std::vector<int> list;
    for (const auto& [left, width] : places)
        list.push_back(width);
    return list;
}

bool isCode(const QString& word)
{
    constexpr qsizetype shortest = 8;
    const auto isDigit = [](QChar each) { return each >= u'0' && each <= u'9'; };
    const auto isCapital = [](QChar each) { return each >= u'A' && each <= u'Z'; };
    return word.size() >= shortest && std::ranges::any_of(word, isDigit)
           && std::ranges::any_of(word, isCapital) && std::ranges::all_of(word, [&](QChar each) {
                  return isDigit(each) || isCapital(each);
              });
}

/// A part of a code in which most are of one sort, and so is what looks like one of it.
void settlePart(QString& word, qsizetype first, qsizetype count, QStringView likeDigits,
                QStringView likeLetters, bool toLetters)
{
    const QStringView from = toLetters ? likeDigits : likeLetters;
    const QStringView to = toLetters ? likeLetters : likeDigits;
    qsizetype same = 0;
    for (qsizetype i = first; i < first + count; ++i)
        same += word[i].isLetter() == toLetters && !to.contains(word[i]) ? 1 : 0;
    if (2 * same <= count)
        return;
    for (qsizetype i = first; i < first + count; ++i)
        if (const qsizetype at = from.indexOf(word[i]); at >= 0)
            word[i] = to[at];
}

QString settledByPlace(const QString& word)
{
    constexpr qsizetype prefix = 4;
    constexpr qsizetype number = 7; // and at times a letter for the format after it
    if (word.size() < prefix + number || word.size() > prefix + number + 1)
        return word;
    QString settled = word;
    settlePart(settled, 0, prefix, u"01", u"OI", true);
    settlePart(settled, prefix, number, u"01", u"OI", false);
    return settled;
}

} // namespace

QString settledLookAlikes(const QString& word, const cv::Mat1b& image)
{
    if (!isCode(word))
        return word;
    QString settled = settledByPlace(word);
    const auto width = widths(image);
    if (std::ssize(width) != word.size())
        return settled;
    // These digits look like no letter.
    std::vector<int> sure;
    for (std::size_t i = 0; i < width.size(); ++i)
        if (QStringView(u"234679").contains(word[static_cast<qsizetype>(i)]))
            sure.push_back(width[i]);
    if (sure.empty())
        return settled;
    std::ranges::sort(sure);
    const double digit = sure[sure.size() / 2];
    for (std::size_t i = 0; i < width.size(); ++i) {
        const QChar read = word[static_cast<qsizetype>(i)];
        QChar& each = settled[static_cast<qsizetype>(i)];
        if (each == u'0' && width[i] > 1.2 * digit)
            each = u'O';
        else if (each == u'O' && each == read && width[i] < 1.05 * digit)
            each = u'0';
    }
    return settled;
}

} // namespace vantroque
