#include "VantroqueApp/Views/Controls/Scrubber.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vantroque {

namespace {

constexpr int high = 26;
constexpr double handle = 12;
constexpr double track = 4;

} // namespace

Scrubber::Scrubber(const QString& accessibleName, QWidget* parent) : QSlider(Qt::Horizontal, parent)
{
    constexpr int far = 10;
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::TabFocus);
    setSingleStep(1);
    setPageStep(far);
    connect(this, &QSlider::actionTriggered, this, [this](int action) {
        if (action != SliderNoAction)
            Q_EMIT scrubbed(sliderPosition());
    });
}

QSize Scrubber::sizeHint() const
{
    constexpr int wide = 120;
    return {wide, high};
}

QSize Scrubber::minimumSizeHint() const
{
    constexpr int narrow = 40;
    return {narrow, high};
}

/// The middle of the handle.
double Scrubber::handleAt() const
{
    const int length = maximum() - minimum();
    const double share = length > 0 ? static_cast<double>(value() - minimum()) / length : 0;
    return handle / 2 + share * (width() - handle);
}

void Scrubber::scrubTo(double x)
{
    const double room = std::max(width() - handle, 1.0);
    const double share = std::clamp((x - handle / 2) / room, 0.0, 1.0);
    const int value = minimum() + static_cast<int>(std::lround(share * (maximum() - minimum())));
    if (value == this->value())
        return;
    setValue(value);
    Q_EMIT scrubbed(value);
}

void Scrubber::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    setSliderDown(true);
    scrubTo(event->position().x());
}

void Scrubber::mouseMoveEvent(QMouseEvent* event)
{
    if (isSliderDown())
        scrubTo(event->position().x());
}

void Scrubber::mouseReleaseEvent(QMouseEvent*)
{
    setSliderDown(false);
}

/// A page that is scrolled moves nothing on it.
void Scrubber::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void Scrubber::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double at = handleAt();
    const QRectF line(0, (height() - track) / 2, width(), track);
    painter.setBrush(theme.controlEdge);
    painter.drawRoundedRect(line, track / 2, track / 2);
    painter.setBrush(isEnabled() ? theme.text2 : theme.text3);
    painter.drawRoundedRect(QRectF(line.topLeft(), QSizeF(at, track)), track / 2, track / 2);
    painter.setBrush(isEnabled() ? theme.text1 : theme.text3);
    painter.drawEllipse(QPointF(at, height() / 2.0), handle / 2, handle / 2);
}

} // namespace vantroque
