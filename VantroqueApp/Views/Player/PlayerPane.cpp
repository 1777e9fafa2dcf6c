#include "VantroqueApp/Views/Player/PlayerPane.h"

#include "Base/Numbers.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/DeskInstruments.h"
#include "VantroqueApp/Views/Player/FileLine.h"
#include "VantroqueApp/Views/Player/PictureFullScreen.h"
#include "VantroqueApp/Views/Player/PictureMessage.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/ScopesPanel.h"
#include "VantroqueApp/Views/Player/Timeline.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Player/TransportRow.h"
#include "VantroqueApp/Views/Player/VerticalDragCatcher.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int belowPicture = 310; ///< The least that the rest of the pane has.
constexpr int leastPicture = 120;
const QString shareKey = u"player.pictureShare"_s;
constexpr int narrowestSide = 320;
constexpr int usualSide = 384;
constexpr int widestSide = 480;
const QString sideKey = u"player.reviewSide"_s;

std::optional<double> storedShare(const UserDefaults& defaults)
{
    const auto text = defaults.text(shareKey);
    const auto share = text ? Numbers::toDouble(*text) : std::nullopt;
    return share && *share > 0 && *share < 1 ? share : std::nullopt;
}

int storedSide(const UserDefaults& defaults)
{
    const auto text = defaults.text(sideKey);
    const auto width = text ? Numbers::toDouble(*text) : std::nullopt;
    const bool fits = width && *width >= narrowestSide && *width <= widestSide;
    return fits ? static_cast<int>(*width) : usualSide;
}

} // namespace

PlayerPane::PlayerPane(PlayerController& player, UserDefaults& defaults, QWidget* parent)
    : QWidget(parent),
      m_player(player),
      m_defaults(defaults),
      m_sides(new QSplitter(Qt::Horizontal, this)),
      m_main(new QWidget(m_sides)),
      m_side(new QWidget(m_sides)),
      m_picture(new PictureView(player, m_main)),
      m_timeline(new Timeline(player, m_main)),
      m_note(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2, m_main)),
      m_scopesArea(new QScrollArea(m_main)),
      m_scopes(new ScopesPanel(player.scopes(), m_scopesArea)),
      m_bottom(new QBoxLayout(QBoxLayout::RightToLeft)),
      m_fold(new ToolButton(u"scopes"_s, u"Instruments"_s, m_main)),
      m_instruments(new DeskInstruments(player, m_main)),
      m_sideWidth(storedSide(defaults)),
      m_share(storedShare(defaults)),
      m_fullScreen(std::make_unique<PictureFullScreen>(player, *m_picture))
{
    setObjectName(u"player"_s);
    setAttribute(Qt::WA_StyledBackground);
    setMinimumWidth(narrowest);
    new PictureMessage(player, *m_picture);
    m_sides->setHandleWidth(1);
    m_sides->setChildrenCollapsible(false);
    m_sides->setStretchFactor(0, 1);
    m_sides->setStretchFactor(1, 0);
    m_side->setMinimumWidth(narrowestSide);
    m_side->setMaximumWidth(widestSide);
    layOutMain();
    auto* side = new QVBoxLayout(m_side);
    side->setContentsMargins(0, 0, 0, 0);
    side->setSpacing(0);
    side->addWidget(new FileLine(player, m_side));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_sides);
    connect(m_sides, &QSplitter::splitterMoved, this, [this] {
        m_sideWidth = m_side->width();
        m_defaults.setText(sideKey, QString::number(m_sideWidth));
    });
    connect(m_picture, &PictureView::focusChanged, this, &PlayerPane::pictureFocusChanged);
    connect(m_scopes, &ScopesPanel::scopesChanged, this, &PlayerPane::fit);
    connect(m_fold, &QAbstractButton::toggled, this, [this](bool unfolded) {
        m_isUnfolded = unfolded;
        fit();
    });
    connect(&player, &PlayerController::modeChanged, this, &PlayerPane::showMode);
    TransportActions actions = player.transportActions();
    actions.fullScreen = [this] { m_fullScreen->open(); };
    new TransportKeysModifier(*this, std::move(actions));
    showMode();
    setReview(false);
}

void PlayerPane::layOutMain()
{
    m_note->setWordWrap(true);
    m_note->setContentsMargins(12, 0, 12, 10);
    m_fold->setPlain();
    m_fold->setCheckable(true);
    m_fold->setToolTip(u"Scopes and channels, which a low window has no room for"_s);
    m_column = new QVBoxLayout(m_main);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    m_column->addWidget(m_picture);
    m_column->addWidget(m_timeline);
    m_column->addWidget(new TransportRow(m_player, m_main));
    m_column->addWidget(m_note);
    m_handle = handle(); // the keyboard comes to it after the transport
    m_column->addWidget(m_handle);
    m_column->addWidget(m_fold, 0, Qt::AlignLeft);
    m_column->addWidget(m_instruments);
    m_bottom->setSpacing(0);
    // Where all of them are on, a low window has no room for the column.
    m_scopesArea->setWidget(m_scopes);
    m_scopesArea->setWidgetResizable(true);
    m_scopesArea->setFrameShape(QFrame::NoFrame);
    m_scopesArea->setFocusPolicy(Qt::NoFocus);
    m_scopesArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_bottom->addWidget(m_scopesArea);
    m_bottom->addStretch(1);
    m_column->addLayout(m_bottom, 1);
}

/// The picture loses the keyboard as it goes, when there is nobody left to hear of it.
PlayerPane::~PlayerPane()
{
    m_picture->disconnect(this);
}

VerticalDragCatcher* PlayerPane::handle()
{
    auto* handle = new VerticalDragCatcher(m_main);
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
    m_below = below;
    delete m_bottom->takeAt(1); // the stretch that kept its place
    moveBelow();
}

/// What is being written there goes on.
void PlayerPane::moveBelow()
{
    if (m_below == nullptr)
        return;
    QWidget* focused = QApplication::focusWidget();
    const bool hasKeyboard = focused != nullptr && m_below->isAncestorOf(focused);
    if (m_review)
        m_side->layout()->addWidget(m_below);
    else
        m_bottom->addWidget(m_below, 1);
    m_below->show();
    if (hasKeyboard)
        focused->setFocus(Qt::OtherFocusReason);
}

void PlayerPane::setReview(bool review)
{
    m_review = review;
    m_player.scopes().setPlace(review ? ScopePlace::review : ScopePlace::report);
    moveBelow();
    m_side->setVisible(review);
    m_timeline->setLanes(review);
    m_handle->setVisible(!review);
    m_column->setStretchFactor(m_picture, review ? 1 : 0);
    m_column->setStretchFactor(m_bottom, review ? 0 : 1);
    fit();
    if (review)
        shareSides();
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
    if (m_review)
        fitDesk();
    else
        fitBesideReport();
}

void PlayerPane::fitBesideReport()
{
    m_fold->hide();
    m_instruments->hide();
    const int wanted = m_share ? qRound(*m_share * height()) : usualPictureHeight();
    m_picture->setFixedHeight(std::clamp(wanted, leastPicture, mostPictureHeight()));
    const bool narrow = width() < roomy;
    m_scopes->setForm(narrow ? ScopesPanel::Form::strip : ScopesPanel::Form::column);
    m_bottom->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::RightToLeft);
    m_scopesArea->setVisible(m_scopes->hasScopes());
    m_scopesArea->setMinimumSize(narrow ? QSize(0, m_scopes->minimumHeight())
                                        : QSize(m_scopes->minimumWidth(), 0));
    m_scopesArea->setMaximumSize(narrow ? QSize(QWIDGETSIZE_MAX, m_scopes->minimumHeight())
                                        : QSize(m_scopes->minimumWidth(), QWIDGETSIZE_MAX));
}

/// The picture has what the rest leaves. In a low window the instruments fold.
void PlayerPane::fitDesk()
{
    constexpr int lowBelow = 712; // a window of 760 with its header
    m_picture->setMinimumHeight(leastPicture);
    m_picture->setMaximumHeight(QWIDGETSIZE_MAX);
    m_scopesArea->hide();
    const bool low = height() < lowBelow;
    m_fold->setVisible(low);
    m_instruments->setVisible(!low || m_isUnfolded);
}

void PlayerPane::shareSides()
{
    m_sides->setSizes({width() - m_sideWidth - m_sides->handleWidth(), m_sideWidth});
}

/// Beside a report these keys are also those of the list of problems.
bool PlayerPane::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<const QKeyEvent*>(event);
        if (key->key() == Qt::Key_N && (key->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void PlayerPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
    if (m_review)
        shareSides();
}

} // namespace vantroque
