#pragma once

#include "Playback/PlaybackEngine.h"
#include "VantroqueApp/Model/Playback/FrameSource.h"
#include "VantroqueApp/Model/Playback/PlayedFile.h"
#include "VantroqueApp/Model/Playback/StillStepper.h"

#include <QObject>

#include <memory>
#include <optional>

namespace vantroque {

/// The pictures of one file: from an engine as long as that works, and then, for good, as stills.
/// Main thread.
class FilmPictures : public QObject {
    Q_OBJECT

public:
    /// `makeEngine` may be null, where nothing can be played. Stills are `stillWidth` wide.
    FilmPictures(const PlayedFile& file, const PlaybackEngineMaker& makeEngine,
                 int stillWidth = StillStepper::width);
    ~FilmPictures() override;

    FrameSource& source() { return *m_source; }
    const FrameSource& source() const { return *m_source; }
    bool areStills() const { return m_areStills; }
    /// The frame on screen; nothing until the first came. Of an engine that failed the last picture
    /// stays until there is a still.
    const std::optional<ShownFrame>& shown() const;

Q_SIGNALS:
    void shownChanged();
    void readyChanged();  ///< What it can play, or where it was found to end, has changed.
    void sourceChanged(); ///< To stills. Whoever used the source before uses this one now.

private:
    void use(std::unique_ptr<FrameSource> source);
    void fallBackToStills();

    const PlayedFile m_file;
    const int m_stillWidth;
    bool m_areStills = false;
    std::unique_ptr<FrameSource> m_failed; ///< While it tells of its failure.
    std::optional<ShownFrame> m_lastOfFailed;
    std::unique_ptr<FrameSource> m_source; ///< Null only while this is made.
};

} // namespace vantroque
