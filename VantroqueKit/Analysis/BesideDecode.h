#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Text/RecognizerPool.h"

#include <future>
#include <optional>
#include <vector>

namespace vantroque {

/// What needs no figure of the decode and is found out while it runs, since ffmpeg's filter graph
/// keeps hardly more than one core busy: closed captions, and what the slate says. Runs on threads
/// of its own; a value that ends waits for them.
class BesideDecode {
public:
    /// `media` is a file that was just probed. The recognizers may be null and outlive this object.
    BesideDecode(const MediaInfo& media, const std::vector<Profile>& profiles,
                 RecognizerPool* recognizers);

    /// Waits, and writes what was found into the same file's record, which may be decoded by now.
    /// Fails when a tool cannot be found.
    Result<void> addTo(MediaInfo& media);

private:
    std::future<Result<bool>> m_captions;
    std::future<std::vector<QString>> m_slate;
};

/// The longest slate that a profile describes, in seconds.
std::optional<double> slateSeconds(const std::vector<Profile>& profiles);
/// What the slate of that many seconds says, in a picture whose first frame lies at `pictureStart`
/// in the file; nothing when it cannot be read. Blocks.
std::vector<QString> slateLines(const MediaInfo& media, double seconds, double pictureStart,
                                RecognizerPool& recognizers);

} // namespace vantroque
