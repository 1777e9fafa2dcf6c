#include "VantroqueApp/Views/Files/FileRowDelegate.h"

#include "VantroqueApp/Views/Controls/Ring.h"
#include "VantroqueApp/Views/Files/FileListModel.h"
#include "VantroqueApp/Views/Files/FileRow.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 2; ///< Between rows, below each.
constexpr int radius = 8;
constexpr int glyphSize = 18;
constexpr int glyphInset = 10;
constexpr int textInset = 38;
constexpr int padding = 10;
constexpr int crossWidth = 30;

QRect rowRect(const QStyleOptionViewItem& option)
{
    return option.rect.adjusted(0, 0, 0, -gap);
}

QRect crossRect(const QStyleOptionViewItem& option)
{
    const QRect row = rowRect(option);
    return {row.right() + 1 - crossWidth, row.top(), crossWidth, row.height()};
}

bool showsCross(const QStyleOptionViewItem& option)
{
    return option.state.testFlag(QStyle::State_MouseOver);
}

void drawGlyph(QPainter& painter, const QRectF& rect, const FileAnalysis& file,
               const FileRow::Snapshot* progress)
{
    const QColor quiet = Theme::current().text2;
    if (const FileReport* report = file.report())
        Icons::drawVerdict(painter, rect, Icons::signOf(*report));
    else if (file.is<FileAnalysis::Failed>())
        Icons::drawVerdict(painter, rect, Verdict::warn);
    else if (file.is<FileAnalysis::Running>())
        Ring::draw(painter, rect.adjusted(1, 1, -1, -1), 2,
                   progress != nullptr ? progress->fraction : 0);
    else
        Icons::draw(painter, rect,
                    file.is<FileAnalysis::Missing>() ? u"questionmark.circle"_s : u"clock"_s,
                    quiet);
}

/// Draws the badge after as much of the line as there is room for, and keeps its own width.
void drawStatus(QPainter& painter, QRect rect, const QString& line, const QString& badge)
{
    const Theme& theme = Theme::current();
    if (badge.isEmpty())
        return Type::draw(painter, rect, line, Type::text(Type::caption), theme.text2);
    constexpr int height = 18;
    constexpr int inset = 8;
    const QFont font = Type::text(Type::badge, QFont::Medium);
    const int width = QFontMetrics(font).horizontalAdvance(badge) + 2 * inset;
    const int lineWidth =
        std::min(QFontMetrics(Type::text(Type::caption)).horizontalAdvance(line) + 1,
                 rect.width() - width - 6);
    Type::draw(painter, QRect(rect.left(), rect.top(), lineWidth, rect.height()), line,
               Type::text(Type::caption), theme.text2);
    const QRect box(rect.left() + lineWidth + 6, rect.center().y() - height / 2, width, height);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.badge);
    painter.drawRoundedRect(box, height / 2.0, height / 2.0);
    Type::draw(painter, box, badge, font, theme.text1, Qt::AlignCenter);
}

} // namespace

void FileRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const Theme& theme = Theme::current();
    const auto& model = static_cast<const FileListModel&>(*index.model());
    const FileAnalysis& file = model.entry(index);
    const QRect row = rowRect(option);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (const bool selected = option.state.testFlag(QStyle::State_Selected);
        selected || showsCross(option)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(selected ? theme.selected : theme.hover);
        painter->drawRoundedRect(row, radius, radius);
    }
    drawGlyph(
        *painter,
        QRectF(row.left() + glyphInset, row.center().y() + 1 - glyphSize / 2, glyphSize, glyphSize),
        file, model.progress(index));
    const int right = showsCross(option) ? crossWidth + 2 : padding;
    const QRect text = row.adjusted(textInset, 0, -right, 0);
    const QFont nameFont = Type::text(Type::body, QFont::Medium);
    Type::draw(*painter, QRect(text.left(), row.top() + 10, text.width(), 18),
               model.shownName(index.row(), QFontMetrics(nameFont), text.width()), nameFont,
               file.is<FileAnalysis::Missing>() ? theme.text2 : theme.text1,
               Qt::AlignLeft | Qt::AlignVCenter, Qt::ElideMiddle);
    drawStatus(*painter, QRect(text.left(), row.top() + 29, text.width(), 16),
               FileRow::statusLine(file, model.progress(index)), FileRow::badge(file));
    if (showsCross(option))
        Icons::draw(*painter, QRectF(crossRect(option).center() - QPoint(8, 7), QSizeF(16, 16)),
                    u"x"_s, theme.text2);
    painter->restore();
}

QSize FileRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return {option.rect.width(), rowHeight + gap};
}

bool FileRowDelegate::editorEvent(QEvent* event, QAbstractItemModel*,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton || !crossRect(option).contains(mouse->pos()))
        return false;
    if (event->type() == QEvent::MouseButtonRelease)
        Q_EMIT removeRequested(index);
    return true;
}

bool FileRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (!index.isValid() || !crossRect(option).contains(event->pos()))
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), u"Remove from the list"_s, view, crossRect(option));
    return true;
}

} // namespace vantroque
