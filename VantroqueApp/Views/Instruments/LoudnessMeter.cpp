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
constexpr int triangleHeight = 5;

double place(double level, const QRect& track)
{
    return track.left()
           + (std::clamp<double>(level, lowest, highest) - lowest) / (highest - lowest)
                 * track.width();
}

Verdict verdict(double measured, const LoudnessTarget& target)
{
    const auto band = target.band();
    if (!band)
        return Verdict::info;
    return Numbers::above(std::abs(measured - band->target), band->tolerance) ? Verdict::fail
                                                                              : Verdict::pass;
}

} // namespace

LoudnessMeter::LoudnessMeter(QWidget* parent) : InstrumentPanel(u"LOUDNESS"_s, 38, parent)
{
}

void LoudnessMeter::show(const FileReport& report, const LoudnessTarget& target)
{
    const auto measured =
        report.measurements ? report.measurements->integratedLKFS : std::optional<double>();
    setVisible(measured.has_value());
    m_measured = measured.value_or(0);
    m_target = target;
    setNote(target.caption());
    setAccessibleDescription(u"%1 LKFS, %2"_s.arg(Numbers::fixed(m_measured, 1), target.caption()));
    setToolTip(accessibleDescription());
    update();
}

void LoudnessMeter::paintContent(QPainter& painter, const QRect& content)
{
    const QRect track(content.left() + inset, content.top() + triangleHeight + 3,
                      content.width() - 2 * inset, 10);
    painter.fillRect(track, Theme::dark().track);
    paintTargets(painter, track);
    paintMeasured(painter, track);
    paintScale(painter, track);
}

void LoudnessMeter::paintTargets(QPainter& painter, const QRect& track) const
{
    constexpr double lineWidth = 1.5;
    constexpr double overhang = 3;
    if (const auto band = m_target.band()) {
        const double from = place(band->target - band->tolerance, track);
        painter.fillRect(QRectF(from, track.top(),
                                place(band->target + band->tolerance, track) - from,
                                track.height()),
                         Theme::dark().toleranceBand);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dark().text1);
    for (const double mark : m_target.marks()) {
        const double x = place(mark, track);
        painter.fillRect(QRectF(x - lineWidth / 2, track.top() - overhang, lineWidth,
                                track.height() + 2 * overhang),
                         Theme::dark().text1);
        const double top = track.top() - overhang - triangleHeight;
        painter.drawPolygon(
            QPolygonF{QPointF(x - 4, top), QPointF(x + 4, top), QPointF(x, top + triangleHeight)});
    }
}

void LoudnessMeter::paintMeasured(QPainter& painter, const QRect& track) const
{
    constexpr double width = 3;
    const double x = std::clamp(place(m_measured, track), track.left() + width / 2,
                                track.right() + 1 - width / 2);
    const QRectF line(x - width / 2, track.top() - 2, width, track.height() + 4);
    painter.fillRect(line.adjusted(-1, -1, 1, 1), Theme::dark().readout);
    painter.fillRect(line, Theme::dark().of(verdict(m_measured, m_target)));
}

void LoudnessMeter::paintScale(QPainter& painter, const QRect& track)
{
    constexpr int width = 30;
    for (int level = lowest; level <= highest; level += step) {
        const int x = static_cast<int>(place(level, track));
        painter.fillRect(QRect(x, track.bottom() + 5, 1, 3), Theme::dark().text3);
        Type::draw(painter, QRect(x - width / 2, track.bottom() + 9, width, 13),
                   QString::number(level), Type::text(Type::digits), Theme::dark().text3,
                   Qt::AlignHCenter | Qt::AlignBottom);
    }
}

} // namespace vantroque
