#pragma once

#include "VantroquePlatform/Recognition/LineReader.h"

namespace vantroque {

/// The lines of a slate, from the top down, their boxes in pixels of `page`. Reads the page whole.
/// The engine takes the colon of a lone ":15" for a digit, so such colons are blanked for it and
/// put back before what it reads after them.
Result<std::vector<ReadLine>> readSlate(const cv::Mat1b& page, LineReader& reader,
                                        TextRecognizer::Deadline deadline);

} // namespace vantroque
