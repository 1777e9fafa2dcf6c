#include "VantroqueApp/Views/Player/TransportRow.h"

#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/MoreMenu.h"
#include "VantroqueApp/Views/Player/PlayButton.h"
#include "VantroqueApp/Views/Player/PlayerMenus.h"
#include "VantroqueApp/Views/Player/ProblemButtons.h"
#include "VantroqueApp/Views/Player/TimecodeField.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QLabel>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int wordsFrom = 620;    ///< Width from which the tools have words.
constexpr int durationFrom = 560; ///< From which the time has the film's length beside it.
constexpr int problemsFrom = 580; ///< From which there is room to step through what is wrong,
constexpr int besideNumber = 220; ///< which takes so much from the words of the tools,
constexpr int besideTitle = 412;  ///< and so much with the name of the check and a word before.

/// A small figure beside the time.
QLabel* chip(const QString& accessibleName, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setFont(Type::mono(Type::caption, QFont::Medium));
    label->setAccessibleName(accessibleName);
    label->setProperty("chip", true);
    label->setFixedHeight(24);
    label->hide();
    return label;
}

ToolButton* tool(const QString& icon, const QString& text, const QString& help, QWidget* parent)
{
    auto* button = new ToolButton(icon, text, parent);
    button->setPlain();
    button->setToolTip(help);
    return button;
}

} // namespace

TransportRow::TransportRow(PlayerController& player, QWidget* parent)
    : QWidget(parent),
      m_player(player),
      m_play(new PlayButton(this)),
      m_time(new TimecodeField(u"Timecode"_s, this)),
      m_speed(chip(u"Speed"_s, this)),
      m_dropped(chip(u"Frames that were not shown"_s, this)),
      m_problems(new ProblemButtons(player, this)),
      m_zoom(tool(u"zoom"_s, u"Fit"_s, u"Zoom the picture for a closer look"_s, this)),
      m_guides(tool(u"guides"_s, u"Guides"_s, u"Lines and areas over the picture"_s, this)),
      m_scopes(tool(u"scopes"_s, u"Scopes"_s, u"Measure the picture on screen"_s, this))
{
    setFixedHeight(usualHeight);
    m_more = tool(u"more"_s, {},
                  u"Captions, and the picture on its own. Drop an .srt on the picture to add it"_s,
                  this);
    m_more->setAccessibleName(u"More"_s);
    m_more->setMenu(new MoreMenu(player, m_more));
    m_zoom->setMenu(new ZoomMenu(player.zoom(), m_zoom));
    m_guides->setMenu(guidesMenu());
    m_scopes->setMenu(new ScopesMenu(player.scopes(), m_scopes));
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(8);
    for (QWidget* left : std::initializer_list<QWidget*>{m_play, m_time, m_speed, m_dropped})
        layout->addWidget(left);
    layout->addWidget(m_problems);
    layout->addStretch(1);
    m_tools = new QHBoxLayout;
    for (ToolButton* right : {m_zoom, m_guides, m_scopes, m_more})
        m_tools->addWidget(right);
    layout->addLayout(m_tools);

    m_time->setOnSeek([&player](const Timecode& time) { player.seek(time.frame()); });
    connect(m_play, &QAbstractButton::clicked, &player, &PlayerController::togglePlay);
    connect(&player, &PlayerController::modeChanged, this, &TransportRow::showMode);
    connect(&player.playhead(), &Playhead::moved, this, &TransportRow::showTime);
    connect(&player.playhead(), &Playhead::droppedMore, this, &TransportRow::showSpeed);
    connect(&player.shuttle(), &ShuttleEngine::changed, this, &TransportRow::showSpeed);
    connect(&player.zoom(), &PictureZoom::changed, this, &TransportRow::showZoom);
    connect(m_problems, &ProblemButtons::problemsChanged, this, &TransportRow::fit);
    showMode();
    showSpeed();
    showZoom();
}

QMenu* TransportRow::guidesMenu()
{
    PictureGuides& guides = m_player.guides();
    auto* menu = new GuidesMenu({m_player.file()}, m_guides);
    const auto mark = [&guides, menu] { menu->mark(guides.guideOptions()); };
    connect(menu, &GuidesMenu::chosen, &guides, &PictureGuides::setGuideOptions);
    connect(&guides, &PictureGuides::changed, menu, mark);
    mark();
    return menu;
}

/// What the steps through the problems leave.
int TransportRow::room() const
{
    constexpr int number = 110;
    return width() - (m_problems->isHidden() ? 0 : number);
}

void TransportRow::showMode()
{
    const bool steps = m_player.usesFrameStepper();
    m_play->setEnabled(!steps);
    m_play->setToolTip(steps ? PlayerController::stepperHelp()
                             : u"Play or stop  (space).  J K L shuttles"_s);
    showTime();
}

void TransportRow::showTime()
{
    const Timecode end(m_player.lastFrameIndex() + 1, m_player.file().workingRate());
    m_time->show(m_player.timecode(),
                 room() >= durationFrom ? std::optional(end.text()) : std::nullopt);
}

void TransportRow::showSpeed()
{
    const ShuttleState& state = m_player.shuttle().state();
    m_play->setPlaying(!state.isStopped());
    const auto label = state.label();
    m_speed->setText(label.value_or(QString()));
    m_speed->setVisible(label.has_value());
    const auto dropped = m_player.playhead().droppedFrames();
    m_dropped->setText(u"%1 dropped"_s.arg(dropped));
    m_dropped->setToolTip(u"So many frames came too late to be shown since it began to play"_s);
    m_dropped->setVisible(dropped > 0 && !state.isStopped() && room() >= wordsFrom);
}

void TransportRow::showZoom()
{
    const QString zoom = ZoomMenu::current(m_player.zoom());
    m_zoom->setText(zoom);
    m_zoom->setAccessibleName(u"Zoom, "_s + zoom);
}

void TransportRow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

/// What is wrong with the film comes before the words of the tools.
void TransportRow::fit()
{
    const bool steps = m_problems->hasProblems() && width() >= problemsFrom;
    m_problems->setVisible(steps);
    m_problems->setTitled(width() >= wordsFrom + besideTitle);
    const bool roomy = width() >= wordsFrom;
    const bool words = steps ? width() >= wordsFrom + besideNumber : roomy;
    layout()->setContentsMargins(roomy ? 12 : 8, 0, roomy ? 8 : 4, 0);
    m_tools->setSpacing(roomy ? 4 : 0);
    m_zoom->setParts(roomy ? ToolButton::Parts::all : ToolButton::Parts::words);
    for (ToolButton* button : {m_guides, m_scopes, m_more})
        button->setParts(words ? ToolButton::Parts::all : ToolButton::Parts::icon);
    showTime();
    showSpeed();
}

} // namespace vantroque
