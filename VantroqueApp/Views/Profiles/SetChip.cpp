#include "VantroqueApp/Views/Profiles/SetChip.h"

#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int inset = 9;
constexpr int gap = 6;

QFont nameFont()
{
    return Type::text(Type::caption, QFont::Medium);
}

QFont countFont()
{
    return Type::text(Type::caption);
}

} // namespace

SetChip::SetChip(const QString& name, std::size_t count, QWidget* parent)
    : QPushButton(name, parent), m_count(QString::number(count))
{
    setProperty("kind", u"small"_s); // for its height
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(count == 1 ? u"%1, 1 platform"_s.arg(name)
                                 : u"%1, %2 platforms"_s.arg(name).arg(count));
    setToolTip(u"%1\nCheck these platforms and no others"_s.arg(name));
}

QSize SetChip::sizeHint() const
{
    const int name = QFontMetrics(nameFont()).horizontalAdvance(text()) + 1;
    const int count = QFontMetrics(countFont()).horizontalAdvance(m_count) + 1;
    return {inset + name + gap + count + inset, chipHeight};
}

void SetChip::paintEvent(QPaintEvent*)
{
    constexpr double radius = 6;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(isChecked() ? theme.accent : theme.controlEdge);
    painter.setBrush(isDown()       ? theme.pressed
                     : underMouse() ? theme.hover
                     : isChecked()  ? theme.selected
                                    : theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    const int count = QFontMetrics(countFont()).horizontalAdvance(m_count) + 1;
    const QRect inside = rect().adjusted(inset, 0, -inset, 0);
    Type::draw(painter, inside.adjusted(0, 0, -count - gap, 0), text(), nameFont(), theme.text1);
    Type::draw(painter, inside, m_count, countFont(), theme.text2,
               Qt::AlignRight | Qt::AlignVCenter);
}

void SetChip::contextMenuEvent(QContextMenuEvent* event)
{
    showMenu(event->reason() == QContextMenuEvent::Mouse ? event->globalPos()
                                                         : mapToGlobal(rect().bottomLeft()));
}

void SetChip::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        showMenu(mapToGlobal(rect().bottomLeft()));
    else
        QPushButton::keyPressEvent(event);
}

void SetChip::showMenu(const QPoint& place)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    menu->setAccessibleName(text());
    menu->addAction(u"Rename"_s, this, &SetChip::renameWanted);
    menu->addAction(u"Update"_s, this, &SetChip::updateWanted)
        ->setToolTip(u"Keep the platforms that are checked now under this name"_s);
    menu->addAction(u"Delete"_s, this, &SetChip::deleteWanted);
    menu->popup(place);
}

} // namespace vantroque
