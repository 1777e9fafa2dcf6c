#include "VantroqueApp/Views/Analyzing/LiveInstruments.h"

#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 16;
constexpr int radius = 8;
constexpr int padding = 14;
constexpr int titleHeight = 16;
constexpr int titleGap = 4;
constexpr int scopeGap = 12;
constexpr int panelWidth =
    2 * padding + LivePictures::waveformSize.width() + scopeGap + LivePictures::vectorscopeSize;

/// A title with the scope under it.
void paintScope(QPainter& painter, const QPoint& place, const QString& title, const QImage& image)
{
    Type::draw(painter, QRect(place, QSize(LivePictures::waveformSize.width(), titleHeight)), title,
               Type::text(Type::badge, QFont::Medium), Theme::dark().text2);
    painter.drawImage(place + QPoint(0, titleHeight + titleGap), image);
}

} // namespace

LiveInstruments::LiveInstruments(QWidget* parent) : QWidget(parent)
{
    setAccessibleName(u"Picture and scopes"_s);
    setMinimumSize(panelWidth + gap, lowestHeight);
}

int LiveInstruments::heightFor(int width)
{
    return (width - gap - panelWidth) * 9 / 16;
}

QRect LiveInstruments::stage() const
{
    return {0, 0, width() - panelWidth - gap, height()};
}

QRect LiveInstruments::panel() const
{
    // Beside a large picture it would be hollow.
    constexpr int tall = 440;
    return {width() - panelWidth, 0, panelWidth, height() > tall ? fullHeight : height()};
}

void LiveInstruments::show(const Frame& frame, const LivePictures::Shape& shape)
{
    if (frame == m_frame)
        return;
    m_frame = frame;
    m_shape = shape;
    if (frame != nullptr)
        return draw();
    m_drawing.forget(); // a picture of the file before
    take({});
}

void LiveInstruments::draw()
{
    if (m_frame == nullptr)
        return;
    m_drawing.run(
        [frame = m_frame, shape = m_shape, place = stage().size(), ratio = devicePixelRatioF()] {
            return LivePictures::draw(*frame, shape, place, ratio);
        },
        [this](const LivePictures::Images& images) { take(images); });
}

void LiveInstruments::take(const LivePictures::Images& images)
{
    m_images = images;
    update();
}

void LiveInstruments::resizeEvent(QResizeEvent*)
{
    draw();
}

void LiveInstruments::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::dark().stage);
    painter.drawRoundedRect(stage(), radius, radius);
    painter.drawImage(stage(), m_images.picture);
    paintScopes(painter);
}

void LiveInstruments::paintScopes(QPainter& painter) const
{
    const QRect panel = this->panel();
    painter.setPen(Theme::dark().hairline);
    painter.setBrush(Theme::dark().readout);
    painter.drawRoundedRect(QRectF(panel).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    // Samples stay samples, unless a device pixel is no whole part of one.
    const double ratio = devicePixelRatioF();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, ratio != std::floor(ratio));
    QPoint place = panel.topLeft() + QPoint(padding, padding);
    paintScope(painter, place, u"Waveform"_s, m_images.waveform);
    paintScope(painter, place + QPoint(LivePictures::waveformSize.width() + scopeGap, 0),
               u"Vectorscope"_s, m_images.vectorscope);
    if (height() < fullHeight)
        return;
    place.ry() += titleHeight + titleGap + LivePictures::waveformSize.height() + 2 * scopeGap;
    paintScope(painter, place, u"RGB parade"_s, m_images.parade);
}

} // namespace vantroque
