#pragma once

#include "Records/Profile.h"

#include <QString>

#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace vantroque {

/// What integrated loudness a file should have to suit all selected platforms. Pure.
class LoudnessTarget {
public:
    /// No platform gives a target.
    struct None {
        bool operator==(const None&) const = default;
    };
    /// All platforms that give a target give this one.
    struct Single {
        double target = 0;    ///< LKFS
        double tolerance = 0; ///< LU; the tightest.
        bool operator==(const Single&) const = default;
    };
    /// At least two targets, ascending.
    struct Several {
        std::vector<double> targets; ///< LKFS
        bool operator==(const Several&) const = default;
    };

    /// The tolerance, in LU, where no platform gives one.
    static constexpr double defaultTolerance = 2.0;

    LoudnessTarget() = default;
    LoudnessTarget(Single single) : m_value(single) {}
    LoudnessTarget(Several several) : m_value(std::move(several)) {}
    static LoudnessTarget across(const std::vector<Profile>& profiles);

    /// Target and tolerance when there is one target.
    std::optional<Single> band() const;
    /// All targets, ascending: the ticks of a meter.
    std::vector<double> marks() const;
    QString caption() const;

    bool operator==(const LoudnessTarget&) const = default;

private:
    std::variant<None, Single, Several> m_value;
};

/// Between which true peaks, in dBTP, a file should stay to suit all selected platforms. Pure.
struct TruePeakRule {
    std::optional<double> floor;
    double ceiling = 0;

    /// Where a platform states a window of floor and ceiling, the windows alone decide. Nothing
    /// when no platform limits the peak.
    static std::optional<TruePeakRule> across(const std::vector<Profile>& profiles);
    static std::optional<QString> caption(const std::vector<Profile>& profiles);

    /// Whether `peak` lies inside, the limits themselves included.
    bool allows(double peak) const;
    QString caption() const;

    bool operator==(const TruePeakRule&) const = default;
};

} // namespace vantroque
