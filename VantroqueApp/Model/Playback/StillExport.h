#pragma once

#include "Draw/Overlay.h"
#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Exports/Desktop.h"
#include "VantroqueApp/Model/Playback/FrameTimes.h"

#include <QObject>

#include <memory>
#include <stop_token>

namespace vantroque {

/// Stills of the frame that a player stands on, to where the operator chooses. Main thread.
class StillExport : public QObject {
    Q_OBJECT

public:
    /// `desktop` must outlive it.
    StillExport(const PlayedFile& file, Desktop& desktop);
    ~StillExport() override;

    /// With what lies on the picture, which may be nothing.
    void exportStill(std::int64_t frame, const Overlay& overlay);
    bool isIdle() const { return m_tasks.isIdle(); }

Q_SIGNALS:
    void begun();
    void saved(const vantroque::FileUrl& still);
    void failed(const QString& message); ///< For the operator.

private:
    const std::shared_ptr<const FrameTimes> m_times;
    Desktop& m_desktop;
    std::stop_source m_end;
    Tasks m_tasks; ///< Ends first.
};

} // namespace vantroque
