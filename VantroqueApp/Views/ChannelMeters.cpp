#include "VantroqueApp/Views/ChannelMeters.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Theme.h"
#include "VantroqueApp/Views/Type.h"

#include <QPainter>
#include <QStringList>

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
    : InstrumentPanel(u"CHANNELS"_s, scaleHeight, parent), m_size(size)
{
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
    setContentHeight(static_cast<int>(m_channels.size()) * pitch() + 4 + scaleHeight);
    QStringList words;
    for (const Channel& channel : m_channels)
        words << u"%1 %2 dBFS, peak %3"_s.arg(channel.name, digits(channel.rms),
                                              digits(channel.peak));
    setAccessibleDescription(words.join(u"; "_s));
    update();
}

void ChannelMeters::paintContent(QPainter& painter, const QRect& content)
{
    const QRect bars = content.adjusted(nameWidth, 0, -digitsWidth, -scaleHeight);
    QRect row(content.left(), content.top(), content.width(), pitch());
    for (const Channel& channel : m_channels) {
        paintChannel(
            painter, row,
            QRect(bars.left(), row.top() + (pitch() - barHeight) / 2, bars.width(), barHeight),
            channel);
        row.translate(0, pitch());
    }
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
                         theme.text2);
    if (!Numbers::below(channel.peak, 0))
        painter.fillRect(
            QRect(bar.right() + 1 - fullScaleWidth, bar.top(), fullScaleWidth, bar.height()),
            theme.fail);
    Type::draw(painter, row, digits(channel.peak), Type::mono(Type::badge, QFont::Medium),
               theme.text1, Qt::AlignRight | Qt::AlignVCenter);
}

void ChannelMeters::paintScale(QPainter& painter, const QRect& bars) const
{
    constexpr int width = 30;
    const int top = bars.bottom() + 1;
    for (const int mark : marks) {
        const int x = static_cast<int>(place(mark, bars));
        if (mark != marks.front() && mark != marks.back())
            painter.fillRect(QRect(x, bars.top() + 2, 1, bars.height() - 6),
                             QColor(23, 24, 28, 150));
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
