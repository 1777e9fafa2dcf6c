#pragma once

#include "Base/FileUrl.h"
#include "Base/FrameRate.h"
#include "Framing/FrameShape.h"
#include "Records/Report.h"
#include "VantroqueApp/Model/Files/FileAnalysis.h"

#include <QSize>
#include <QString>

#include <cstdint>
#include <optional>
#include <string>

namespace vantroque {

/// The file that a player is opened on. A plain value.
struct PlayedFile {
    FileUrl url;
    VideoSummary video;
    /// Of the content; nothing where it is not known yet.
    std::optional<QString> fingerprint = {};
    int stream = 0; ///< The picture's, counted from 0 over the streams that are pictures.
    /// "PQ" or "HLG": how a picture of high dynamic range codes its light.
    std::optional<QString> hdr = {};
    std::optional<QString> codec = {};  ///< Of the picture: "h264", "ProRes 422 HQ".
    std::optional<QString> chroma = {}; ///< "444", "422" or "420"; of red, green and blue "444".
    std::optional<int> sampleBits = {};

    /// Of an entry of the list; nothing where it has no report of a picture.
    static std::optional<PlayedFile> of(const FileAnalysis& entry);

    /// In which frames are counted: 25 where the file states no rate.
    FrameRate workingRate() const;
    /// By the file's duration; at least 0.
    std::int64_t lastFrameIndex() const;
    FrameShape shape() const { return FrameShape::of(video); }
    /// By which a tool is told to look at the picture: "v:0".
    std::string specifier() const;
    /// A frame for the scopes: 320 wide, as high as the picture's shape says, and even.
    QSize scopeSize() const;
};

} // namespace vantroque
