#pragma once

#include "Picture/ComparedFrame.h"
#include "Records/ScopeFrame.h"

#include <QImage>
#include <QObject>
#include <QSize>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace vantroque {

/// A frame as it is shown: turned as the file's tag says, its pixels as many as there are.
struct ShownFrame {
    std::int64_t frame = 0;
    QImage picture;
};

/// Where a player has its pictures from. Main thread; pictures are made in the background.
class FrameSource : public QObject {
    Q_OBJECT

public:
    /// What is on screen: the frame that was aimed at, or the last before it came.
    const std::optional<ShownFrame>& shown() const { return m_shown; }

    /// Where the playhead stands, and how fast it travels; 0 is at rest.
    virtual void aim(std::int64_t frame, double rate) = 0;
    virtual bool canPlay(double rate) const = 0;
    /// A picture takes so long to come that whoever walks should wait for it.
    virtual bool isBusy() const { return false; }
    /// It was tried, and no picture can be read.
    virtual bool isWithoutPicture() const { return false; }
    /// It is at work on what was aimed at, and has not got it.
    virtual bool isBehind() const { return isBusy(); }
    /// Where the picture was found to end.
    virtual std::optional<std::int64_t> lastFrame() const { return std::nullopt; }

    virtual void startSound([[maybe_unused]] double seconds) {}
    virtual void stopSound() {}
    /// The moment that is heard; nothing while there is no sound.
    virtual std::optional<double> soundSeconds() const { return std::nullopt; }

    /// The samples that the frame on screen was made of.
    struct Decoded {
        ComparedFrame frame;
        std::shared_ptr<const void> pixels; ///< The frame is a view of what this holds.
    };
    /// Nothing where there are none: a still is a picture for the screen.
    virtual std::optional<Decoded> decoded() const { return std::nullopt; }

    /// Samples the frame on screen for scopes; for a thread in the background.
    using Sampling = std::function<std::optional<ScopeFrame>()>;
    /// Null while nothing is on screen.
    virtual Sampling sampling(QSize size) const = 0;

Q_SIGNALS:
    void shownChanged();
    void readyChanged(); ///< What it can play, or where it was found to end, has changed.
    void failed();       ///< No picture will come from it any more.

protected:
    void show(std::int64_t frame, const QImage& picture);

private:
    std::optional<ShownFrame> m_shown;
};

} // namespace vantroque
