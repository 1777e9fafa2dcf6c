#include "VantroqueApp/Views/Player/TimecodeField.h"

#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int inset = 11;
constexpr int gap = 8;
constexpr int fieldHeight = 30;

QFont timeFont()
{
    return Type::mono(Type::heading, QFont::Medium);
}

QFont trailingFont()
{
    return Type::mono(Type::caption, QFont::Medium);
}

} // namespace

TimecodeField::TimecodeField(const QString& accessibleName, QWidget* parent)
    : QWidget(parent), m_timecode(0, FrameRate::television()), m_entry(new QLineEdit(this))
{
    setAccessibleName(accessibleName);
    setFixedHeight(fieldHeight);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_entry->setAccessibleName(accessibleName);
    m_entry->setFrame(false);
    m_entry->setFont(timeFont());
    m_entry->setObjectName(u"timecodeEntry"_s);
    m_entry->setContextMenuPolicy(Qt::NoContextMenu);
    m_entry->hide();
    connect(m_entry, &QLineEdit::textChanged, this, qOverload<>(&QWidget::update));
    m_entry->installEventFilter(this);
    showHelp();
}

TimecodeField::~TimecodeField() = default;

void TimecodeField::show(const Timecode& timecode, const std::optional<QString>& trailing)
{
    const bool resized =
        trailing != m_trailing || timecode.text().size() != m_timecode.text().size();
    m_timecode = timecode;
    m_trailing = trailing;
    setAccessibleDescription(timecode.text());
    if (resized)
        updateGeometry();
    update();
}

void TimecodeField::setOnSeek(std::function<void(const Timecode&)> onSeek)
{
    m_onSeek = std::move(onSeek);
    setFocusPolicy(m_onSeek ? Qt::TabFocus : Qt::NoFocus);
    setCursor(m_onSeek ? Qt::IBeamCursor : Qt::ArrowCursor);
    showHelp();
}

void TimecodeField::showHelp()
{
    if (isEditing())
        setToolTip(u"Copy it, or type a new one and press Return"_s);
    else if (m_onSeek)
        setToolTip(u"Click to select it, then copy it or type a new one. Command-V goes to the one "
                   u"you copied\nOn this desktop: Ctrl+V"_s);
    else
        setToolTip(u"This clip's timecode"_s);
}

std::optional<Timecode> TimecodeField::parsed(const QString& text) const
{
    return Timecode::parse(text, m_timecode.rate());
}

bool TimecodeField::looksWrong() const
{
    return isEditing() && !m_entry->text().isEmpty() && !parsed(m_entry->text());
}

QSize TimecodeField::sizeHint() const
{
    int width = 2 * inset + QFontMetrics(timeFont()).horizontalAdvance(m_timecode.text());
    if (m_trailing)
        width += gap + QFontMetrics(trailingFont()).horizontalAdvance(*m_trailing);
    return {width + 1, fieldHeight};
}

void TimecodeField::beginEditing()
{
    if (!m_onSeek || isEditing())
        return;
    m_pause = std::make_unique<TransportKeysPause>();
    m_entry->clear();
    m_entry->setPlaceholderText(m_timecode.text());
    m_entry->show();
    m_entry->setFocus();
    qApp->installEventFilter(this);
    showHelp();
    update();
}

void TimecodeField::endEditing()
{
    if (!isEditing())
        return;
    m_pause.reset();
    qApp->removeEventFilter(this);
    const bool hadFocus = m_entry->hasFocus();
    m_entry->clear();
    m_entry->hide();
    if (hadFocus)
        setFocus();
    showHelp();
    update();
}

/// On Return.
void TimecodeField::commit()
{
    const QString text = m_entry->text();
    const auto time = parsed(text);
    if (!time && !text.isEmpty())
        return; // stays open, to be mended
    endEditing();
    if (time)
        m_onSeek(*time);
}

/// Taken here, or the field would begin anew with the key that ended it.
bool TimecodeField::pressInEntry(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: commit(); return true;
    case Qt::Key_Escape: endEditing(); return true;
    default: return false;
    }
}

/// While it is edited: Escape, and presses and focus elsewhere, end that.
bool TimecodeField::eventFilter(QObject* watched, QEvent* event)
{
    if (!isEditing())
        return false;
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        const QPoint place = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        if (!rect().contains(mapFromGlobal(place)))
            endEditing();
    } else if (watched == m_entry && event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            endEditing();
    } else if (watched == m_entry && event->type() == QEvent::KeyPress) {
        return pressInEntry(static_cast<QKeyEvent*>(event)->key());
    }
    return false;
}

void TimecodeField::paintEvent(QPaintEvent*)
{
    constexpr double radius = 6;
    const Theme& theme = Theme::dark();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool wrong = looksWrong();
    painter.setPen(wrong         ? QPen(theme.text2, 1, Qt::DashLine)
                   : isEditing() ? QPen(theme.accent, 1)
                                 : QPen(theme.hairline, 1));
    painter.setBrush(wrong ? theme.pressed : theme.readout);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    const QRect inside = rect().adjusted(inset, 0, -inset, 0);
    if (!isEditing())
        Type::draw(painter, inside, m_timecode.text(), timeFont(), theme.text1,
                   Qt::AlignLeft | Qt::AlignVCenter, Qt::ElideNone);
    if (m_trailing)
        Type::draw(painter, inside, *m_trailing, trailingFont(), theme.text3,
                   Qt::AlignRight | Qt::AlignVCenter, Qt::ElideNone);
}

void TimecodeField::resizeEvent(QResizeEvent*)
{
    const int width = QFontMetrics(timeFont()).horizontalAdvance(m_timecode.text()) + gap;
    m_entry->setGeometry(inset, 1, width, height() - 2);
}

void TimecodeField::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        beginEditing();
}

void TimecodeField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return beginEditing();
    QWidget::keyPressEvent(event);
}

void TimecodeField::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    menu.setAccessibleName(accessibleName());
    QClipboard* clipboard = QApplication::clipboard();
    menu.addAction(u"Copy Timecode"_s, this,
                   [this, clipboard] { clipboard->setText(m_timecode.text()); });
    if (m_onSeek) {
        const auto pasted = parsed(clipboard->text());
        QAction* paste = menu.addAction(u"Paste Timecode"_s, this, [this, pasted] {
            endEditing();
            m_onSeek(*pasted);
        });
        paste->setEnabled(pasted.has_value());
        menu.addAction(u"Go to Timecode"_s, this, &TimecodeField::beginEditing);
    }
    menu.exec(event->globalPos());
}

} // namespace vantroque
