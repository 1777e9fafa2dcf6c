#include "Check/Checker.h"

#include "Check/Matching.h"
#include "Check/TextLimits.h"

#include <array>

namespace vantroque::Checker {

namespace {

/// The order of the rows in every report.
constexpr std::array checksInOrder{
    checkContainer, checkVideoCodec,    checkResolution, checkPixels,    checkChroma,
    checkFrameRate, checkCadence,       checkLevels,     checkBitrate,   checkRecommendedBitrate,
    checkAudio,     checkAudioCoverage, checkLoudness,   checkSoundScan, checkDuration,
    checkContent,   checkTextPlacement, checkFlashes,    checkFile,      checkDecoding,
};

bool namesZonesOnly(const Profile& profile)
{
    const auto& content = profile.content;
    const bool namesZones =
        content && content->textClearOfZones && !content->textClearOfZones->empty();
    return namesZones && !profile.container && !profile.video && !profile.frameRate
           && !profile.audio && !profile.loudness && !profile.sound && !profile.duration
           && !profile.file && !profile.recommendedBitrate && !content->slate
           && !content->letterboxForbidden && !content->headTailBlackForbidden
           && !content->textSafeFraction && !content->textRejectFraction;
}

} // namespace

ProfileReport evaluate(const Profile& profile, const MediaInfo& media)
{
    ProfileReport report;
    report.profileID = profile.id;
    report.profileName = profile.name;
    report.profileShortName = profile.shortName.value_or(profile.name);
    report.inferred = profile.inferred.value_or(false);
    report.sourceURL = profile.sourceURL;
    report.verifiedDate = profile.verifiedDate;
    if (profile.group == ProfileGroup::recommendation)
        report.advisory = true;
    for (const auto check : checksInOrder)
        check(profile, media, report.checks);
    return report;
}

bool applies(const Profile& profile, const MediaInfo& media)
{
    if (!namesZonesOnly(profile))
        return true;
    if (!media.video)
        return false;
    const auto family = TextLimits::family(*media.video);
    return std::ranges::any_of(PlatformZoneCatalog::zones(family), [&](const PlatformZone& zone) {
        return contains(*profile.content->textClearOfZones, zone.id);
    });
}

} // namespace vantroque::Checker
