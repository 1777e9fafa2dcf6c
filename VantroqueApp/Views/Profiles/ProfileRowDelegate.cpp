#include "VantroqueApp/Views/Profiles/ProfileRowDelegate.h"

#include "VantroqueApp/Views/Profiles/ProfileRows.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int boxInset = 15;
constexpr int boxSize = 16;
constexpr int nameInset = 41;
constexpr int signSize = 8;
constexpr int signInset = 16; ///< From the right.
constexpr int gap = 10;

const ProfileRows::Spec* specOf(const QModelIndex& index)
{
    return static_cast<const ProfileRows&>(*index.model()).spec(index);
}

void drawBox(QPainter& painter, const QRect& box, bool checked)
{
    constexpr double radius = 4;
    const Theme& theme = Theme::current();
    painter.setPen(checked ? theme.accent : theme.text3);
    painter.setBrush(checked ? QBrush(theme.accent) : Qt::NoBrush);
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    if (checked)
        Icons::draw(painter, QRectF(box).adjusted(1, 1, -1, -1), u"checkmark"_s, theme.onAccent);
}

QColor colorOf(SpecFreshness freshness)
{
    const Theme& theme = Theme::current();
    switch (freshness) {
    case SpecFreshness::fresh: return theme.pass;
    case SpecFreshness::stale: return theme.warn;
    case SpecFreshness::expired: return theme.fail;
    case SpecFreshness::unreadable: break;
    }
    return theme.text2;
}

/// Told apart by its shape: a disc, one that is half full, a ring, and a broken ring.
void drawSign(QPainter& painter, const QRectF& sign, SpecFreshness freshness)
{
    constexpr double line = 1.5;
    constexpr int quarter = 90 * 16; // in the painter's unit
    const QColor color = colorOf(freshness);
    const QRectF ring = sign.adjusted(line / 2, line / 2, -line / 2, -line / 2);
    QPen pen(color, line);
    if (freshness == SpecFreshness::unreadable) {
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({1.3, 1.0}); // in widths of the line
    }
    painter.setPen(pen);
    painter.setBrush(freshness == SpecFreshness::fresh ? QBrush(color) : Qt::NoBrush);
    painter.drawEllipse(ring);
    if (freshness == SpecFreshness::stale) {
        painter.setBrush(color);
        painter.setPen(Qt::NoPen);
        painter.drawPie(sign, -quarter, 2 * quarter);
    }
    if (!Theme::current().isDark && freshness != SpecFreshness::unreadable) {
        painter.setPen(QPen(Theme::current().glyphOutline, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(sign.adjusted(-0.5, -0.5, 0.5, 0.5));
    }
}

int tagWidth(const QString& text)
{
    constexpr int inset = 6;
    return QFontMetrics(Type::text(Type::badge, QFont::Medium)).horizontalAdvance(text) + 2 * inset;
}

void drawTag(QPainter& painter, const QRect& tag, const QString& text)
{
    constexpr double radius = 4;
    const Theme& theme = Theme::current();
    painter.setPen(theme.controlEdge);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(tag).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    Type::draw(painter, tag, text, Type::text(Type::badge, QFont::Medium), theme.text2,
               Qt::AlignCenter);
}

/// The name as far as there is room, and the tag after it.
void drawName(QPainter& painter, QRect rect, const ProfileRows::Spec& spec)
{
    constexpr int tagHeight = 18;
    const Profile& profile = *spec.profile;
    const QFont font = Type::text(Type::body);
    const int tag = spec.tag.isEmpty() ? 0 : tagWidth(spec.tag);
    const int room = rect.width() - (tag > 0 ? tag + gap : 0);
    const int width = std::min(QFontMetrics(font).horizontalAdvance(profile.name) + 1, room);
    Type::draw(painter, QRect(rect.left(), rect.top(), width, rect.height()), profile.name, font,
               Theme::current().text1);
    if (tag > 0)
        drawTag(
            painter,
            QRect(rect.left() + width + gap, rect.center().y() + 1 - tagHeight / 2, tag, tagHeight),
            spec.tag);
}

} // namespace

void ProfileRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    const ProfileRows::Spec* spec = specOf(index);
    if (spec == nullptr)
        return; // a widget lies there
    constexpr double radius = 6;
    constexpr int inset = 8;
    const Theme& theme = Theme::current();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (option.state.testFlag(QStyle::State_MouseOver)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(theme.pressed); // on the colour of the panel
        painter->drawRoundedRect(option.rect.adjusted(inset, 0, -inset, 0), radius, radius);
    }
    const int top = option.rect.top() + (rowHeight - boxSize) / 2;
    drawBox(*painter, QRect(option.rect.left() + boxInset, top, boxSize, boxSize),
            index.data(Qt::CheckStateRole).toInt() == Qt::Checked);
    int right = option.rect.right() + 1 - signInset - signSize;
    const int signTop = option.rect.top() + (rowHeight - signSize) / 2;
    drawSign(*painter, QRectF(right, signTop, signSize, signSize), spec->freshness);
    right -= gap;
    if (!spec->words.isEmpty()) {
        const QFont font = Type::text(Type::badge);
        const int width = QFontMetrics(font).horizontalAdvance(spec->words) + 1;
        Type::draw(*painter, QRect(right - width, option.rect.top(), width, rowHeight), spec->words,
                   font, theme.text2);
        right -= width + gap;
    }
    const int left = option.rect.left() + nameInset;
    drawName(*painter, QRect(left, option.rect.top(), right - left, rowHeight), *spec);
    painter->restore();
}

QSize ProfileRowDelegate::sizeHint(const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    return {option.rect.width(), specOf(index) != nullptr ? rowHeight : headingHeight};
}

bool ProfileRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                     const QStyleOptionViewItem&, const QModelIndex& index)
{
    // The second press of two quick ones has no release of its own.
    const bool isMouse =
        event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::MouseButtonDblClick;
    const bool ticks = isMouse ? static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton
                               : event->type() == QEvent::KeyPress
                                     && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    if (!ticks || specOf(index) == nullptr)
        return false;
    const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

} // namespace vantroque
