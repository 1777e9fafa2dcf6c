#include "VantroqueApp/Views/Instruments/LoudnessMeter.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int lowest = -36; ///< LKFS.
constexpr int highest = -6;
constexpr int step = 6;
constexpr int inset = 6;
constexpr int contentHeight = 42;
constexpr int flagHeight = 16;
constexpr int trackTop = 21; ///< In the content, under the flag.
constexpr int trackHeight = 10;
constexpr int numbersTop = 37;
constexpr int numbersHeight = 13;

double place(double level, const QRect& track)
{
    return track.left()
           + (std::clamp<double>(level, lowest, highest) - lowest) / (highest - lowest)
                 * track.width();
}

QFont targetFont()
{
    return Type::text(Type::digits, QFont::Bold);
}

/// Under the track.
QRect numberLine(const QRect& track, double left, int width)
{
    return {static_cast<int>(std::lround(left)), track.top() - trackTop + numbersTop, width,
            numbersHeight};
}

} // namespace

/// What stands under a target.
struct LoudnessMeter::Number {
    QString text;
    QRect rect;
};

LoudnessMeter::LoudnessMeter(QWidget* parent)
    : InstrumentPanel(u"LOUDNESS"_s, contentHeight, parent)
{
}

void LoudnessMeter::show(const FileReport& report, const LoudnessTarget& target, Verdict verdict)
{
    const auto measured =
        report.measurements ? report.measurements->integratedLKFS : std::optional<double>();
    m_isMeasured = measured.has_value();
    setVisible(m_isMeasured);
    m_measured = measured.value_or(0);
    m_target = target;
    m_verdict = verdict;
    setNote(target.caption());
    setAccessibleDescription(u"%1 LKFS, %2"_s.arg(Numbers::fixed(m_measured, 1), target.caption()));
    setToolTip(accessibleDescription());
    update();
}

void LoudnessMeter::paintContent(QPainter& painter, const QRect& content)
{
    const QRect track(content.left() + inset, content.top() + trackTop, content.width() - 2 * inset,
                      trackHeight);
    painter.fillRect(track, Theme::dark().track);
    paintBand(painter, track);
    paintTargets(painter, track);
    paintMeasured(painter, track);
    paintScale(painter, track);
}

void LoudnessMeter::paintBand(QPainter& painter, const QRect& track) const
{
    const auto band = m_target.band();
    if (!band)
        return;
    const double from = place(band->target - band->tolerance, track);
    const double to = place(band->target + band->tolerance, track);
    painter.fillRect(QRectF(from, track.top(), to - from, track.height()),
                     Theme::dark().toleranceBand);
}

void LoudnessMeter::paintTargets(QPainter& painter, const QRect& track) const
{
    constexpr double lineWidth = 1.5;
    constexpr double overhang = 2;
    constexpr double triangleHeight = 5;
    const double below = track.top() + track.height();
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dark().text1);
    for (const double mark : m_target.marks()) {
        const double x = place(mark, track);
        painter.fillRect(QRectF(x - lineWidth / 2, track.top() - overhang, lineWidth,
                                track.height() + overhang + 1),
                         Theme::dark().text1);
        painter.drawPolygon(QPolygonF{QPointF(x - 4, below + 1 + triangleHeight),
                                      QPointF(x + 4, below + 1 + triangleHeight),
                                      QPointF(x, below + 1)});
    }
    for (const Number& number : numbers(track))
        Type::draw(painter, number.rect, number.text, targetFont(), Theme::dark().text1,
                   Qt::AlignCenter, Qt::ElideNone);
}

/// Of targets that stand close together the outer ones turn their numbers outward, and those
/// between have none; the caption names all.
std::vector<LoudnessMeter::Number> LoudnessMeter::numbers(const QRect& track) const
{
    constexpr double close = 24;
    constexpr int air = 2; ///< Beside the line of its target.
    const auto marks = m_target.marks();
    const QFontMetrics metrics(targetFont());
    const auto isClose = [&](std::size_t left) {
        return left + 1 < marks.size()
               && place(marks[left + 1], track) - place(marks[left], track) < close;
    };
    std::vector<Number> made;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const bool afterClose = i > 0 && isClose(i - 1);
        const bool beforeClose = isClose(i);
        if (afterClose && beforeClose)
            continue;
        const QString text = Numbers::given(marks[i], 0);
        const int wide = metrics.horizontalAdvance(text) + 1;
        const double x = place(marks[i], track);
        const double left = beforeClose ? x + 4 - wide : afterClose ? x - 4 + air : x - wide / 2.0;
        made.push_back({text, numberLine(track, left, wide)});
    }
    return made;
}

/// The number in a flag, on a line through the track.
void LoudnessMeter::paintMeasured(QPainter& painter, const QRect& track) const
{
    constexpr double width = 3;
    constexpr int flagWidth = 44;
    constexpr double radius = 4;
    const Theme& theme = Theme::dark();
    const QColor color = theme.of(m_verdict);
    const double x = std::clamp(place(m_measured, track), track.left() + width / 2,
                                track.left() + track.width() - width / 2);
    const int flagTop = track.top() - trackTop;
    const QRectF line(x - width / 2, flagTop + flagHeight - 1, width,
                      track.top() + track.height() + 2 - flagTop - flagHeight + 1);
    painter.fillRect(line.adjusted(-1, 1, 1, 1), theme.readout);
    painter.fillRect(line, color);
    const double left = std::clamp(x - flagWidth / 2.0, double(track.left() - inset),
                                   double(track.left() + track.width() + inset - flagWidth));
    const QRectF flag(std::round(left), flagTop, flagWidth, flagHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(flag, radius, radius);
    Type::draw(painter, flag.toRect(), Numbers::fixed(m_measured, 1),
               Type::mono(Type::badge, QFont::Bold), theme.ground, Qt::AlignCenter, Qt::ElideNone);
}

/// A digit is left out where a target is close to it.
void LoudnessMeter::paintScale(QPainter& painter, const QRect& track) const
{
    constexpr int width = 30;
    constexpr double tooClose = 14;
    constexpr int air = 2;
    const QFont font = Type::text(Type::digits);
    const auto marks = m_target.marks();
    const auto taken = numbers(track);
    for (int level = lowest; level <= highest; level += step) {
        const double x = place(level, track);
        const int digits = QFontMetrics(font).horizontalAdvance(QString::number(level)) + 2 * air;
        const QRect words = numberLine(track, x - digits / 2.0, digits);
        if (std::ranges::any_of(
                marks, [&](double mark) { return std::abs(place(mark, track) - x) < tooClose; })
            || std::ranges::any_of(
                taken, [&](const Number& number) { return number.rect.intersects(words); }))
            continue;
        painter.fillRect(QRect(static_cast<int>(x), track.top() + track.height() + 3, 1, 3),
                         Theme::dark().text3);
        Type::draw(painter, numberLine(track, x - width / 2.0, width), QString::number(level), font,
                   Theme::dark().text3, Qt::AlignCenter);
    }
}

} // namespace vantroque
