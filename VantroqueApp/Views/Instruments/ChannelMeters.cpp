#include "VantroqueApp/Views/Instruments/ChannelMeters.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStringList>
#include <QWheelEvent>

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr double lowest = -60;
constexpr int barHeight = 9;
constexpr int nameWidth = 33;
constexpr int digitsWidth = 48;
constexpr int scaleHeight = 16;
constexpr int scaleGap = 4;
constexpr int scrollWidth = 6;
constexpr int fullScaleWidth = 5;
constexpr std::array marks{-60, -48, -36, -24, -12, -6, 0};

double place(double level, const QRect& bar)
{
    return bar.left() + (std::clamp(level, lowest, 0.0) - lowest) / -lowest * bar.width();
}

QString digits(double level)
{
    return level <= ChannelMeters::silence ? u"–"_s : Numbers::fixed(level, 1);
}

} // namespace

ChannelMeters::ChannelMeters(Size size, QWidget* parent)
    : InstrumentPanel(u"CHANNELS"_s, scaleHeight, parent),
      m_size(size),
      m_scroll(new QScrollBar(Qt::Vertical, this))
{
    m_scroll->hide();
    m_scroll->setFocusPolicy(Qt::NoFocus);
    connect(m_scroll, &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    setNote(u"dBFS"_s);
    setToolTip(u"Every channel in the file. The bar is the level at the playhead, over a tenth of "
               "a second, and the line is its peak. Stopped, the bars show each channel's loudest "
               "moment. Red means full scale."_s);
}

void ChannelMeters::setChannels(std::vector<Channel> channels)
{
    if (channels == m_channels)
        return;
    m_channels = std::move(channels);
    QStringList words;
    for (const Channel& channel : m_channels)
        words << u"%1 %2 dBFS, peak %3"_s.arg(channel.name, digits(channel.rms),
                                              digits(channel.peak));
    setAccessibleDescription(words.join(u"; "_s));
    arrange();
    update();
}

void ChannelMeters::setRows(int rows)
{
    if (std::exchange(m_rows, rows) != rows)
        arrange();
}

int ChannelMeters::heightOf(int rows) const
{
    return panelHeight(rows * pitch() + scaleGap + scaleHeight);
}

int ChannelMeters::rowsIn(int panelHeight) const
{
    return (panelHeight - heightOf(0)) / pitch();
}

/// Takes the height that the rows in sight need, and lets the rest be scrolled to.
void ChannelMeters::arrange()
{
    const int inSight = std::clamp(channelCount(), leastRows(), m_rows);
    const int hidden = std::max(channelCount() - inSight, 0);
    setContentHeight(inSight * pitch() + scaleGap + scaleHeight);
    m_scroll->setRange(0, hidden * pitch());
    m_scroll->setSingleStep(pitch());
    m_scroll->setPageStep(inSight * pitch());
    m_scroll->setVisible(hidden > 0);
    setFocusPolicy(hidden > 0 ? Qt::StrongFocus : Qt::NoFocus);
    const QRect area = contentArea();
    m_scroll->setGeometry(width() - scrollWidth - 3, area.top(), scrollWidth, inSight * pitch());
}

void ChannelMeters::resizeEvent(QResizeEvent* event)
{
    InstrumentPanel::resizeEvent(event);
    arrange();
}

void ChannelMeters::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up: return m_scroll->triggerAction(QScrollBar::SliderSingleStepSub);
    case Qt::Key_Down: return m_scroll->triggerAction(QScrollBar::SliderSingleStepAdd);
    case Qt::Key_PageUp: return m_scroll->triggerAction(QScrollBar::SliderPageStepSub);
    case Qt::Key_PageDown: return m_scroll->triggerAction(QScrollBar::SliderPageStepAdd);
    case Qt::Key_Home: return m_scroll->triggerAction(QScrollBar::SliderToMinimum);
    case Qt::Key_End: return m_scroll->triggerAction(QScrollBar::SliderToMaximum);
    default: InstrumentPanel::keyPressEvent(event);
    }
}

/// At its end the wheel scrolls what holds the panel.
void ChannelMeters::wheelEvent(QWheelEvent* event)
{
    const bool up = event->angleDelta().y() > 0;
    const bool atEnd = m_scroll->value() == (up ? m_scroll->minimum() : m_scroll->maximum());
    if (atEnd)
        return event->ignore();
    m_scroll->setValue(m_scroll->value() + (up ? -pitch() : pitch()));
}

void ChannelMeters::paintContent(QPainter& painter, const QRect& content)
{
    const QRect bars = content.adjusted(nameWidth, 0, -digitsWidth, -scaleHeight - scaleGap);
    painter.save();
    painter.setClipRect(QRect(content.left(), bars.top(), content.width(), bars.height()));
    QRect row(content.left(), content.top() - m_scroll->value(), content.width(), pitch());
    for (const Channel& channel : m_channels) {
        paintChannel(
            painter, row,
            QRect(bars.left(), row.top() + (pitch() - barHeight) / 2, bars.width(), barHeight),
            channel);
        row.translate(0, pitch());
    }
    paintMarks(painter, bars);
    painter.restore();
    paintScale(painter, bars);
}

void ChannelMeters::paintChannel(QPainter& painter, const QRect& row, const QRect& bar,
                                 const Channel& channel) const
{
    const Theme& theme = Theme::dark();
    Type::draw(painter, QRect(row.left(), row.top(), nameWidth - 4, row.height()), channel.name,
               Type::text(Type::badge), theme.text2);
    painter.fillRect(bar, theme.track);
    painter.fillRect(
        QRectF(bar.left(), bar.top(), place(channel.rms, bar) - bar.left(), bar.height()),
        theme.meterBar);
    if (channel.peak > lowest)
        painter.fillRect(QRectF(place(channel.peak, bar) - 1, bar.top(), 2, bar.height()),
                         theme.text1);
    if (!Numbers::below(channel.peak, 0))
        painter.fillRect(
            QRect(bar.right() + 1 - fullScaleWidth, bar.top(), fullScaleWidth, bar.height()),
            theme.fail);
    Type::draw(painter, row, digits(channel.peak), Type::mono(Type::badge, QFont::Medium),
               theme.text1, Qt::AlignRight | Qt::AlignVCenter);
}

void ChannelMeters::paintMarks(QPainter& painter, const QRect& bars)
{
    for (const int mark : marks)
        if (mark != marks.front() && mark != marks.back())
            painter.fillRect(
                QRect(static_cast<int>(place(mark, bars)), bars.top() + 2, 1, bars.height() - 4),
                QColor(23, 24, 28, 150));
}

void ChannelMeters::paintScale(QPainter& painter, const QRect& bars)
{
    constexpr int width = 30;
    const int top = bars.bottom() + 1 + scaleGap;
    for (const int mark : marks) {
        const int x = static_cast<int>(place(mark, bars));
        const auto side = mark == marks.front()  ? Qt::AlignLeft
                          : mark == marks.back() ? Qt::AlignRight
                                                 : Qt::AlignHCenter;
        const int left = mark == marks.front()  ? x
                         : mark == marks.back() ? x - width
                                                : x - width / 2;
        Type::draw(painter, QRect(left, top, width, scaleHeight), QString::number(mark),
                   Type::text(Type::digits), Theme::dark().text3, side | Qt::AlignBottom);
    }
}

} // namespace vantroque
