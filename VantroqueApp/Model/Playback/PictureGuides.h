#pragma once

#include "Framing/GuideBuilder.h"
#include "VantroqueApp/Model/Playback/PlayedFile.h"

#include <QObject>

namespace vantroque {

/// The guides over the picture of one player, as the operator chose them. Main thread.
class PictureGuides : public QObject {
    Q_OBJECT

public:
    /// With what was chosen last. `defaults` must outlive it.
    PictureGuides(const PlayedFile& file, UserDefaults& defaults);

    const GuideOptions& guideOptions() const { return m_options; }
    /// Remembers another choice.
    void setGuideOptions(const GuideOptions& options);
    /// What is drawn.
    const std::vector<Guide>& guides() const { return m_guides; }
    /// The zones that a picture of this shape can have.
    std::vector<PlatformZone> zones() const;
    /// So that a finding about them can be seen.
    void showZones();
    void showSafeAreas();

Q_SIGNALS:
    void changed();

private:
    const FrameShape m_shape;
    const std::optional<CropRect> m_activePicture;
    UserDefaults& m_defaults;
    GuideOptions m_options;
    std::vector<Guide> m_guides;
};

} // namespace vantroque
