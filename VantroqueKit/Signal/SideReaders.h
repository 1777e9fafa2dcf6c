#pragma once

#include "Signal/FlashReader.h"
#include "Signal/SignalLog.h"
#include "Signal/SignalPlan.h"
#include "Signal/SoundReader.h"

#include <optional>

namespace vantroque {

/// Those who read along, beside the log, what only some profiles ask for.
class SideReaders {
public:
    /// Leaves out of the plan what cannot be read: without a scratch folder, or when no FIFO can be
    /// made in it. `source` must outlive it.
    SideReaders(SignalAnalyzer::SignalPlan& plan, const MediaInfo& source,
                const SignalAnalyzer::Options& options, bool hasScratch);

    // Each to be called when the tool has ended.

    /// Forgets what was read; the tool is to run once more.
    void restart();
    /// Takes out of the log's sums what was put out for them.
    void leaveOutOf(SignalLog& log);
    /// Adds what was found. What was asked for and could not be read in whole is there, and empty.
    void addTo(SignalInfo& info, const SignalLog& log);

private:
    std::optional<SoundScan> soundScan(const SignalLog& log, double soundStart);

    const MediaInfo& m_source;
    const SignalAnalyzer::SignalPlan& m_plan;
    bool m_isSoundAsked;
    bool m_areFlashesAsked;
    std::optional<SoundReader> m_sound;
    std::optional<FlashReader> m_flashes;
};

} // namespace vantroque
