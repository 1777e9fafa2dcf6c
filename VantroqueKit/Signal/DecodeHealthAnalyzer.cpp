#include "Signal/DecodeHealthAnalyzer.h"

#include "Base/Numbers.h"

#include <algorithm>
#include <cmath>

namespace vantroque::DecodeHealthAnalyzer {

using namespace Qt::StringLiterals;
using Place = DecodeTrouble::Place;

namespace {

/// How far a complaint may be from its cause, in seconds: decoders run ahead of the measurement.
constexpr double reach = 1.0;
/// Samples in one window of sound.
constexpr double windowSamples = 4800;

bool isNear(const Place& one, const Place& other)
{
    return !Numbers::above(one.start, other.end + reach)
           && !Numbers::above(other.start, one.end + reach);
}

bool isNearAny(const Place& place, const std::vector<Place>& places)
{
    return std::ranges::any_of(places, [&](const Place& each) { return isNear(place, each); });
}

double frameRate(const MediaInfo& media)
{
    return media.video ? std::max(media.video->nominalFrameRate, 0.0) : 0;
}

double soundEnd(const DecodeTrouble& trouble, const MediaInfo& media)
{
    const double rate =
        media.audio && media.audio->sampleRate > 0 ? media.audio->sampleRate : 48'000;
    return trouble.lastSound() ? *trouble.lastSound() + windowSamples / rate : 0;
}

/// Flash video has no index, and a cut between two packets leaves no trace but its duration.
bool endsBeforeItsDuration(const DecodeTrouble& trouble, const MediaInfo& media)
{
    if (media.containerKind != "flv"_L1 || !trouble.lastFrame())
        return false;
    const double end = std::max(*trouble.lastFrame(), soundEnd(trouble, media));
    return Numbers::below(end, media.durationSeconds - reach);
}

/// An AVI file keeps an empty packet for each frame that was dropped, and counts it.
bool keepsDroppedFrames(const MediaInfo& media)
{
    return media.containerKind == "avi"_L1;
}

/// The file lacks bytes, and still goes on up to its end: they are missing where it skips frames.
bool lostItsMiddle(const DecodeTrouble& trouble, const MediaInfo& media)
{
    return media.missingBytes.value_or(0) > 0 && media.video && !media.video->isVFR
           && !trouble.gaps().empty() && !keepsDroppedFrames(media)
           && !Numbers::below(trouble.lastFrame().value_or(0), media.durationSeconds - reach);
}

bool isCutOff(const DecodeTrouble& trouble, const MediaInfo& media)
{
    return trouble.endedInPacket() || endsBeforeItsDuration(trouble, media)
           || (media.missingBytes.value_or(0) > 0 && !lostItsMiddle(trouble, media));
}

/// The places where something is wrong. A step in time alone is none: a recorder may have dropped
/// frames. It is one where ffmpeg complains as well, and where the steps are just as many frames as
/// the file has more packets than frames that decode.
std::vector<Place> damagedPlaces(const DecodeTrouble& trouble, const MediaInfo& media)
{
    std::vector<Place> places = trouble.complaints();
    const auto isComplainedOf = [&](const Place& gap) {
        return isNearAny(gap, trouble.complaints()) || isNearAny(gap, trouble.doubtfulPackets());
    };
    // In a short file what was lost is enough for a variable rate. One that has it makes steps
    // elsewhere as well.
    if (!media.video
        || (media.video->isVFR && !std::ranges::all_of(trouble.gaps(), isComplainedOf)))
        return places;
    std::int64_t inGaps = 0;
    for (const Place& gap : trouble.gaps())
        inGaps += gap.missingFrames;
    const auto missing = media.video->frameCount.value_or(0) - trouble.frames();
    const bool accountsForAll = missing > 0 && missing == inGaps && !keepsDroppedFrames(media);
    for (const Place& gap : trouble.gaps())
        if (accountsForAll || lostItsMiddle(trouble, media) || isComplainedOf(gap))
            places.push_back(gap);
    return DecodeTrouble::joined(std::move(places));
}

/// How many frames the file promises. Where it is cut off, its header may know of more than its
/// packets. Matroska has a length for the whole alone, that counts from its start, and that of
/// Flash video counts from anywhere.
std::int64_t promisedFrames(const DecodeTrouble& trouble, const MediaInfo& media, bool isCut)
{
    const VideoStreamInfo& video = *media.video;
    const std::int64_t frames = trouble.frames();
    std::int64_t promised = video.frameCount.value_or(0);
    // The fields of one frame may come in a packet each.
    if (promised > 2 * frames - 2 && promised <= 2 * frames + 2 && trouble.gaps().empty())
        promised = frames;
    if (isCut && media.containerKind == "flv"_L1)
        return frames;
    if (isCut && !video.isVFR) {
        const bool isOfWhole = media.containerKind == "mkv"_L1 || media.containerKind == "webm"_L1;
        const double start = isOfWhole ? trouble.firstFrame().value_or(0) : 0;
        constexpr double rounding = 0.25; // of a frame; sound may be a little longer
        promised = std::max(
            promised,
            Numbers::truncatedToInt((video.durationSeconds - start) * frameRate(media) + rounding));
    }
    return std::max(promised, frames);
}

/// Seconds of a file without picture. That of PCM is reckoned from the size of the file.
double promisedSound(const MediaInfo& media)
{
    const bool isReckoned = media.containerKind == "wav"_L1 && media.fileSizeBytes > 0;
    const double lacking = isReckoned ? static_cast<double>(media.missingBytes.value_or(0))
                                            / static_cast<double>(media.fileSizeBytes)
                                      : 0;
    return media.durationSeconds * (1 + lacking);
}

} // namespace

DecodeHealth measure(const DecodeTrouble& trouble, const MediaInfo& media)
{
    DecodeHealth health;
    const bool hasPicture = media.video && trouble.lastFrame();
    const double start = trouble.firstFrame().value_or(trouble.firstSound().value_or(0));
    const double end = hasPicture ? *trouble.lastFrame() : soundEnd(trouble, media);
    const bool isCut = isCutOff(trouble, media);
    std::vector<Place> places = damagedPlaces(trouble, media);
    if (hasPicture && trouble.beganInsideGroup()
        && media.video->frameCount.value_or(0) > trouble.frames()) {
        places.push_back({.start = start, .end = start, .picture = true});
        places = DecodeTrouble::joined(std::move(places));
    }
    if (places.empty() && trouble.complainedEarly() && !isCut)
        places.push_back({.start = start,
                          .end = start,
                          .picture = hasPicture,
                          .sound = media.audio.has_value()});
    // What is wrong at the very end of a file that is cut off is that it ends.
    if (isCut)
        std::erase_if(
            places, [&](const Place& place) { return !Numbers::below(place.start, end - reach); });
    for (const Place& place : places)
        if (health.places.size() < mostPlaces)
            health.places.push_back({std::max(place.start - start, 0.0),
                                     std::max(place.end - start, 0.0), place.picture, place.sound});
    health.placeCount = std::ssize(places);
    const bool isDamaged = isCut || !places.empty();
    if (isCut)
        health.endsAt = std::max(end - start, 0.0);
    if (media.video) {
        health.framesDecoded = trouble.frames();
        health.framesPromised =
            isDamaged ? promisedFrames(trouble, media, isCut || lostItsMiddle(trouble, media))
                      : trouble.frames();
    } else if (trouble.lastSound()) {
        health.soundSeconds = health.soundSecondsPromised = end - start;
        if (const double promised = promisedSound(media);
            isDamaged && Numbers::below(end + 0.1, promised))
            health.soundSecondsPromised = promised;
    }
    return health;
}

} // namespace vantroque::DecodeHealthAnalyzer
