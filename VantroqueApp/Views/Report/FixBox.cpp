#include "VantroqueApp/Views/Report/FixBox.h"

#include "Check/ShortTexts.h"
#include "VantroqueApp/Views/Report/FixText.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 10;
constexpr int gap = 12;
constexpr int buttonHeight = 26;

} // namespace

FixBox::FixBox(QString fix, QWidget* parent)
    : QWidget(parent),
      m_fix(std::move(fix)),
      m_copy(new QPushButton(u"Copied"_s, this)),
      m_copied(new QTimer(this))
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(m_fix);
    m_copy->setProperty("kind", u"small"_s);
    m_copy->setFont(Type::text(Type::caption, QFont::Medium));
    m_copy->setFocusPolicy(Qt::TabFocus);
    m_copy->setAutoDefault(true); // so that Return presses it: the space bar plays
    m_copy->setToolTip(u"Copy %1"_s.arg(ShortTexts::toCopy(m_fix)));
    m_copy->setAccessibleName(u"Copy the fix"_s);
    m_copy->setFixedSize(m_copy->sizeHint().width(), buttonHeight); // of the longer word
    offer();
    m_copied->setSingleShot(true);
    connect(m_copied, &QTimer::timeout, this, &FixBox::offer);
    connect(m_copy, &QPushButton::clicked, this, &FixBox::copy);
}

void FixBox::copy()
{
    constexpr int milliseconds = 1500;
    QGuiApplication::clipboard()->setText(ShortTexts::toCopy(m_fix));
    m_copy->setText(u"Copied"_s);
    m_copied->start(milliseconds);
}

void FixBox::offer()
{
    m_copy->setText(u"Copy"_s);
}

int FixBox::textWidth(int width) const
{
    return width - 2 * padding - gap - m_copy->width();
}

int FixBox::heightForWidth(int width) const
{
    const int text = FixText(m_fix, std::max(textWidth(width), 1)).height();
    return std::max(text, buttonHeight) + 2 * padding;
}

QSize FixBox::sizeHint() const
{
    constexpr int usual = 360;
    return {usual, heightForWidth(usual)};
}

void FixBox::paintEvent(QPaintEvent*)
{
    constexpr double radius = 6;
    const Theme& theme = Theme::dark();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.hairline);
    painter.setBrush(theme.readout);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    FixText(m_fix, std::max(textWidth(width()), 1))
        .draw(painter, QPointF(padding, padding), theme.text2, theme.text1);
}

void FixBox::resizeEvent(QResizeEvent*)
{
    m_copy->move(width() - padding - m_copy->width(), padding);
}

} // namespace vantroque
