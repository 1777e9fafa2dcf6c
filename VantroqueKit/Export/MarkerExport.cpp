#include "Export/MarkerExport.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Export/MarkerFormats.h"
#include "Probe/Prober.h"

#include <algorithm>

namespace vantroque::MarkerExport {

using namespace Qt::StringLiterals;

namespace {

QString name(SignalEvent::Kind kind)
{
    using enum SignalEvent::Kind;
    switch (kind) {
    case levels: return u"Picture levels"_s;
    case blackFrame: return u"Black frames"_s;
    case flashFrame: return u"Flash frame"_s;
    case duplicateFrame: return u"Duplicate frames"_s;
    case phase: return u"Stereo phase"_s;
    case deadChannel: return u"Channels"_s;
    case safeArea: return u"Safe area"_s;
    case safeZone: return u"Safe zones"_s;
    case captionSpelling: return u"Captions"_s;
    case captionDoubled: return u"Doubled words"_s;
    case psyFlash: return u"Flashing"_s;
    case psyRed: return u"Red flashing"_s;
    case psyExtended: return u"Long flashing"_s;
    case psyPattern: return u"Stripes"_s;
    case alertTone: return u"Alert tones"_s;
    case clipping: return u"Clipping"_s;
    case decoding: break;
    }
    return u"Decoding"_s;
}

Marker finding(const SignalEvent& event, const QDateTime& now)
{
    Marker marker;
    marker.frame = event.frame;
    if (event.endFrame && *event.endFrame > event.frame) {
        // In double, since the ends of a stored event may be anything.
        const auto length =
            static_cast<double>(*event.endFrame) - static_cast<double>(event.frame) + 1;
        marker.duration = Numbers::roundedToInt(length);
    }
    marker.name = name(event.kind);
    marker.comment = event.text;
    marker.verdict = event.verdict;
    marker.date = now;
    return marker;
}

Marker note(const ReviewComment& comment, FrameRate rate)
{
    Marker marker;
    marker.kind = Marker::Kind::note;
    marker.frame =
        comment.timecode().rate() == rate ? comment.frame : rate.frameAt(comment.seconds());
    marker.name = comment.author.value_or(QString()).trimmed();
    if (marker.name.isEmpty())
        marker.name = u"Note"_s;
    marker.comment = text(comment);
    marker.date = comment.createdAt;
    return marker;
}

std::int64_t startFrame(const MediaInfo& media, double rate)
{
    const auto text = media.startTimecode ? media.startTimecode : Prober::startTimecode(media.url);
    const auto timecode = text ? Timecode::parse(*text, rate) : std::nullopt;
    return timecode ? timecode->frame() : 0;
}

} // namespace

QString displayName(Format format)
{
    switch (format) {
    case Format::avid: return u"Avid Media Composer"_s;
    case Format::premiere: return u"Premiere Pro"_s;
    case Format::resolve: return u"DaVinci Resolve"_s;
    case Format::csv: break;
    }
    return u"Comma separated"_s;
}

QString fileExtension(Format format)
{
    switch (format) {
    case Format::avid:
    case Format::premiere: return u"xml"_s;
    case Format::resolve: return u"edl"_s;
    case Format::csv: break;
    }
    return u"csv"_s;
}

QString fileSuffix(Format format)
{
    switch (format) {
    case Format::avid: return u" markers (Avid)"_s;
    case Format::premiere: return u" markers (Premiere)"_s;
    case Format::resolve: return u" markers (Resolve)"_s;
    case Format::csv: break;
    }
    return u" markers"_s;
}

MarkerContext context(const MediaInfo& media)
{
    const VideoStreamInfo* video = media.video ? &*media.video : nullptr;
    MarkerContext context;
    context.fileName = media.url.fileName();
    context.frameRate =
        Timecode(0, video != nullptr ? video->nominalFrameRate : 0).rate().perSecond();
    const auto counted = video != nullptr ? video->frameCount : std::nullopt;
    context.frameCount = std::max<std::int64_t>(
        counted ? *counted
                : Numbers::roundedToInt(std::max(context.frameRate, 1.0) * media.durationSeconds),
        1);
    context.startFrame = startFrame(media, context.frameRate);
    context.width = video != nullptr ? video->width : 1920;
    context.height = video != nullptr ? video->height : 1080;
    return context;
}

std::vector<Marker> markers(const Sources& sources, double frameRate, const QDateTime& now)
{
    const FrameRate rate = Timecode(0, frameRate).rate();
    std::vector<Marker> list;
    if (sources.includeFindings && sources.report != nullptr) {
        for (const SignalEvent& event : sources.report->events.value_or(std::vector<SignalEvent>()))
            list.push_back(finding(event, now));
        for (const SignalEvent& event : sources.extraEvents)
            list.push_back(finding(event, now));
    }
    if (sources.includeNotes && sources.review != nullptr)
        for (const ReviewComment& comment : sources.review->comments)
            list.push_back(note(comment, rate));
    std::ranges::stable_sort(list, {}, &Marker::frame);
    return list;
}

QString text(const ReviewComment& comment)
{
    QString words = comment.text.trimmed();
    const auto count = std::ssize(comment.strokes);
    if (count == 0)
        return words;
    const QString marks = u"%1 marking%2 on this frame"_s.arg(count).arg(Text::plural(count));
    return words.isEmpty() ? marks : words + u" ("_s + marks + u')';
}

QString write(const std::vector<Marker>& markers, Format format, const MarkerContext& context,
              const QUuid& id)
{
    switch (format) {
    case Format::avid: return avidXML(markers);
    case Format::premiere: return premiereXML(markers, context, id);
    case Format::resolve: return resolveEDL(markers, context);
    case Format::csv: break;
    }
    return csv(markers, context);
}

} // namespace vantroque::MarkerExport
