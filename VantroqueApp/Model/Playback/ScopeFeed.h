#pragma once

#include "Picture/ScopeOptions.h"
#include "Records/ColorMatrix.h"
#include "VantroqueApp/Model/Background/LatestOnly.h"
#include "VantroqueApp/Model/Playback/FrameSource.h"
#include "VantroqueApp/Model/Playback/PlayerClock.h"

#include <QObject>

#include <memory>
#include <optional>

namespace vantroque {

/// The scopes of the frame on screen, drawn in the background at most 30 times a second, and one
/// at a time: a slow one skips frames. Main thread.
class ScopeFeed : public QObject {
    Q_OBJECT

public:
    /// Null where they are off or not drawn yet.
    struct ScopeImages {
        QImage waveform;
        QImage parade;
        QImage vectorscope;
        QImage zebra; ///< The hatch over what is out of range, of the size of the sampled frame.
    };

    /// `defaults` and `clock` must outlive it.
    ScopeFeed(UserDefaults& defaults, PlayerClock& clock, QSize sampleSize, ColorMatrix matrix);

    const ScopeOptions& scopeOptions() const { return m_options; }
    /// Remembers another choice.
    void setScopeOptions(const ScopeOptions& options);
    const ScopeImages& scopeImages() const { return m_images; }
    /// Each place has a choice of its own.
    void setPlace(ScopePlace place);
    /// Of the pictures.
    ColorMatrix matrix() const { return m_matrix; }

    /// Samples another source, which must stay until the next call; null for none.
    void use(const FrameSource* frames);

Q_SIGNALS:
    void optionsChanged();
    void imagesChanged();

private:
    void startOrStop();
    void poll();

    UserDefaults& m_defaults;
    PlayerClock& m_clock;
    const QSize m_sampleSize;
    const ColorMatrix m_matrix;
    ScopePlace m_place = ScopePlace::report;
    ScopeOptions m_options;
    ScopeImages m_images;
    const FrameSource* m_frames = nullptr;
    std::optional<std::int64_t> m_rendered; ///< The frame that the images are of, or will be.
    std::unique_ptr<Ticker> m_polls;
    LatestOnly m_renders; ///< Ends first.
};

} // namespace vantroque
