#include "VantroqueApp/Views/Report/PlatformChips.h"

#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int high = 22;
constexpr int gap = 6;

} // namespace

class PlatformChips::Chip : public QAbstractButton {
public:
    Chip(const QString& name, QWidget* parent) : QAbstractButton(parent)
    {
        setText(name);
        setAccessibleName(u"Go to %1"_s.arg(name));
        setToolTip(u"Show what %1 says"_s.arg(name));
        setFocusPolicy(Qt::ClickFocus);
        setAttribute(Qt::WA_Hover);
    }

    QSize sizeHint() const override
    {
        constexpr int air = 10;
        return {QFontMetrics(font()).horizontalAdvance(text()) + 2 * air + 1, high};
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        const Theme& theme = Theme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isDown() ? theme.pressed : underMouse() ? theme.hover : theme.badge);
        painter.drawRoundedRect(rect(), high / 2.0, high / 2.0);
        Type::draw(painter, rect().adjusted(4, 0, -4, 0), text(), font(), theme.text1,
                   Qt::AlignCenter, Qt::ElideMiddle);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            return click(); // the space bar plays
        QAbstractButton::keyPressEvent(event);
    }
};

PlatformChips::PlatformChips(const QString& label, const std::vector<Problem::Platform>& platforms,
                             QWidget* parent)
    : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_parts.push_back(Type::label(label, Type::caption, QFont::Normal, Type::Ink::text2, this));
    for (const Problem::Platform& platform : platforms) {
        auto* chip = new Chip(platform.name, this);
        chip->setFont(Type::text(Type::badge, QFont::Medium));
        chip->setFocusPolicy(m_parts.size() == 1 ? Qt::StrongFocus : Qt::ClickFocus);
        chip->installEventFilter(this);
        connect(chip, &QAbstractButton::clicked, this,
                [this, id = platform.id] { Q_EMIT chosen(id); });
        m_parts.push_back(chip);
    }
}

QSize PlatformChips::sizeHint() const
{
    constexpr int usual = 360;
    return {usual, heightForWidth(usual)};
}

void PlatformChips::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arranged(width(), true);
}

int PlatformChips::arranged(int width, bool place) const
{
    int x = 0;
    int y = 0;
    for (QWidget* part : m_parts) {
        const int wide = std::min(part->sizeHint().width(), width);
        if (x > 0 && x + wide > width) {
            x = 0;
            y += high + gap;
        }
        if (place)
            part->setGeometry(x, y, wide, high);
        x += wide + gap;
    }
    return y + high;
}

bool PlatformChips::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool forward = key == Qt::Key_Down || key == Qt::Key_Right;
    return (forward || key == Qt::Key_Up || key == Qt::Key_Left) && step(watched, forward);
}

bool PlatformChips::step(const QObject* from, bool forward)
{
    const auto at = std::ranges::find(m_parts, from) - m_parts.begin();
    const auto to = at + (forward ? 1 : -1);
    if (to < 1 || to >= std::ssize(m_parts))
        return false;
    QWidget* next = m_parts[static_cast<std::size_t>(to)];
    for (std::size_t i = 1; i < m_parts.size(); ++i)
        m_parts[i]->setFocusPolicy(m_parts[i] == next ? Qt::StrongFocus : Qt::ClickFocus);
    next->setFocus(Qt::OtherFocusReason);
    return true;
}

} // namespace vantroque
