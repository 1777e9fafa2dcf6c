#pragma once

#include <QByteArray>

#include <functional>

namespace vantroque {

enum class CaptionedCodec { h264, hevc, mpeg2 };

/// A raw video stream with CEA-608 captions (ATSC A/53 part 4) put into each picture for which
/// `wanted` says so, counted in coding order. They show "CAPTIONS INSIDE" about once a second.
QByteArray withCaptions(const QByteArray& stream, CaptionedCodec codec,
                        const std::function<bool(int picture)>& wanted);

} // namespace vantroque
