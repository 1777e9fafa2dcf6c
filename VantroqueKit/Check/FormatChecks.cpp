#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/Matching.h"
#include "Check/SignalChecks.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

CheckResult containerRow(const ContainerRule& rule, const QString& kind)
{
    const CheckRow row{u"container"_s, u"Container"_s, joinedWithOr(rule.allowed)};
    if (!contains(rule.allowed, kind)) {
        const QString first = rule.allowed.empty() ? u"mp4"_s : rule.allowed.front();
        return row.fail(kind, u"Remux or re-export as .%1."_s.arg(rule.preferred.value_or(first)));
    }
    if (rule.preferred && *rule.preferred != kind)
        return row.pass(u"%1 (accepted; %2 preferred)"_s.arg(kind, *rule.preferred));
    return row.pass(kind);
}

CheckResult fastStartRow(bool moovBeforeMdat)
{
    const CheckRow row{u"fast-start"_s, u"Fast start"_s, u"moov atom first"_s};
    if (moovBeforeMdat)
        return row.pass(u"moov atom before mdat"_s);
    return row
        .expecting(u"moov atom first, so playback starts before the upload finishes processing"_s)
        .warn(u"moov atom after mdat"_s,
              u"Re-export with fast start on. In ffmpeg: -movflags +faststart. Media Encoder has "
              u"it on by default."_s);
}

CheckResult upperCaseExtensionRow(const QString& extension)
{
    const CheckRow row{u"extension-case"_s, u"Extension case"_s,
                       u"lowercase extension (.%1)"_s.arg(extension.toLower())};
    return row.fail(u'.' + extension, u"Rename the file so the extension is lowercase."_s);
}

QString sizeOf(const ResolutionOption& option)
{
    return frameSize(option.width, option.height);
}

CheckResult pixelAspectRow(const QString& sampleAspect)
{
    const CheckRow row{u"pixel-aspect"_s, u"Pixel aspect"_s, u"square pixels (1:1)"_s};
    // "0:1" is ffprobe's form of an aspect that nobody stated.
    if (sampleAspect.isEmpty() || sampleAspect == u"1:1"_s || sampleAspect == u"0:1"_s)
        return row.pass(u"square"_s);
    return row.fail(u"SAR "_s + sampleAspect,
                    u"Re-export with square pixels; anamorphic masters must be resampled."_s);
}

/// What to do about an interlaced picture, without contradicting what the same report says of its
/// cadence.
QString scanTypeFix(const MediaInfo& media)
{
    if (media.signal && media.signal->cadence
        && SignalChecks::telecineRatio(*media.signal->cadence))
        if (const auto cadence = SignalChecks::duplicatesRow(media, {}, false); cadence->fix)
            return *cadence->fix;
    // A stray frame of fine detail looks combed in any picture.
    constexpr double stray = 0.01;
    if (media.signal && media.signal->interlacedRatio
        && !Numbers::above(*media.signal->interlacedRatio, stray))
        return u"Nothing is combed: the picture is progressive and only flagged as interlaced. "
               u"Flag it as progressive on export (in ffmpeg: -vf setfield=prog), and do not "
               u"deinterlace it."_s;
    return u"Deinterlace on export (in ffmpeg: -vf bwdif) or re-export the progressive master."_s;
}

/// The measurement outvotes the container's flag.
CheckResult scanTypeRow(const VideoRule& rule, const MediaInfo& media)
{
    const VideoStreamInfo& video = *media.video;
    const auto& signal = media.signal;
    const CheckRow row{u"scan-type"_s, u"Scan type"_s, u"progressive"_s};
    const QString scan = video.fieldOrder.value_or(u"progressive"_s);
    const bool declared = scan == u"progressive"_s || scan == u"unknown"_s;
    const double combed = signal ? signal->interlacedRatio.value_or(0) : 0;
    const bool flagged = Numbers::above(combed, 0.2);
    if (declared && !flagged)
        return row.pass(u"progressive"_s);

    const auto& rates = rule.interlacedAllowedRates;
    if (rates && matchingRate(*rates, video.nominalFrameRate)) {
        const QString rate = Numbers::fixed(video.nominalFrameRate, 2);
        if (scan == u"bb"_s || scan == u"bt"_s)
            return row.expecting(u"progressive, or interlaced upper field first at "_s + rate)
                .warn(u"interlaced, lower field first"_s, u"Re-export upper field first."_s);
        return row.expecting(u"progressive, or interlaced at "_s + rate)
            .pass(u"interlaced, accepted at "_s + rate);
    }
    const QString measured =
        flagged ? u"%1% of sampled frames are interlaced"_s.arg(Numbers::fixed(combed * 100, 0))
                : u"field order "_s + scan;
    return row.fail(measured, scanTypeFix(media));
}

/// "420" as "4:2:0".
QString prettyChroma(const QString& chroma)
{
    if (chroma.size() != 3)
        return chroma;
    return u"%1:%2:%3"_s.arg(chroma.mid(0, 1), chroma.mid(1, 1), chroma.mid(2, 1));
}

} // namespace

void checkContainer(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.container)
        return;
    const ContainerRule& rule = *profile.container;
    rows.push_back(containerRow(rule, media.containerKind));
    if (rule.fastStartRecommended.value_or(false) && media.moovBeforeMdat)
        rows.push_back(fastStartRow(*media.moovBeforeMdat));
    const QString extension = media.url.extension();
    if (rule.lowercaseExtensionRequired.value_or(false) && extension != extension.toLower())
        rows.push_back(upperCaseExtensionRow(extension));
}

void checkResolution(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.video || profile.video->resolutions.empty() || !media.video)
        return;
    const auto& options = profile.video->resolutions;
    const CheckRow row{u"resolution"_s, u"Resolution"_s, Text::joined(options, u" or "_s, sizeOf)};
    const QString size = frameSize(media.video->shownWidth(), media.video->shownHeight());
    const auto match = std::ranges::find(options, size, sizeOf);
    if (match != options.end()) {
        rows.push_back(row.pass(isOnlyAccepted(*match, options) ? size + u" (accepted)"_s : size));
        return;
    }
    const auto preferred = std::ranges::find_if(options, isPreferred<ResolutionOption>);
    const auto& target = preferred == options.end() ? options.front() : *preferred;
    rows.push_back(row.fail(size, u"Re-export at %1."_s.arg(sizeOf(target))));
}

void checkPixels(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.video || !media.video)
        return;
    if (profile.video->squarePixelsRequired.value_or(false))
        rows.push_back(pixelAspectRow(media.video->sampleAspect.value_or(QString())));
    if (profile.video->progressiveRequired.value_or(false))
        rows.push_back(scanTypeRow(*profile.video, media));
}

void checkChroma(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.video || !media.video)
        return;
    const auto& preferred = profile.video->chromaPreferred;
    if (!preferred && !profile.video->chromaAccepted)
        return;
    const std::vector<QString> accepted =
        profile.video->chromaAccepted.value_or(std::vector<QString>());
    std::vector<QString> listed = accepted;
    if (preferred)
        listed.insert(listed.begin(), *preferred);

    const CheckRow row{u"chroma"_s, u"Chroma subsampling"_s,
                       Text::joined(listed, u" or "_s, prettyChroma)};
    const QString chroma = media.video->chroma.value_or(u"unknown"_s);
    const QString pretty = prettyChroma(chroma);
    if (preferred == chroma)
        rows.push_back(row.pass(pretty));
    else if (contains(accepted, chroma))
        rows.push_back(row.warn(u"%1 (accepted; %2 preferred)"_s.arg(
            pretty, prettyChroma(preferred.value_or(QString())))));
    else
        rows.push_back(row.fail(u"%1 (%2)"_s.arg(pretty, media.video->pixFmt),
                                u"Re-export with %1 chroma."_s.arg(row.expected)));
}

} // namespace vantroque::Checker
