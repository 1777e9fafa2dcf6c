#pragma once

#include <QString>

#include <opencv2/core.hpp>

namespace vantroque {

/// A code of capitals and digits, such as an Ad-ID, with 0 and O, 1 and I told apart, which the
/// engine guesses: by the width of the O in `image` where that is clear, else, in what is as long
/// as an Ad-ID, as the rest of its parts has it: a prefix of four, nearly always letters, and a
/// number. Other words stay as they are.
QString settledLookAlikes(const QString& word, const cv::Mat1b& image);

} // namespace vantroque
