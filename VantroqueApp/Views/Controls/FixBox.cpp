#include "VantroqueApp/Views/Controls/FixBox.h"

#include "Check/ShortTexts.h"
#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "VantroqueApp/Views/Controls/FixText.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 10;
constexpr int gap = 12;
constexpr int buttonHeight = 26;

bool isNarrow(int width)
{
    constexpr int narrow = 320;
    return width < narrow;
}

} // namespace

FixBox::FixBox(QString fix, QWidget* parent)
    : QWidget(parent), m_fix(std::move(fix)), m_copy(new CopyButton(u"Copy"_s, this))
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(m_fix);
    m_copy->setProperty("kind", u"small"_s);
    m_copy->setFont(Type::text(Type::caption, QFont::Medium));
    m_copy->setCopied(ShortTexts::toCopy(m_fix));
    m_copy->setToolTip(u"Copy %1"_s.arg(m_copy->copied()));
    m_copy->setAccessibleName(u"Copy the fix"_s);
    m_sign = m_copy->icon();
    m_copyWidth = m_copy->sizeHint().width();
}

/// Where there is little room the words of a fix need it more than the sign beside "Copy".
int FixBox::copyWidth(int width) const
{
    constexpr int gapAfterIcon = 4;
    return isNarrow(width) ? m_copyWidth - m_copy->iconSize().width() - gapAfterIcon : m_copyWidth;
}

int FixBox::textWidth(int width) const
{
    return width - 2 * padding - gap - copyWidth(width);
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
    m_copy->setIcon(isNarrow(width()) ? QIcon() : m_sign);
    const int wide = copyWidth(width());
    m_copy->setGeometry(width() - padding - wide, padding, wide, buttonHeight);
}

} // namespace vantroque
