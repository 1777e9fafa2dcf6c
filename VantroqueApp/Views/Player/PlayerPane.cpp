#include "VantroqueApp/Views/Player/PlayerPane.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Player/PictureFullScreen.h"
#include "VantroqueApp/Views/Player/PictureMessage.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/ScopesPanel.h"
#include "VantroqueApp/Views/Player/Timeline.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Player/TransportRow.h"
#include "VantroqueApp/Views/Player/VerticalDragCatcher.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int belowPicture = 310; ///< The least that the rest of the pane has.
constexpr int leastPicture = 120;
const QString shareKey = u"player.pictureShare"_s;

std::optional<double> storedShare(const UserDefaults& defaults)
{
    const auto text = defaults.text(shareKey);
    const auto share = text ? Numbers::toDouble(*text) : std::nullopt;
    return share && *share > 0 && *share < 1 ? share : std::nullopt;
}

} // namespace

PlayerPane::PlayerPane(PlayerController& player, UserDefaults& defaults, QWidget* parent)
    : QWidget(parent),
      m_player(player),
      m_defaults(defaults),
      m_picture(new PictureView(player, this)),
      m_note(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2, this)),
      m_scopes(new ScopesPanel(player.scopes())),
      m_scopesArea(new QScrollArea(this)),
      m_bottom(new QBoxLayout(QBoxLayout::RightToLeft)),
      m_share(storedShare(defaults)),
      m_fullScreen(std::make_unique<PictureFullScreen>(player, *m_picture))
{
    setObjectName(u"player"_s);
    setAttribute(Qt::WA_StyledBackground);
    setMinimumWidth(narrowest);
    new PictureMessage(player, *m_picture);
    m_note->setWordWrap(true);
    m_note->setContentsMargins(12, 0, 12, 10);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_picture);
    layout->addWidget(new Timeline(player, this));
    layout->addWidget(new TransportRow(player, this));
    layout->addWidget(m_note);
    layout->addWidget(handle());
    m_bottom->setSpacing(0);
    // Where all of them are on, a low window has no room for the column.
    m_scopesArea->setWidget(m_scopes);
    m_scopesArea->setWidgetResizable(true);
    m_scopesArea->setFrameShape(QFrame::NoFrame);
    m_scopesArea->setFocusPolicy(Qt::NoFocus);
    m_scopesArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_bottom->addWidget(m_scopesArea);
    m_bottom->addStretch(1);
    layout->addLayout(m_bottom, 1);
    connect(m_picture, &PictureView::focusChanged, this, &PlayerPane::pictureFocusChanged);
    connect(m_scopes, &ScopesPanel::scopesChanged, this, &PlayerPane::fit);
    connect(&player, &PlayerController::modeChanged, this, &PlayerPane::showMode);
    TransportActions actions = player.transportActions();
    actions.fullScreen = [this] { m_fullScreen->open(); };
    new TransportKeysModifier(*this, std::move(actions));
    showMode();
}

/// The picture loses the keyboard as it goes, when there is nobody left to hear of it.
PlayerPane::~PlayerPane()
{
    m_picture->disconnect(this);
}

QWidget* PlayerPane::handle()
{
    auto* handle = new VerticalDragCatcher(this);
    connect(handle, &VerticalDragCatcher::dragBegan, this,
            [this] { m_dragFrom = m_picture->height(); });
    connect(handle, &VerticalDragCatcher::draggedBy, this, [this](int points) {
        const int high = std::clamp(m_dragFrom + points, leastPicture, mostPictureHeight());
        m_share = static_cast<double>(high) / std::max(height(), 1);
        fit();
    });
    connect(handle, &VerticalDragCatcher::dragEnded, this, [this] {
        if (m_share)
            m_defaults.setText(shareKey, Numbers::fixed(*m_share, 4));
    });
    connect(handle, &VerticalDragCatcher::reset, this, [this] {
        m_share.reset();
        m_defaults.setText(shareKey, {});
        fit();
    });
    return handle;
}

void PlayerPane::setBelow(QWidget* below)
{
    delete m_bottom->takeAt(1); // the stretch that kept its place
    m_bottom->addWidget(below, 1);
}

void PlayerPane::showMode()
{
    const QStringList notes = m_player.notes();
    m_note->setText(notes.join(u'\n'));
    m_note->setVisible(!notes.isEmpty());
}

/// As high as the picture is when it fills the width.
int PlayerPane::usualPictureHeight() const
{
    const PlayedFile& file = m_player.file();
    const QSizeF viewport = ZoomState::viewport(width(), file.shape().squareWidth(),
                                                file.shape().height, mostPictureHeight());
    return qRound(viewport.height());
}

int PlayerPane::mostPictureHeight() const
{
    return std::max(height() - belowPicture, leastPicture);
}

void PlayerPane::fit()
{
    const int wanted = m_share ? qRound(*m_share * height()) : usualPictureHeight();
    m_picture->setFixedHeight(std::clamp(wanted, leastPicture, mostPictureHeight()));
    const bool narrow = width() < roomy;
    m_scopes->setOrientation(narrow ? Qt::Horizontal : Qt::Vertical);
    m_bottom->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::RightToLeft);
    m_scopesArea->setVisible(m_scopes->hasScopes());
    m_scopesArea->setMinimumSize(narrow ? QSize(0, m_scopes->minimumHeight())
                                        : QSize(m_scopes->minimumWidth(), 0));
    m_scopesArea->setMaximumSize(narrow ? QSize(QWIDGETSIZE_MAX, m_scopes->minimumHeight())
                                        : QSize(m_scopes->minimumWidth(), QWIDGETSIZE_MAX));
}

void PlayerPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

} // namespace vantroque
