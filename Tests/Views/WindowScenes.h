#pragma once

#include "Model/ModelFixture.h"
#include "VantroqueApp/Views/Window/MainWindow.h"

#include <QImage>

namespace vantroque {

/// A window over a model whose analyses say what the scene needs, so that every state can be shown
/// in no time.
namespace WindowScenes {

/// Platforms of three groups, with long names among them.
std::vector<Profile> profiles(int count = 6);
/// An engine whose outcome follows the file's name: "fail...", "warn...", "long..." fails in very
/// long words, "left..." is silent on the right, "sound..." has no picture, "bad..." cannot be
/// analysed (for a reason of several lines: "bad-lines"), "run..." goes on until `release`, all
/// others pass. One with "events" in its name has findings on the timeline. What follows on "run"
/// says how far it comes until then and with what, as in "run-surround" or "run-text".
class SceneEngine {
public:
    AnalysisEngine engine();
    void release();
    /// From now on analyses are held again.
    void hold();

private:
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_released = false;
};

/// A spot of half a minute with stereo sound, measured; too loud when asked.
MediaInfo media(const FileUrl& url, bool tooLoud);
/// A drawn picture.
QImage landscape();
/// The same, as a decode previews it.
const ScopeFrame& picture();

} // namespace WindowScenes
} // namespace vantroque
