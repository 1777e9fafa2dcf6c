#include "Base/Numbers.h"
#include "Probe/PacketListReader.h"
#include "Probe/Prober.h"
#include "Tools/FFTool.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace vantroque::Prober {

using namespace Qt::StringLiterals;

namespace {

/// Intervals may deviate by this share of the expected one, and this share of them may do so.
constexpr double intervalTolerance = 0.12;
constexpr double deviatingShareAllowed = 0.02;
constexpr std::size_t fewestTimes = 9;
/// Seconds. Closer packets are none of a picture's, not even at 240 fields a second.
constexpr double shortestField = 0.004;
/// Buckets end after a day, so that a broken time cannot fill the memory.
constexpr double lastSecond = 86'400.0;

/// Gathers what the packets tell, one after the other.
class PacketTally {
public:
    void add(const Packet& packet)
    {
        ++m_count;
        if (packet.ptsTime.value_or(0) < 0)
            ++m_aheadOfZero;
        if (const auto time = packet.ptsTime ? packet.ptsTime : packet.dtsTime)
            m_times.push_back(*time);
        else
            ++m_untimed;
        if (packet.dtsTime)
            m_decodingTimes.push_back(*packet.dtsTime);
        m_arePresented = m_arePresented && packet.ptsTime;
        const auto time = packet.dtsTime ? packet.dtsTime : packet.ptsTime;
        if (!time || !packet.size)
            return;
        const double bits = *packet.size * 8;
        m_totalBits += bits;
        if (*time >= 0 && *time < lastSecond)
            m_bitsOfSecond[Numbers::truncatedToInt(*time)] += bits;
    }

    PacketStats stats(double nominalFPS, bool areFields)
    {
        // A program stream may leave out the one time and not the other, and both in one row would
        // make neighbours of frames that are shown apart.
        if (!m_arePresented && std::ssize(m_decodingTimes) == m_count)
            m_times = std::move(m_decodingTimes);
        std::ranges::sort(m_times);
        if (areFields)
            joinFields();
        PacketStats stats;
        stats.totalBits = m_totalBits;
        stats.packetCount = m_count;
        stats.aheadOfZero = m_aheadOfZero;
        for (const auto& [second, bits] : m_bitsOfSecond)
            stats.perSecondKbps.push_back(bits / 1000.0);
        stats.constantRate = constantRate();
        // Where the file says how many fields come in a second, frames are half of that.
        if (areFields && stats.constantRate && !Numbers::above(*stats.constantRate, nominalFPS))
            nominalFPS = *stats.constantRate;
        const double share = deviatingShare(nominalFPS);
        stats.isVFR = Numbers::above(share, deviatingShareAllowed);
        if (stats.isVFR)
            stats.vfrDetail = u"%1% of frame intervals deviate from the %2 fps cadence"_s.arg(
                Numbers::fixed(share * 100, 0), Numbers::fixed(nominalFPS, 3));
        return stats;
    }

private:
    /// Leaves the first field of each frame. Of two fields in one packet of the container the
    /// second has no time; others follow each other at half a frame, which may be as long as all
    /// intervals.
    void joinFields()
    {
        if (m_times.size() < 2)
            return;
        const bool areTimed = m_untimed * 50 <= m_count;
        if (areTimed) {
            double field = m_times.back() - m_times.front();
            for (std::size_t i = 1; i < m_times.size(); ++i)
                if (const double interval = m_times[i] - m_times[i - 1]; interval > shortestField)
                    field = std::min(field, interval);
            std::vector<double> frames;
            for (std::size_t i = 0; i < m_times.size(); ++i) {
                frames.push_back(m_times[i]);
                if (i + 1 < m_times.size()
                    && Numbers::below(m_times[i + 1] - m_times[i], 1.5 * field))
                    ++i;
            }
            m_times = std::move(frames);
        }
        m_count = std::ssize(m_times);
        m_untimed = 0;
        m_aheadOfZero = std::ranges::count_if(m_times, [](double time) { return time < 0; });
    }

    /// The share of intervals that do not fit the rate; 0 when too little is known. A program
    /// stream gives no time to some frames, so that the intervals around them are whole multiples.
    double deviatingShare(double nominalFPS)
    {
        if (nominalFPS <= 0 || m_times.size() < fewestTimes)
            return 0;
        const double expected = 1 / nominalFPS;
        std::size_t deviating = 0;
        std::int64_t untimed = m_untimed;
        for (std::size_t i = 1; i < m_times.size(); ++i) {
            const double interval = m_times[i] - m_times[i - 1];
            const auto frames = std::clamp<std::int64_t>(Numbers::roundedToInt(interval / expected),
                                                         1, untimed + 1);
            if (Numbers::above(std::abs(interval - static_cast<double>(frames) * expected),
                               intervalTolerance * expected))
                ++deviating;
            else
                untimed -= frames - 1;
        }
        return static_cast<double>(deviating) / static_cast<double>(m_times.size() - 1);
    }

    /// The rate of the intervals that are like most, when all but a few are. One may always differ:
    /// a fragmented file can begin with a frame that waits for the sound.
    std::optional<double> constantRate() const
    {
        if (m_times.size() < fewestTimes)
            return std::nullopt;
        std::vector<double> intervals;
        for (std::size_t i = 1; i < m_times.size(); ++i)
            intervals.push_back(m_times[i] - m_times[i - 1]);
        std::vector<double> ordered = intervals;
        const auto middle = ordered.begin() + std::ssize(ordered) / 2;
        std::ranges::nth_element(ordered, middle);
        const double usual = *middle;
        std::erase_if(intervals, [usual](double interval) {
            return Numbers::above(std::abs(interval - usual), intervalTolerance * usual);
        });
        const auto deviating = static_cast<double>(ordered.size() - intervals.size());
        const double allowed = deviatingShareAllowed * static_cast<double>(ordered.size());
        const double seconds = std::accumulate(intervals.begin(), intervals.end(), 0.0);
        if (Numbers::above(deviating, std::max(allowed, 1.0)) || seconds <= 0)
            return std::nullopt;
        return static_cast<double>(intervals.size()) / seconds;
    }

    std::vector<double> m_times; ///< Of frames, in order once all are there.
    std::vector<double> m_decodingTimes;
    bool m_arePresented = true; ///< All packets say when they are shown.
    std::map<std::int64_t, double> m_bitsOfSecond;
    double m_totalBits = 0;
    std::int64_t m_count = 0;
    std::int64_t m_untimed = 0; ///< Packets without any time.
    std::int64_t m_aheadOfZero = 0;
};

} // namespace

Result<PacketStats> packetStats(const std::filesystem::path& ffprobe, const FileUrl& url,
                                double nominalFPS, const std::string& stream,
                                const std::function<bool()>& areFields)
{
    PacketTally tally;
    PacketListReader reader([&](const Packet& packet) { tally.add(packet); });
    FFTool::Observer observer;
    observer.keepOutput = false;
    observer.output = [&](std::string_view chunk) { reader.feed(chunk); };
    TRY(FFTool::run(ffprobe,
                    {"-v", "error", "-print_format", "json", "-select_streams", stream,
                     "-show_entries", "packet=pts_time,dts_time,size", url.path().native()},
                    {.reads = {url.path()}, .observer = observer}));
    if (!reader.isComplete())
        return failure(u"ffprobe printed a packet list that is not valid JSON"_s);
    return tally.stats(nominalFPS, areFields && areFields());
}

} // namespace vantroque::Prober
