#include "Draw/Shadow.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <numbers>
#include <optional>
#include <vector>

namespace vantroque::Shadow {

namespace {

/// The share of a normal distribution that lies below `x` standard deviations.
double below(double x)
{
    return std::erfc(-x / std::numbers::sqrt2) / 2;
}

/// The colour of a line with its shadow, by the square of the distance from its middle. In pixels.
class Profile {
public:
    /// Without a colour the shadow alone.
    Profile(double width, double deviation, double opacity, const std::optional<QColor>& line)
        : m_reach(width / 2 + 2.5 * deviation)
    {
        for (int i = 0; i < steps; ++i) {
            const double distance = std::sqrt((i + 0.5) / perStep());
            const double dark = below((distance + width / 2) / deviation)
                                - below((distance - width / 2) / deviation);
            const double covered = line ? std::clamp(width / 2 + 0.5 - distance, 0.0, 1.0) : 0;
            m_colors[static_cast<std::size_t>(i)] =
                over(line.value_or(Qt::black), covered, opacity * dark);
        }
    }

    /// Further away there is nothing.
    double reach() const { return m_reach; }
    /// Where in the profile a distance is.
    std::uint16_t step(double squaredDistance) const
    {
        return static_cast<std::uint16_t>(std::min<double>(squaredDistance * perStep(), steps));
    }
    /// Premultiplied.
    QRgb color(std::uint16_t step) const { return m_colors[step]; }

private:
    static constexpr int steps = 4096;

    static QRgb over(const QColor& line, double covered, double dark)
    {
        const auto part = [covered](int value) {
            return static_cast<int>(std::lround(value * covered));
        };
        return qRgba(part(line.red()), part(line.green()), part(line.blue()),
                     static_cast<int>(std::lround(255 * (covered + dark * (1 - covered)))));
    }

    double perStep() const { return steps / (m_reach * m_reach); }

    double m_reach;
    std::array<QRgb, steps + 1> m_colors{}; ///< The last one is nothing.
};

/// The lengths of a pen that dashes.
struct Dash {
    double on = 0;
    double period = 0;
};

/// What a pen that dashes draws of a line.
std::vector<QLineF> dashes(const QPolygonF& line, const Dash& dash)
{
    std::vector<QLineF> dashes;
    double passed = 0;
    for (qsizetype i = 1; i < line.size(); ++i) {
        constexpr double most = 10'000; // cannot be told apart
        const QLineF piece(line[i - 1], line[i]);
        const double length = piece.length();
        const double first = std::floor(passed / dash.period);
        const double count = std::ceil((passed + length) / dash.period) - first;
        if (count > most)
            dashes.push_back(piece);
        for (int number = 0; number < count && count <= most; ++number) {
            const double start = (first + number) * dash.period - passed;
            const double from = std::max(start, 0.0);
            const double to = std::min(start + dash.on, length);
            if (from < to)
                dashes.emplace_back(piece.pointAt(from / length), piece.pointAt(to / length));
        }
        passed += length;
    }
    return dashes;
}

/// A shadow is too soft to tell of turns within half a pixel.
std::vector<QLineF> pieces(const QPolygonF& line)
{
    constexpr double visible = 0.5;
    std::vector<QLineF> pieces;
    QPointF from = line.front();
    for (qsizetype i = 1; i < line.size(); ++i)
        if (const QLineF piece(from, line[i]); i + 1 == line.size() || piece.length() >= visible) {
            pieces.push_back(piece);
            from = line[i];
        }
    return pieces;
}

/// How far pixels are from a line, in squares of them, of which only those exist that it is near,
/// so that its cost is that of the line and not of the area around it.
class Squares {
public:
    Squares(const QRect& area, const Profile& profile)
        : m_area(area),
          m_profile(profile),
          m_columns((area.width() + side - 1) / side),
          m_squares(static_cast<std::size_t>(m_columns)
                    * static_cast<std::size_t>((area.height() + side - 1) / side))
    {
    }

    void add(const QLineF& line)
    {
        const double reach = m_profile.reach();
        const QRectF around = QRectF(line.p1(), line.p2()).normalized();
        const QRect box =
            (around.adjusted(-reach, -reach, reach, reach) & QRectF(m_area)).toAlignedRect()
            & m_area;
        for (int y = box.top(); y <= box.bottom(); ++y)
            addRow(line, y, box.left(), box.right());
    }

    void paint(QPainter& painter) const
    {
        const double ratio = painter.device()->devicePixelRatioF();
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        for (std::size_t i = 0; i < m_squares.size(); ++i) {
            if (!m_squares[i])
                continue;
            std::ranges::transform(*m_squares[i], reinterpret_cast<QRgb*>(image.bits()),
                                   [this](std::uint16_t step) { return m_profile.color(step); });
            const int number = static_cast<int>(i);
            const QPoint place =
                m_area.topLeft() + side * QPoint(number % m_columns, number / m_columns);
            painter.drawImage(QPointF(place) / ratio, image);
        }
    }

private:
    static constexpr int side = 64;
    using Square = std::array<std::uint16_t, std::size_t{side} * side>;

    void addRow(const QLineF& line, int y, int left, int right)
    {
        const QPointF along = line.p2() - line.p1();
        const double squaredLength = QPointF::dotProduct(along, along);
        const double up = y + 0.5 - line.y1();
        // Of a long slanted line only a short part of its box is near.
        if (std::abs(along.y()) > 1e-6) {
            const double middle = line.x1() + up * along.x() / along.y();
            const double half = m_profile.reach() * std::sqrt(squaredLength) / std::abs(along.y());
            const auto inBox = [left, right](double x) {
                return static_cast<int>(std::clamp(x, left - 1.0, right + 1.0));
            };
            left = std::max(left, inBox(std::floor(middle - half)));
            right = std::min(right, inBox(std::ceil(middle + half)));
        }
        const double perLength = squaredLength > 0 ? 1 / squaredLength : 0;
        for (int x = left; x <= right;) {
            std::uint16_t* pixel = at(x, y);
            const int end = std::min(right, x + side - 1 - (x - m_area.left()) % side);
            for (; x <= end; ++x, ++pixel) {
                const double over = x + 0.5 - line.x1();
                const double share =
                    std::clamp((over * along.x() + up * along.y()) * perLength, 0.0, 1.0);
                const double dx = over - share * along.x();
                const double dy = up - share * along.y();
                *pixel = std::min(*pixel, m_profile.step(dx * dx + dy * dy));
            }
        }
    }

    std::uint16_t* at(int x, int y)
    {
        const auto column = static_cast<std::size_t>(x - m_area.left());
        const auto row = static_cast<std::size_t>(y - m_area.top());
        auto& square = m_squares[row / side * static_cast<std::size_t>(m_columns) + column / side];
        if (!square) {
            square = std::make_unique<Square>();
            square->fill(m_profile.step(std::numeric_limits<double>::max()));
        }
        return &(*square)[row % side * side + column % side];
    }

    QRect m_area;
    const Profile& m_profile;
    int m_columns;
    std::vector<std::unique_ptr<Square>> m_squares;
};

/// The pixels that can be seen.
QRect visiblePixels(const QPainter& painter, const QTransform& toPixels)
{
    const QPaintDevice& drawnOn = *painter.device();
    // An image tells its size in its own pixels.
    const double ratio = drawnOn.devType() == QInternal::Image ? 1 : drawnOn.devicePixelRatioF();
    const QRectF device(0, 0, drawnOn.width() * ratio, drawnOn.height() * ratio);
    return (painter.hasClipping() ? device & toPixels.mapRect(painter.clipBoundingRect()) : device)
        .toAlignedRect();
}

/// Of a pen with dashes and gaps of one length each, in pixels; nothing for any other.
std::optional<Dash> dashOf(const QPen& pen, double width)
{
    const QList<qreal> pattern = pen.dashPattern();
    if (pen.style() != Qt::CustomDashLine || pattern.size() != 2 || !(pattern[0] + pattern[1] > 0))
        return std::nullopt;
    return Dash{.on = pattern[0] * width, .period = (pattern[0] + pattern[1]) * width};
}

void draw(QPainter& painter, const QPainterPath& path, const QPen& pen, double blur, double opacity,
          const std::optional<QColor>& line)
{
    const QTransform toPixels = painter.combinedTransform();
    const double enlarged = std::sqrt(std::abs(toPixels.determinant()));
    const double width = pen.widthF() * enlarged;
    const double deviation = blur / 2 * enlarged;
    if (!(deviation > 0) || !(width > 0))
        return;
    const Profile profile(width, deviation, opacity, line);
    const double reach = profile.reach();
    const QRectF bounds =
        toPixels.mapRect(path.controlPointRect()).adjusted(-reach, -reach, reach, reach);
    const QRect area = (bounds & QRectF(visiblePixels(painter, toPixels))).toAlignedRect();
    if (area.isEmpty())
        return;
    Squares squares(area, profile);
    const auto dash = dashOf(pen, width);
    for (const QPolygonF& polygon : path.toSubpathPolygons(toPixels))
        for (const QLineF& piece : dash ? dashes(polygon, *dash) : pieces(polygon))
            squares.add(piece);
    painter.save();
    painter.resetTransform();
    squares.paint(painter);
    painter.restore();
}

} // namespace

void ofLine(QPainter& painter, const QPainterPath& path, const QPen& pen, double blur,
            double opacity)
{
    draw(painter, path, pen, blur, opacity, std::nullopt);
}

void withLine(QPainter& painter, const QPainterPath& path, const QPen& pen, double blur)
{
    draw(painter, path, pen, blur, 1, pen.color());
}

} // namespace vantroque::Shadow
