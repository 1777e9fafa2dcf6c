#pragma once

#include <algorithm>
#include <optional>
#include <vector>

namespace vantroque {

/// When the sampled pictures of a decode were light, for telling where a black passage ended. A
/// decode that begins anew brings the same times once more.
class LightTimes {
public:
    /// Whether the time is later than all before; others change no answer.
    bool note(double time)
    {
        if (!m_latest.empty() && time <= m_latest.back())
            return false;
        m_latest.push_back(time);
        return true;
    }
    /// The time that was noted first of those after `time`. It was the latest then, so that only
    /// such times are kept, and they are in order.
    std::optional<double> firstAfter(double time) const
    {
        const auto found = std::upper_bound(m_latest.begin(), m_latest.end(), time);
        return found != m_latest.end() ? std::optional(*found) : std::nullopt;
    }

private:
    std::vector<double> m_latest;
};

} // namespace vantroque
