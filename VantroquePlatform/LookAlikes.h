#pragma once

#include <QString>

#include <opencv2/core.hpp>

namespace vantroque {

/// A code of capitals and digits, such as an Ad-ID, with 0 and O told apart by their width in
/// `image`: no context tells them apart, and the engine guesses. Other words stay as they are.
QString settledLookAlikes(const QString& word, const cv::Mat1b& image);

} // namespace vantroque
