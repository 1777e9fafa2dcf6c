#pragma once

#include "Signal/LiveDisplay.h"
#include "Signal/SignalLog.h"
#include "Signal/SignalPlan.h"

/// The run of ffmpeg that decodes a file, and whether it went far enough.
namespace vantroque::DecodeRun {

/// Runs the plan; what ffmpeg refuses the whole graph over is left out of the plan, and it is run
/// again; `restart` is called before that. `display` may be null. Blocks; fails as `FFTool::run`
/// does, but not for the status.
Result<FFTool::ToolOutput, FFToolError> run(const std::filesystem::path& ffmpeg,
                                            SignalAnalyzer::SignalPlan& plan, double timeout,
                                            SignalAnalyzer::LiveDisplay* display,
                                            const std::function<void()>& restart);

/// Whether a run gave something that can be measured, however it ended. A file that ends in damage
/// does as far as it goes; what was not decoded for another reason does not.
bool counts(const FFTool::ToolOutput& output, const MediaInfo& media, const SignalLog& log);

} // namespace vantroque::DecodeRun
