#include "VantroqueApp/Views/Player/PictureMessage.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QEvent>
#include <QTimer>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

PictureMessage::PictureMessage(PlayerController& player, QWidget& picture)
    : QLabel(&picture), m_player(player), m_picture(picture), m_end(new QTimer(this))
{
    setObjectName(u"pictureMessage"_s);
    setFont(Type::text(Type::caption, QFont::Medium));
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
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
    setMaximumWidth(room);
    const int wide =
        std::min(QFontMetrics(font()).horizontalAdvance(text()) + 2 * margin + 2, room);
    const int high = heightForWidth(wide);
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
