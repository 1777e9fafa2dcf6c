#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vantroque {

/// What ffmpeg's log says about damage: what it complained of, and frames that are missing between
/// others. Many of its complaints are harmless, so that only those count which an intact file never
/// raises. Times are ffmpeg's. Never fails.
class DecodeTrouble {
public:
    /// `path` is the name that ffmpeg was given; some complaints begin with it. `frameRate` tells
    /// which step from frame to frame is too long; 0 when none is.
    DecodeTrouble(std::string_view log, std::string_view path, double frameRate);

    /// A passage with complaints, or with frames missing.
    struct Place {
        double start = 0;
        double end = 0;
        bool picture = false;
        bool sound = false;
        std::int64_t missingFrames = 0; ///< Between the frames that decoded.
    };

    /// The same places in order of time, those within a second of each other as one.
    static std::vector<Place> joined(std::vector<Place> places);

    /// Complaints, in order of time; those within a second of each other are one place.
    const std::vector<Place>& complaints() const { return m_complaints; }
    /// Frames that are missing between two others. Alone they are no damage: a recorder may have
    /// dropped them.
    const std::vector<Place>& gaps() const { return m_gaps; }
    /// Packets that a transport stream says to be incomplete. It says so as well where two whole
    /// streams were joined, so that alone it is no damage.
    const std::vector<Place>& doubtfulPackets() const { return m_doubts; }
    /// ffmpeg complained before it began to decode, where the log knows no time.
    bool complainedEarly() const { return m_complainedEarly; }
    /// The first pictures refer to a header that is not there: the stream begins inside a group.
    bool beganInsideGroup() const { return m_beganInsideGroup; }
    /// The file ended inside a packet or where its index says that there is more.
    bool endedInPacket() const { return m_endedInPacket; }

    std::int64_t frames() const { return m_frames; }
    std::optional<double> firstFrame() const { return m_firstFrame; }
    std::optional<double> lastFrame() const { return m_lastFrame; }
    std::optional<double> firstSound() const { return m_firstSound; }
    /// Where the last window of sound begins.
    std::optional<double> lastSound() const { return m_lastSound; }

private:
    void readMapping(std::string_view line);
    void readFrame(std::string_view line);
    void readComplaint(std::string_view line, std::string_view path);
    void readStreamComplaint(std::string_view line, std::string_view key, bool meansEnd,
                             std::vector<Place>& places);
    void complain(std::vector<Place>& places, bool picture, bool sound) const;
    void settle();

    bool m_isDecoding = false;
    double m_frameRate;
    std::optional<std::int64_t> m_pictureStream;
    std::set<std::int64_t> m_soundStreams;

    std::vector<Place> m_complaints;
    std::vector<Place> m_decodeErrors; ///< Of the picture, which may be of packets without one.
    std::vector<Place> m_gaps;
    std::vector<Place> m_doubts;
    std::int64_t m_packetsWithoutFrame = 0;
    bool m_complainedEarly = false;
    bool m_beganInsideGroup = false;
    bool m_endedInPacket = false;

    std::int64_t m_frames = 0;
    std::optional<double> m_firstFrame;
    std::optional<double> m_lastFrame;
    std::optional<double> m_firstSound;
    std::optional<double> m_lastSound;
    std::int64_t m_lastNumber = 0;
    double m_lastTicks = 0;     ///< Of the last frame, in units of its stream.
    double m_secondsAtTick = 0; ///< How long such a unit is, once known.
};

} // namespace vantroque
