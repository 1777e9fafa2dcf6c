#include "VantroqueApp/Views/Controls/NoticeBar.h"

#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int lowest = 40;
constexpr int iconInset = 13;
constexpr int iconSize = 16;
constexpr int textInset = 39;
constexpr int textAir = 10; ///< Above and below a text of several lines.
constexpr int sideAir = 8;

/// A sentence quotes names of files, which have no spaces to break lines at.
class Sentence : public QLabel {
public:
    Sentence(const QString& text, QWidget* parent) : QLabel(text, parent)
    {
        setTextFormat(Qt::PlainText);
        setFont(Type::text(Type::body));
    }
    int heightForWidth(int width) const override
    {
        QTextLayout layout(text(), font());
        return static_cast<int>(std::ceil(lay(layout, width)));
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QTextLayout layout(text(), font());
        const double textHeight = lay(layout, width());
        QPainter painter(this);
        painter.setPen(Theme::current().text1);
        layout.draw(&painter, QPointF(0, std::max(0.0, (height() - textHeight) / 2)));
    }

private:
    static double lay(QTextLayout& layout, int width)
    {
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        double height = 0;
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            line.setPosition({0, height});
            height += line.height();
        }
        layout.endLayout();
        return height;
    }
};

} // namespace

NoticeBar::NoticeBar(Notice notice, QWidget* parent)
    : QWidget(parent), m_notice(std::move(notice)), m_text(new Sentence(m_notice.text, this))
{
    setAccessibleName(m_notice.text);
    setToolTip(m_notice.help);
    if (!m_notice.action.label.isEmpty()) {
        auto* action = new ToolButton(m_notice.action.icon, m_notice.action.label, this);
        action->setPlain();
        if (m_notice.action.icon.isEmpty())
            action->setParts(ToolButton::Parts::words);
        else
            action->setAccented();
        connect(action, &QToolButton::clicked, this, &NoticeBar::act);
        m_action = action;
    }
    auto* close = new ToolButton(u"x"_s, u"Close"_s, this);
    close->setPlain();
    close->setParts(ToolButton::Parts::icon);
    close->setToolTip(u"Close"_s);
    connect(close, &QToolButton::clicked, this, &NoticeBar::closed);
    m_close = close;
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &NoticeBar::closed);
    if (m_notice.isPassing)
        m_end.start(m_left);
}

int NoticeBar::textWidth(int width) const
{
    const int action = m_action != nullptr ? m_action->sizeHint().width() + sideAir : 0;
    return width - textInset - sideAir - action - m_close->sizeHint().width() - sideAir;
}

int NoticeBar::heightForWidth(int width) const
{
    return std::max(lowest, m_text->heightForWidth(textWidth(width)) + 2 * textAir);
}

void NoticeBar::resizeEvent(QResizeEvent*)
{
    const auto place = [this](QWidget& button, int right) {
        const QSize size = button.sizeHint();
        button.setGeometry(right - size.width(), (height() - size.height()) / 2, size.width(),
                           size.height());
        return right - size.width() - sideAir;
    };
    const int right = place(*m_close, width() - sideAir);
    if (m_action != nullptr)
        place(*m_action, right);
    m_text->setGeometry(textInset, 0, textWidth(width()), height());
}

void NoticeBar::act()
{
    const auto act = m_notice.action.act; // which may tell of something else, and end this bar
    Q_EMIT closed();
    act();
}

/// Who reads it, or is on the way to its button, has time.
void NoticeBar::enterEvent(QEnterEvent*)
{
    m_left = std::clamp(m_end.remainingTime(), 0, lifetimeMilliseconds);
    m_end.stop();
}

void NoticeBar::leaveEvent(QEvent*)
{
    if (m_notice.isPassing)
        m_end.start(m_left);
}

void NoticeBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    Q_EMIT closed();
}

void NoticeBar::paintEvent(QPaintEvent*)
{
    constexpr double radius = 8;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.controlEdge);
    painter.setBrush(theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    Icons::draw(painter, QRectF(iconInset, (height() - iconSize) / 2.0, iconSize, iconSize),
                m_notice.icon, theme.text2);
}

} // namespace vantroque
