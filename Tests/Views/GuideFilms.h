#pragma once

#include "Base/FileUrl.h"

/// The films that the pictures of the user's guide show: versions of one spot, with faults.
namespace vantroque::GuideFilms {

/// Too loud, with a line of text at the edge of the picture and eight frames of black.
FileUrl faulty();
/// The next version, with all of that mended.
FileUrl mended();
/// Of that one a vertical cut, and a square one of six seconds.
FileUrl vertical();
FileUrl square();
/// A film whose end is missing, and with it its index.
FileUrl cutOff();

} // namespace vantroque::GuideFilms
