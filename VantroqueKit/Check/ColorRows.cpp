#include "Base/Numbers.h"
#include "Check/CheckRow.h"
#include "Check/SignalChecks.h"

#include <QStringList>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

struct ColorTags {
    QStringList parts;
    QStringList problems;
};

void noteRange(ColorTags& tags, const VideoStreamInfo& video)
{
    const auto fullRange = video.isFullRange();
    if (!fullRange) {
        tags.parts << u"range untagged"_s;
        return;
    }
    tags.parts << (*fullRange ? u"full range"_s : u"video range"_s);
    if (*fullRange)
        tags.problems << u"tagged full range (0–255). Broadcast and ad delivery expect video range "
                         u"(16–235). A player that honours the tag shows a different picture from "
                         u"one that ignores it"_s;
}

void noteMatrix(ColorTags& tags, const VideoStreamInfo& video)
{
    if (!video.colorSpace) {
        tags.parts << u"matrix untagged"_s;
        return;
    }
    const ColorMatrix matrix = resolveColorMatrix(video.colorSpace, video.height).matrix;
    tags.parts << matrixName(matrix) + u" matrix"_s;
    if (matrix == ColorMatrix::bt601 && video.height >= 720)
        tags.problems << u"Rec.601 matrix on an HD frame: colours shift when a player decodes it "
                         u"as Rec.709"_s;
}

void notePrimariesAndTransfer(ColorTags& tags, const VideoStreamInfo& video)
{
    const auto& primaries = video.colorPrimaries;
    const auto& transfer = video.colorTransfer;
    if (primaries)
        tags.parts << *primaries + u" primaries"_s;
    if (transfer)
        tags.parts << *transfer + u" transfer"_s;
    if (video.isHDR() && primaries && !primaries->startsWith("bt2020"_L1))
        tags.problems << u"HDR transfer (%1) with %2 primaries; HDR deliveries carry Rec.2020"_s
                             .arg(*transfer, *primaries);
}

QString staticMetadataText(const QString& label, const HDRMetadata& hdr)
{
    QStringList parts{label};
    if (hdr.maxCLL)
        parts << u"MaxCLL %1 nits"_s.arg(QString::number(*hdr.maxCLL));
    if (hdr.maxFALL)
        parts << u"MaxFALL %1 nits"_s.arg(QString::number(*hdr.maxFALL));
    if (hdr.masteringDisplay) {
        const QString peak = hdr.masteringPeakNits
                                 ? u" at %1 nits"_s.arg(Numbers::fixed(*hdr.masteringPeakNits, 0))
                                 : QString();
        parts << u"mastered on %1%2"_s.arg(*hdr.masteringDisplay, peak);
    }
    return parts.join(u", "_s);
}

} // namespace

std::optional<CheckResult> colorTagsRow(const MediaInfo& media)
{
    if (!media.video)
        return std::nullopt;
    const VideoStreamInfo& video = *media.video;
    const CheckRow row{
        u"color-tags"_s, u"Colour tags"_s,
        u"tagged video range and Rec.709 for HD SDR, or PQ/HLG with Rec.2020 for HDR"_s};
    if (!video.colorSpace && !video.colorPrimaries && !video.colorTransfer && !video.isFullRange())
        return row.info(u"untagged. Players assume Rec.709 video range for HD"_s);

    ColorTags tags;
    noteRange(tags, video);
    noteMatrix(tags, video);
    notePrimariesAndTransfer(tags, video);
    const QString parts = tags.parts.join(u", "_s);
    if (tags.problems.isEmpty())
        return row.pass(parts);
    return row.warn(u"%1. %2"_s.arg(parts, tags.problems.join(u"; "_s)),
                    u"Export with the colour tags the picture was actually made with (Rec.709, "
                    u"video range for an HD SDR spot). In ffmpeg: -color_range tv -colorspace "
                    u"bt709 -color_primaries bt709 -color_trc bt709."_s);
}

std::optional<CheckResult> hdrRow(const MediaInfo& media)
{
    if (!media.video || !media.video->isHDR())
        return std::nullopt;
    const CheckRow row{u"hdr-metadata"_s, u"HDR metadata"_s,
                       u"static metadata (MaxCLL, MaxFALL, mastering display) on a PQ stream"_s};
    const bool isPQ = media.video->colorTransfer == u"smpte2084"_s;
    const QString label = isPQ ? u"PQ (HDR10)"_s : u"HLG"_s;
    // A frame average alone tells a display nothing about the peaks.
    const auto& hdr = media.video->hdr;
    if (hdr && (hdr->masteringDisplay || hdr->maxCLL))
        return row.pass(staticMetadataText(label, *hdr));
    if (isPQ)
        return row.warn(
            label + u", no static metadata"_s,
            u"Export HDR10 with mastering display and content light level metadata (x265: "
            u"master-display and max-cll; Compressor and Resolve write them from the project's "
            u"HDR settings)."_s);
    return row.info(label + u". Static metadata is optional for HLG"_s);
}

} // namespace vantroque::SignalChecks
