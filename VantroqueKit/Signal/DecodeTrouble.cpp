#include "Signal/DecodeTrouble.h"

#include "Base/Numbers.h"
#include "Signal/LogHeaders.h"
#include "Signal/LogText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vantroque {

using LogText::after;
using LogText::number;

namespace {

/// Complaints so close to each other have one cause: about a group of pictures, in seconds.
constexpr double nearby = 1.0;

/// Of a complaint that comes before the first measurement.
constexpr double beforeAll = -1e9;

/// Words of the decoders of pictures over data that cannot be what was encoded. A decoder that
/// makes up for it says how much it conceals.
constexpr std::array<std::string_view, 10> damagedPictureWords{
    "concealing ",                              // H.264, MPEG-2 and MPEG-4 Visual
    "error while decoding MB",                  // H.264
    "Error splitting the input into NAL units", // H.264 and HEVC
    "Invalid NAL unit size",                    // the same
    "Could not find ref with POC",              // HEVC
    "CABAC_MAX_BIN",                            // HEVC
    "damaged at ",                              // MPEG-2 and MPEG-4 Visual
    "ac tex damaged",                           // ProRes and DNxHD
    "invalid frame header",                     // ProRes
    "slice CRC mismatch",                       // FFV1
};

/// Words of demuxers over a container whose parts do not fit together.
constexpr std::array<std::string_view, 11> damagedContainerWords{
    "invalid as first byte of an EBML number",       // Matroska
    " indicated by an EBML number's first byte ",    // Matroska: longer than there may be
    "exceeds containing master element",             // Matroska
    "inside parent with finite size",                // Matroska
    "has unknown length, yet the length of",         // Matroska
    "for which no syntax for parsing is available",  // Matroska
    " considered as invalid data. Last known good ", // Matroska
    "Max EBML element depth ",                       // Matroska
    "Packet mismatch ",                              // Flash video
    "PES packet size mismatch",                      // transport stream
    "could not find sync byte",                      // transport stream
};

/// Words over pictures whose headers came before the file began.
constexpr std::array<std::string_view, 3> missingHeaderWords{
    "non-existing PPS",         // H.264
    "PPS id out of range",      // HEVC
    "Invalid frame dimensions", // MPEG-2
};

bool contains(std::string_view text, std::string_view key)
{
    return text.find(key) != std::string_view::npos;
}

template<typename Words>
bool containsAny(std::string_view text, const Words& words)
{
    return std::ranges::any_of(words, [&](std::string_view each) { return contains(text, each); });
}

/// The whole number that follows `key`.
std::optional<std::int64_t> wholeAfter(std::string_view line, std::string_view key)
{
    const auto rest = after(line, key);
    if (!rest)
        return std::nullopt;
    const std::size_t end = std::min(rest->find_first_not_of("0123456789"), rest->size());
    return Numbers::toInt(rest->substr(0, end));
}

} // namespace

std::vector<DecodeTrouble::Place> DecodeTrouble::joined(std::vector<Place> places)
{
    std::ranges::stable_sort(places, {}, &Place::start);
    std::vector<Place> joined;
    for (const Place& place : places) {
        if (joined.empty() || Numbers::above(place.start, joined.back().end + nearby)) {
            joined.push_back(place);
            continue;
        }
        Place& last = joined.back();
        last.end = std::max(last.end, place.end);
        last.picture = last.picture || place.picture;
        last.sound = last.sound || place.sound;
        last.missingFrames += place.missingFrames;
    }
    return joined;
}

DecodeTrouble::DecodeTrouble(std::string_view log, std::string_view path, double frameRate)
    : m_frameRate(frameRate)
{
    LogHeaders headers;
    LogText::forEachLine(log, [&](std::string_view line) {
        // A complaint about a frame begins with the file's name, as nothing in a header may.
        const bool isHeader = headers.holds(line);
        if (isHeader && (headers.isInside() || !m_isDecoding || !line.starts_with(path)))
            return;
        if (line == "Stream mapping:")
            m_isDecoding = true;
        else if (line.starts_with("  Stream #0:"))
            readMapping(line);
        else if (line.starts_with("[Parsed_metadata_"))
            readFrame(line);
        else if (line.starts_with("[Parsed_ametadata_")) {
            if (const auto time = after(line, "pts_time:")) {
                m_lastSound = number(*time);
                m_firstSound = m_firstSound ? m_firstSound : m_lastSound;
            }
        } else if (!line.starts_with("[Parsed_"))
            readComplaint(line, path);
    });
    settle();
}

/// "  Stream #0:1 (aac) -> asplit:default": only the picture goes to the detector of its borders.
void DecodeTrouble::readMapping(std::string_view line)
{
    const auto index = wholeAfter(line, "#0:");
    if (!m_isDecoding || !index)
        return;
    if (contains(line, "-> cropdetect"))
        m_pictureStream = index;
    else
        m_soundStreams.insert(*index);
}

/// Each frame is printed once a statistic, with its number and its time. Two frames may have the
/// same time. Where picture or sound change their form, ffmpeg builds its graph anew: numbers begin
/// again, and a frame that a filter of the old one still held decoded but is not printed.
void DecodeTrouble::readFrame(std::string_view line)
{
    const auto frame = wholeAfter(line, "frame:");
    const auto time = after(line, "pts_time:");
    const auto ticks = after(line, "pts:");
    const auto seconds = time ? number(*time) : std::nullopt;
    const auto tick = ticks ? number(*ticks) : std::nullopt;
    if (!m_isDecoding || !frame || !seconds || !tick)
        return;
    if (m_lastFrame && *tick == m_lastTicks && *frame == m_lastNumber)
        return;
    // Times have six digits: too few to tell a step late in a long film.
    if (*tick > 0 && *seconds > 0)
        m_secondsAtTick = *seconds / *tick;
    const double step = (*tick - m_lastTicks) * m_secondsAtTick;
    const std::int64_t held = m_lastFrame && *frame <= m_lastNumber ? 1 : 0;
    if (m_lastFrame && m_frameRate > 0
        && Numbers::above(step * m_frameRate, 1.6 + static_cast<double>(held))) {
        Place gap{.start = *m_lastFrame, .end = *seconds, .picture = true};
        gap.missingFrames = Numbers::roundedToInt(step * m_frameRate) - 1 - held;
        m_gaps.push_back(gap);
    }
    m_frames += 1 + held;
    m_lastNumber = *frame;
    m_lastTicks = *tick;
    m_lastFrame = seconds;
    m_firstFrame = m_firstFrame ? m_firstFrame : seconds;
}

void DecodeTrouble::readComplaint(std::string_view line, std::string_view path)
{
    if (line.starts_with(path)) {
        readStreamComplaint(line, "corrupt decoded frame in stream ", false, m_complaints);
        return;
    }
    if (const bool isError = line.starts_with("Error while decoding stream #0:");
        isError && contains(line, "Invalid data found")) {
        const bool isPicture = m_pictureStream == wholeAfter(line, "#0:");
        readStreamComplaint(line, "#0:", false, isPicture ? m_decodeErrors : m_complaints);
        return;
    }
    if (!line.starts_with('['))
        return;
    if (contains(line, "Packet corrupt (stream = ")) {
        const bool isTransport = line.starts_with("[mpegts");
        // A sound that was written to a pipe does not know its length.
        if (!line.starts_with("[wav"))
            readStreamComplaint(line, "(stream = ", !isTransport,
                                isTransport ? m_doubts : m_complaints);
    } else if (contains(line, ": partial file")) {
        readStreamComplaint(line, "] stream ", true, m_complaints);
    } else if (contains(line, "edit unit sync lost on stream ")) {
        readStreamComplaint(line, "on stream ", false, m_complaints);
    } else if (contains(line, "File ended prematurely")) {
        m_endedInPacket = true;
        complain(m_complaints, true, true);
    } else if (containsAny(line, damagedContainerWords)) {
        m_complainedEarly = m_complainedEarly || !m_isDecoding;
        complain(m_complaints, true, true);
    } else if (containsAny(line, damagedPictureWords)) {
        complain(m_complaints, true, false);
    } else if (contains(line, "no frame!")) {
        ++m_packetsWithoutFrame;
    } else if (!m_isDecoding && containsAny(line, missingHeaderWords)) {
        m_beganInsideGroup = true;
    }
}

/// A complaint about a stream that is told by its number. Others than picture and sound are not
/// decoded.
void DecodeTrouble::readStreamComplaint(std::string_view line, std::string_view key, bool meansEnd,
                                        std::vector<Place>& places)
{
    const auto stream = wholeAfter(line, key);
    if (!stream)
        return;
    const bool isPicture = m_pictureStream == stream;
    const bool isSound = m_soundStreams.contains(*stream);
    // Which streams are decoded is not yet known while ffmpeg looks at the file.
    if (m_isDecoding && !isPicture && !isSound)
        return;
    m_endedInPacket = m_endedInPacket || meansEnd;
    complain(places, isPicture, isSound);
}

/// At the place that was last measured of what the complaint is about: decoders run ahead of the
/// measurement by some frames.
void DecodeTrouble::complain(std::vector<Place>& places, bool picture, bool sound) const
{
    if (!m_isDecoding)
        return;
    const bool hasPicture = picture && m_pictureStream;
    const bool hasSound = sound && !m_soundStreams.empty();
    const double at = (hasPicture ? m_lastFrame : m_lastSound).value_or(beforeAll);
    if (!places.empty() && std::abs(places.back().end - at) <= nearby) {
        Place& last = places.back();
        last.start = std::min(last.start, at);
        last.end = std::max(last.end, at);
        last.picture = last.picture || hasPicture;
        last.sound = last.sound || hasSound;
    } else {
        places.push_back({.start = at, .end = at, .picture = hasPicture, .sound = hasSound});
    }
}

void DecodeTrouble::settle()
{
    // Some encoders end a stream with a packet that holds no picture. Where nothing else is amiss,
    // its error is none; a stream that begins inside a group loses pictures at its start.
    const bool isHarmless = m_packetsWithoutFrame > 0 && m_complaints.empty() && m_gaps.empty()
                            && std::ranges::none_of(m_decodeErrors, [](const Place& each) {
                                   return each.start == beforeAll;
                               });
    if (!isHarmless)
        m_complaints.insert(m_complaints.end(), m_decodeErrors.begin(), m_decodeErrors.end());
    const double start = m_firstFrame.value_or(m_firstSound.value_or(0));
    for (auto* places : {&m_complaints, &m_doubts})
        for (Place& place : *places) {
            place.start = std::max(place.start, start);
            place.end = std::max(place.end, start);
        }
    m_complaints = joined(std::move(m_complaints));
}

} // namespace vantroque
