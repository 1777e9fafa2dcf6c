#pragma once

#include "App/Screen.h"
#include "App/ScreenReader.h"
#include "Platform/NumberedImage.h"

#include <optional>
#include <vector>

namespace vantroque {

/// The window with a player of a numbered clip at 25 frames a second, as one sees it on a screen
/// and works in it with mouse and keyboard. Nothing but pixels is known of it.
class DeskWindow {
public:
    explicit DeskWindow(const Screen& screen) : m_screen(screen) {}

    /// Waits until the picture of the first frame is on the screen, which shows where all is.
    bool soonOpen();

    // What is read.

    /// The number that the picture carries; nothing while it cannot be told.
    std::optional<int> numberShown() const { return numberOn(picture()); }
    /// The frame that the timecode field names.
    std::optional<int> frameInField();
    /// Until picture and field show one frame, and which; nothing when that takes too long.
    std::optional<int> soonAgreed();
    bool soonShows(int frame);
    /// The numbers of so many pictures that come one after the other.
    std::vector<int> passing(std::size_t count) const;
    /// Whether words come to stand in the comments.
    bool soonSays(const QString& words);
    QImage picture() const { return m_screen.picture().copy(m_picture); }
    /// How many points of a picture are drawn on with the red marker.
    static int redPoints(const QImage& picture);

    // Where to point.

    /// A place of the picture, in fractions of it.
    QPoint inPicture(double x, double y) const;
    /// On the line of time, below what is marked on it.
    QPoint onTimeline(double share) const;
    /// To which frame a place on the line of time leads.
    int frameAt(QPoint place, int lastFrame) const;
    QPoint moreButton() const;
    /// Where a word that begins so comes to stand in the comments, or an empty place.
    QRect soonFound(const QString& beginning);

private:
    QRect timeline() const;
    QRect transport() const;
    QRect comments() const;

    const Screen& m_screen;
    ScreenReader m_reader;
    QRect m_picture; ///< On the screen.
};

} // namespace vantroque
