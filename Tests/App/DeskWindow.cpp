#include "App/DeskWindow.h"

#include "Base/Timecode.h"
#include "Tools/ProcessTable.h"

#include <cmath>

namespace vantroque {

namespace {

constexpr int timelineHeight = 34;
constexpr int timelineInset = 12;
constexpr int transportHeight = 48;

bool isWhite(QRgb color)
{
    constexpr int least = 0xF8; // nothing else in the dark look comes near
    return qRed(color) >= least && qGreen(color) >= least && qBlue(color) >= least;
}

/// The longest white run of a row; empty where there is none.
QRect whiteRun(const QImage& screen, int row)
{
    QRect longest;
    int begin = 0;
    for (int x = 0; x <= screen.width(); ++x) {
        if (x < screen.width() && isWhite(screen.pixel(x, row)))
            continue;
        if (x - begin > longest.width())
            longest = QRect(begin, row, x - begin, 1);
        begin = x + 1;
    }
    return longest;
}

/// The picture of frame 0: its lower half is white, the upper one black.
QRect firstPicture(const QImage& screen)
{
    constexpr int least = 300;
    QRect white;
    for (int row = 0; row < screen.height(); ++row) {
        const QRect run = whiteRun(screen, row);
        if (run.width() >= least && (white.isEmpty() || run.left() == white.left()))
            white |= run;
    }
    return white.adjusted(0, -white.height(), 0, 0);
}

} // namespace

bool DeskWindow::soonOpen()
{
    return comesTrue([&] {
        m_picture = firstPicture(m_screen.picture());
        constexpr int roughly = 4; // half a row may be neither black nor white
        return std::abs(m_picture.height() * 2 - m_picture.width()) <= roughly && numberShown() == 0
               && frameInField() == 0;
    });
}

std::optional<int> DeskWindow::frameInField()
{
    // Without its frame, and without the film's length beside it.
    const QRect time(transport().left() + 62, transport().top() + 10, 101, 28);
    const QString text = m_reader.digits(m_screen.picture(), time);
    const auto read = Timecode::parse(text, FrameRate::television());
    return read && text.size() == 11 ? std::optional(static_cast<int>(read->frame()))
                                     : std::nullopt;
}

std::optional<int> DeskWindow::soonAgreed()
{
    std::optional<int> frame;
    const bool agreed = comesTrue([&] {
        frame = frameInField();
        return frame && frame == numberShown();
    });
    return agreed ? frame : std::nullopt;
}

bool DeskWindow::soonShows(int frame)
{
    return comesTrue([&] { return numberShown() == frame && frameInField() == frame; });
}

std::vector<int> DeskWindow::passing(std::size_t count) const
{
    std::vector<int> numbers;
    comesTrue([&] {
        const auto number = numberShown();
        if (number && (numbers.empty() || numbers.back() != *number))
            numbers.push_back(*number);
        return numbers.size() == count;
    });
    return numbers;
}

/// Blanks are not counted: small ones are easily overlooked.
bool DeskWindow::soonSays(const QString& words)
{
    const QString wanted = QString(words).remove(u' ');
    return comesTrue([&] {
        QString all;
        for (const auto& word : m_reader.words(m_screen.picture(), comments()))
            all += word.text;
        return all.contains(wanted);
    });
}

QRect DeskWindow::soonFound(const QString& beginning)
{
    QRect place;
    comesTrue([&] {
        for (const auto& each : m_reader.words(m_screen.picture(), comments()))
            if (each.text.startsWith(beginning))
                place = each.place;
        return !place.isEmpty();
    });
    return place;
}

int DeskWindow::redPoints(const QImage& picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb color = picture.pixel(x, y);
            constexpr int margin = 80;
            count += qRed(color) - std::max(qGreen(color), qBlue(color)) > margin ? 1 : 0;
        }
    return count;
}

QPoint DeskWindow::inPicture(double x, double y) const
{
    return m_picture.topLeft() + QPointF(x * m_picture.width(), y * m_picture.height()).toPoint();
}

QPoint DeskWindow::onTimeline(double share) const
{
    constexpr int fromBottom = 6;
    const double length = timeline().width() - 2 * timelineInset;
    return {timeline().left() + timelineInset + qRound(share * length),
            timeline().bottom() - fromBottom};
}

int DeskWindow::frameAt(QPoint place, int lastFrame) const
{
    const double length = timeline().width() - 2 * timelineInset;
    return qRound((place.x() - timeline().left() - timelineInset) / length * lastFrame);
}

QPoint DeskWindow::moreButton() const
{
    constexpr int fromRight = 25;
    return {transport().right() - fromRight, transport().center().y()};
}

QRect DeskWindow::timeline() const
{
    return {m_picture.left(), m_picture.bottom() + 1, m_picture.width(), timelineHeight};
}

QRect DeskWindow::transport() const
{
    return {m_picture.left(), timeline().bottom() + 1, m_picture.width(), transportHeight};
}

/// As far as the screen goes: nothing stands below the window.
QRect DeskWindow::comments() const
{
    const int top = transport().bottom() + 1;
    return {m_picture.left(), top, m_picture.width(), m_screen.picture().height() - top};
}

} // namespace vantroque
