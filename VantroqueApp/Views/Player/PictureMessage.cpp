#include "VantroqueApp/Views/Player/PictureMessage.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QEvent>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

PictureMessage::PictureMessage(PlayerController& player, QWidget& picture)
    : QLabel(&picture),
      m_player(player),
      m_picture(picture),
      m_show(new QPushButton(u"Show"_s, this)),
      m_end(new QTimer(this))
{
    setObjectName(u"pictureMessage"_s);
    setFont(Type::text(Type::caption, QFont::Medium));
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    m_show->setProperty("kind", u"small"_s);
    m_show->setFont(Type::text(Type::caption, QFont::Medium));
    m_show->setFocusPolicy(Qt::TabFocus);
    m_show->setToolTip(u"Shows it in its folder"_s);
    connect(m_show, &QPushButton::clicked, &player, &PlayerController::showSavedStill);
    m_end->setSingleShot(true);
    picture.installEventFilter(this);
    connect(&player, &PlayerController::exportMessageChanged, this, &PictureMessage::refresh);
    connect(m_end, &QTimer::timeout, &player, [&player] { player.setExportMessage({}); });
    refresh();
}

void PictureMessage::refresh()
{
    constexpr int milliseconds = 8000;
    const auto& message = m_player.exportMessage();
    setVisible(message.has_value());
    setText(message.value_or(QString()));
    m_show->setVisible(m_player.savedStill().has_value());
    // Nothing on it can be pressed: what is below it can.
    setAttribute(Qt::WA_TransparentForMouseEvents, !m_player.savedStill());
    if (!message)
        return m_end->stop();
    m_end->start(milliseconds);
    place();
}

void PictureMessage::place()
{
    constexpr int margin = 12;
    constexpr int widest = 640;
    const int room = std::min(m_picture.width() - 2 * margin, widest);
    constexpr int inset = 5;
    setMaximumWidth(room);
    const QSize button = m_show->isHidden() ? QSize(0, 0) : m_show->sizeHint();
    const int beside = m_show->isHidden() ? 0 : button.width() + inset;
    setContentsMargins(0, 0, beside, 0);
    // The padding of the style sheet, which a label leaves out of the height that it asks for.
    constexpr int sides = 2 * margin;
    constexpr int ends = 14;
    const QFontMetrics words(font());
    const int wide = std::min(words.horizontalAdvance(text()) + sides + 2 + beside, room);
    const QRect column(0, 0, wide - sides - beside, QWIDGETSIZE_MAX);
    const int high = std::max(words.boundingRect(column, Qt::TextWordWrap, text()).height() + ends,
                              button.height() + 2 * inset);
    m_show->setGeometry(wide - inset - button.width(), (high - button.height()) / 2, button.width(),
                        button.height());
    // Away from the captions.
    setGeometry((m_picture.width() - wide) / 2, margin, wide, high);
    raise();
}

bool PictureMessage::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize && !isHidden())
        place();
    return false;
}

} // namespace vantroque
