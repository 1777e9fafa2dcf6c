#include "Signal/LoudestPlace.h"

#include "Signal/LogText.h"

namespace vantroque {

using LogText::after;
using LogText::number;
using LogText::word;

namespace {

constexpr double gate = -70; ///< LUFS, of ITU-R BS.1770; windows that are not full read less.
constexpr double step = 0.1; ///< Seconds from one line to the next.
constexpr double momentarySeconds = 0.4;
constexpr double shortTermSeconds = 3;
constexpr std::size_t momentsOfWindow = 27; ///< That lie in three seconds, a step apart.

std::optional<double> audible(std::string_view line, std::string_view key)
{
    const auto text = after(line, key);
    const auto loudness = text ? number(*text) : std::nullopt;
    return loudness && *loudness > gate ? loudness : std::nullopt;
}

} // namespace

void LoudestPlace::read(std::string_view line)
{
    if (m_isClosed)
        *this = LoudestPlace();
    if (const auto time = number(line)) {
        m_hasRead = true;
        readLoudness(*time, line);
        readPeaks(*time, line);
    }
}

std::optional<double> LoudestPlace::loudness() const
{
    const auto& found = m_inLoudestWindow ? m_inLoudestWindow : m_loudestMoment;
    return found ? std::optional(found->end - momentarySeconds) : std::nullopt;
}

std::optional<LoudestWindow> LoudestPlace::shortTerm() const
{
    return loudest(m_loudestWindow, shortTermSeconds);
}

std::optional<LoudestWindow> LoudestPlace::momentary() const
{
    return loudest(m_loudestMoment, momentarySeconds);
}

std::optional<LoudestWindow> LoudestPlace::loudest(const std::optional<Moment>& window,
                                                   double seconds) const
{
    constexpr double silent = -99;
    if (!m_hasRead)
        return std::nullopt;
    return window ? LoudestWindow{*window->loudness, window->end - seconds}
                  : LoudestWindow{silent, 0};
}

void LoudestPlace::readLoudness(double time, std::string_view line)
{
    const auto keepLouder = [](const Moment& moment, std::optional<Moment>& loudest) {
        if (moment.loudness && (!loudest || *moment.loudness > *loudest->loudness))
            loudest = moment;
    };
    m_recent.push_back({time, audible(line, " M:")});
    keepLouder(m_recent.back(), m_loudestMoment);
    if (m_recent.size() > momentsOfWindow)
        m_recent.pop_front();
    const auto window = audible(line, " S:");
    if (!window || (m_loudestWindow && *window <= *m_loudestWindow->loudness))
        return;
    m_loudestWindow = {time, window};
    m_inLoudestWindow.reset();
    for (const Moment& moment : m_recent)
        keepLouder(moment, m_inLoudestWindow);
}

/// "TPK: -20.0  -inf dBFS", each channel's of all so far.
void LoudestPlace::readPeaks(double time, std::string_view line)
{
    std::string_view rest = after(line, " TPK:").value_or(std::string_view());
    for (auto next = word(rest); !next.empty() && next != "dBFS"; next = word(rest)) {
        const auto peak = Numbers::toDouble(next);
        if (peak && *peak > m_peak) {
            m_peak = *peak;
            m_peakStart = time - step;
        }
        rest = rest.substr(static_cast<std::size_t>(next.data() + next.size() - rest.data()));
    }
}

} // namespace vantroque
