#include "VantroqueApp/Views/Compare/CompareBar.h"

#include "VantroqueApp/Views/Controls/IconButton.h"
#include "VantroqueApp/Views/Controls/Scrubber.h"
#include "VantroqueApp/Views/Controls/TabSwitch.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/PlayButton.h"
#include "VantroqueApp/Views/Player/PlayerMenus.h"
#include "VantroqueApp/Views/Player/TimecodeField.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int sizeSteps = 1000; ///< Of the line on which the size of tiles is chosen.

} // namespace

CompareBar::CompareBar(CompareController& compare, ComparePair& pair, QWidget* parent)
    : QWidget(parent),
      m_compare(compare),
      m_pair(pair),
      m_play(new PlayButton(this)),
      m_time(new TimecodeField(u"Timecode"_s, this)),
      m_speed(new QLabel(this)),
      m_position(new Scrubber(u"Position"_s, this)),
      m_end(IconButton::make(u"end"_s, u"To the end"_s, u"Jump every clip to its last frame"_s,
                             this)),
      m_guides(new ToolButton(u"guides"_s, u"Guides"_s, this)),
      // The keyboard goes through all of it as it is made.
      m_modes(modes()),
      m_gain(new QWidget(this)),
      m_gains(gains()),
      m_edges(edges()),
      m_sizes(sizes())
{
    setObjectName(u"compareBar"_s);
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(high);
    m_play->setToolTip(u"Play all, or stop  (space).  J K L shuttles"_s);
    m_speed->setFont(Type::mono(Type::caption, QFont::Medium));
    m_speed->setAccessibleName(u"Speed"_s);
    m_speed->setProperty("chip", true);
    m_speed->setFixedHeight(24);
    m_guides->setPlain();
    m_guides->setParts(ToolButton::Parts::icon);
    m_guides->setToolTip(u"Lines and areas over the pictures"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(12);
    for (QWidget* left : std::initializer_list<QWidget*>{m_play, m_time, m_speed})
        layout->addWidget(left);
    layout->addWidget(m_position, 1);
    for (QWidget* right :
         std::initializer_list<QWidget*>{m_end, m_guides, m_modes, m_gain, m_edges, m_sizes})
        layout->addWidget(right);

    m_time->setOnSeek([&compare](const Timecode& time) { compare.seek(time.seconds()); });
    m_position->setToolTip(u"Move all clips at once"_s);
    connect(m_play, &QAbstractButton::clicked, &compare, &CompareController::togglePlay);
    connect(m_position, &Scrubber::scrubbed, this, [this](int frame) {
        m_compare.seek(
            std::min(m_compare.sharedRate().secondsOf(frame), m_compare.longestDuration()));
    });
    connect(m_end, &QToolButton::clicked, this,
            [this] { m_compare.seek(m_compare.longestDuration()); });
    connect(&compare, &CompareController::moved, this, &CompareBar::showTime);
    connect(&compare, &CompareController::tilesChanged, this, &CompareBar::offerGuides);
    connect(&compare, &CompareController::tilesChanged, this, &CompareBar::showTime);
    connect(&compare, &CompareController::modeChanged, this, &CompareBar::showTime);
    connect(&compare.shuttle(), &ShuttleEngine::changed, this, &CompareBar::showSpeed);
    connect(&compare, &CompareController::syncModeChanged, this, &CompareBar::showEdge);
    connect(&compare, &CompareController::tileSizeChanged, this,
            [this] { m_size->setValue(qRound(m_compare.tileSize() * sizeSteps)); });
    connect(&pair, &ComparePair::modeChanged, this, &CompareBar::showMode);
    connect(&pair, &ComparePair::gainChanged, this, &CompareBar::showMode);
    connect(&pair, &ComparePair::pairChanged, this, &CompareBar::showMode);
    offerGuides();
    showTime();
    showSpeed();
    showMode();
    showEdge();
}

TabSwitch* CompareBar::modes()
{
    auto* modes = new TabSwitch(u"How versions are compared"_s, this);
    modes->add(u"compare"_s, u"Tiles"_s, u"Every clip beside the others  (1)"_s);
    modes->add(u"wipe"_s, u"Wipe"_s, {});
    modes->add(u"difference"_s, u"Difference"_s, {});
    connect(modes, &TabSwitch::pressed, this,
            [this](int mode) { m_pair.setMode(static_cast<CompareMode>(mode)); });
    return modes;
}

TabSwitch* CompareBar::gains()
{
    auto* gains = new TabSwitch(u"Gain"_s, m_gain);
    auto* layout = new QHBoxLayout(m_gain);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(
        Type::label(u"Gain"_s, Type::caption, QFont::Normal, Type::Ink::text2, m_gain));
    layout->addWidget(gains);
    for (const int gain : FrameDifference::gains)
        gains->add({}, QString::number(gain), u"Show differences %1 times as large"_s.arg(gain));
    connect(gains, &TabSwitch::pressed, this, [this](int tab) {
        m_pair.setGain(FrameDifference::gains.at(static_cast<std::size_t>(tab)));
    });
    return gains;
}

TabSwitch* CompareBar::edges()
{
    auto* edges = new TabSwitch(u"Edge that is aligned"_s, this);
    edges->add(u"astart"_s, u"Align starts"_s, u"Every clip sits at the same timecode"_s);
    edges->add(u"aend"_s, u"Align ends"_s,
               u"Every clip sits the same distance from its last frame"_s);
    connect(edges, &TabSwitch::pressed, this, [this](int edge) {
        m_compare.setSyncMode(edge == 0 ? SyncAlignment::fromStart : SyncAlignment::fromEnd);
    });
    return edges;
}

QWidget* CompareBar::sizes()
{
    constexpr int wide = 106;
    constexpr int step = 125; // as the keys
    auto* sizes = new QWidget(this);
    auto* smaller = IconButton::make(u"small"_s, u"Smaller"_s, u"Smaller tiles"_s, sizes);
    m_size = new Scrubber(u"Tile size"_s, sizes);
    auto* larger = IconButton::make(u"big"_s, u"Larger"_s, u"Larger tiles"_s, sizes);
    auto* layout = new QHBoxLayout(sizes);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    m_size->setFixedWidth(wide);
    m_size->setMaximum(sizeSteps);
    m_size->setSingleStep(step);
    m_size->setPageStep(step);
    m_size->setToolTip(u"Tile size  (Command-plus, Command-minus, Command-0 to fit)\n"
                       "On this desktop: Ctrl+plus, Ctrl+minus, Ctrl+0"_s);
    layout->addWidget(smaller);
    layout->addWidget(m_size);
    layout->addWidget(larger);
    connect(smaller, &QToolButton::clicked, this, [this] { m_compare.zoom(ZoomCommand::zoomOut); });
    connect(larger, &QToolButton::clicked, this, [this] { m_compare.zoom(ZoomCommand::zoomIn); });
    connect(m_size, &Scrubber::scrubbed, this,
            [this](int size) { m_compare.setTileSize(static_cast<double>(size) / sizeSteps); });
    return sizes;
}

/// Those that the pictures of all versions can have.
void CompareBar::offerGuides()
{
    if (QMenu* before = m_guides->menu())
        before->deleteLater();
    std::vector<PlayedFile> files;
    for (const CompareTile* tile : m_compare.displayTiles())
        files.push_back(tile->file());
    auto* menu = new GuidesMenu(files, m_guides);
    const auto mark = [this, menu] { menu->mark(m_compare.guideOptions()); };
    connect(menu, &GuidesMenu::chosen, &m_compare, &CompareController::setGuideOptions);
    connect(&m_compare, &CompareController::guidesChanged, menu, mark);
    mark();
    m_guides->setMenu(menu);
}

void CompareBar::setCanEnlarge(bool can)
{
    m_sizes->setEnabled(can);
}

Timecode CompareBar::timecode() const
{
    return Timecode::fromSeconds(m_compare.position(), m_compare.sharedRate());
}

void CompareBar::showTime()
{
    const Timecode end = Timecode::fromSeconds(m_compare.longestDuration(), m_compare.sharedRate());
    constexpr int roomy = 1100;
    m_time->show(timecode(), width() >= roomy ? std::optional(end.text()) : std::nullopt);
    m_position->setMaximum(static_cast<int>(end.frame()));
    if (!m_position->isSliderDown())
        m_position->setValue(static_cast<int>(timecode().frame()));
}

void CompareBar::showSpeed()
{
    const ShuttleState& state = m_compare.shuttle().state();
    m_play->setPlaying(!state.isStopped());
    const auto label = state.label();
    m_speed->setText(label.value_or(QString()));
    m_speed->setVisible(label.has_value());
}

void CompareBar::showMode()
{
    const bool tiles = m_pair.mode() == CompareMode::tiles;
    m_modes->choose(static_cast<int>(m_pair.mode()));
    const QString needed = u"There is only one picture to look at"_s;
    m_modes->offer(1, m_pair.isPair(),
                   m_pair.isPair() ? u"A and B as one picture, with an edge between them: is this "
                                     "the master that was approved, but for the end card?  (2)"_s
                                   : needed);
    m_modes->offer(2, m_pair.isPair(),
                   m_pair.isPair()
                       ? u"Only where A and B differ, sample by sample: did the re-export change "
                         "anything?  (3)"_s
                       : needed);
    m_gain->setVisible(!tiles);
    m_gain->setEnabled(m_pair.mode() == CompareMode::difference);
    const auto gain = std::ranges::find(FrameDifference::gains, m_pair.gain());
    m_gains->choose(static_cast<int>(gain - FrameDifference::gains.begin()));
    m_sizes->setVisible(tiles);
}

void CompareBar::showEdge()
{
    m_edges->choose(m_compare.syncMode() == SyncAlignment::fromStart ? 0 : 1);
}

/// The line of time has what the words leave.
void CompareBar::resizeEvent(QResizeEvent* event)
{
    constexpr int forModes = 1240;
    constexpr int forEdges = 1120;
    QWidget::resizeEvent(event);
    m_modes->setWords(width() >= forModes);
    m_edges->setWords(width() >= forEdges);
    showTime();
}

} // namespace vantroque
