#include "VantroqueApp/Views/Window/WindowMemory.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace vantroque::WindowMemory {

using namespace Qt::StringLiterals;

namespace {

QString key()
{
    return u"window.place"_s;
}

constexpr int grip = 96; ///< So much of the title must be on a screen to be taken hold of.

/// The screen that shows the title of a window there; none when it is gone.
const QScreen* screenOf(const QRect& place)
{
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen =
            screen->availableGeometry() & QRect(place.topLeft(), QSize(place.width(), 1));
        if (seen.width() >= std::min(grip, place.width()) && !seen.isEmpty())
            return screen;
    }
    return nullptr;
}

/// Left, top, width, height; nothing when that is no place of a window.
std::optional<QRect> placeIn(const QStringList& words)
{
    constexpr int farthest = 100'000;
    std::array<int, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers.at(i) = words.value(static_cast<qsizetype>(i)).toInt(&isNumber);
        if (!isNumber || std::abs(numbers.at(i)) > farthest)
            return std::nullopt;
    }
    const QRect place(numbers[0], numbers[1], numbers[2], numbers[3]);
    return place.isEmpty() ? std::nullopt : std::optional(place);
}

} // namespace

void keep(const QWidget& window, UserDefaults& defaults)
{
    // Of one that fills the screen, where it goes back to. The place is that of its frame.
    const QRect normal = window.normalGeometry();
    const bool isWhole = window.isMaximized() || window.isFullScreen();
    const QPoint corner = isWhole ? normal.topLeft() : window.pos();
    const QSize size = isWhole ? normal.size() : window.size();
    defaults.setText(key(), u"%1 %2 %3 %4 %5"_s.arg(corner.x())
                                .arg(corner.y())
                                .arg(size.width())
                                .arg(size.height())
                                .arg(window.isMaximized() ? u"maximized"_s : u"normal"_s));
}

bool restore(QWidget& window, const UserDefaults& defaults)
{
    const QStringList words = defaults.text(key()).value_or(QString()).split(u' ');
    const auto place = placeIn(words);
    if (!place)
        return false;
    const QScreen* screen = screenOf(*place);
    const QScreen* on = screen != nullptr ? screen : QGuiApplication::primaryScreen();
    const QSize size =
        place->size().boundedTo(on->availableSize()).expandedTo(window.minimumSize());
    window.resize(size);
    if (screen != nullptr)
        window.move(place->topLeft());
    if (words.value(4) == u"maximized"_s)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    return true;
}

void keepWidth(UserDefaults& defaults, const QString& key, int width)
{
    defaults.setText(key, QString::number(width));
}

std::optional<int> width(const UserDefaults& defaults, const QString& key, int least, int most)
{
    bool isNumber = false;
    const int width = defaults.text(key).value_or(QString()).toInt(&isNumber);
    return isNumber ? std::optional(std::clamp(width, least, most)) : std::nullopt;
}

} // namespace vantroque::WindowMemory
