#include "VantroqueApp/Views/Compare/CompareView.h"

#include "VantroqueApp/Views/Compare/CompareBar.h"
#include "VantroqueApp/Views/Compare/CompareGrid.h"
#include "VantroqueApp/Views/Compare/CompareTileView.h"
#include "VantroqueApp/Views/Compare/PairPage.h"
#include "VantroqueApp/Views/Compare/PairPicture.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"

#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <functional>

namespace vantroque {

using namespace Qt::StringLiterals;

CompareView::CompareView(CompareController& compare, QWidget* parent)
    : QWidget(parent),
      m_compare(compare),
      m_pair(compare),
      m_pages(new QStackedWidget(this)),
      m_grid(new CompareGrid(compare, m_pair, m_pages)),
      m_page(new PairPage(compare, m_pair, m_pages)),
      m_bar(new CompareBar(compare, m_pair, this))
{
    setObjectName(u"compare"_s);
    setAttribute(Qt::WA_StyledBackground);
    m_pages->addWidget(m_grid);
    m_pages->addWidget(m_page);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_bar);
    new TransportKeysModifier(*this, transportActions());
    addKeys();
    connect(&m_pair, &ComparePair::modeChanged, this, &CompareView::showMode);
    connect(m_grid, &CompareGrid::canEnlargeChanged, this,
            [this] { m_bar->setCanEnlarge(m_grid->canEnlarge()); });
    m_bar->setCanEnlarge(m_grid->canEnlarge());
    showMode();
}

QWidget& CompareView::pages()
{
    return *m_pages;
}

void CompareView::addKeys()
{
    const auto on = [this](const QKeySequence& key, const std::function<void()>& act) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, act);
    };
    on(Qt::Key_1, [this] { m_pair.setMode(CompareMode::tiles); });
    on(Qt::Key_2, [this] { m_pair.setMode(CompareMode::wipe); });
    on(Qt::Key_3, [this] { m_pair.setMode(CompareMode::difference); });
    on(Qt::Key_X, [this] { m_pair.swap(); });
    const auto edge = [this, on](const QKeySequence& key, double by) {
        on(key, [this, by] {
            if (m_pair.mode() == CompareMode::wipe)
                m_pair.setWipeEdge(m_pair.wipeEdge() + by);
        });
    };
    constexpr double little = 0.01;
    constexpr double much = 0.1;
    edge(Qt::ALT | Qt::Key_Left, -little);
    edge(Qt::ALT | Qt::Key_Right, little);
    edge(Qt::ALT | Qt::SHIFT | Qt::Key_Left, -much);
    edge(Qt::ALT | Qt::SHIFT | Qt::Key_Right, much);
}

TransportActions CompareView::transportActions()
{
    const auto walk = [this](std::int64_t frames) {
        m_compare.shuttle().stop();
        m_compare.walk(frames);
    };
    return {.isComposing = [] { return false; },
            .timecode = [this] { return m_bar->timecode(); },
            .togglePlay = [this] { m_compare.togglePlay(); },
            .shuttle = [this](ShuttleState::Direction direction,
                              bool slow) { m_compare.shuttle().press(direction, slow); },
            .shuttleStop = [this] { m_compare.shuttle().stop(); },
            .step = walk,
            .jump =
                [this](bool toEnd) {
                    m_compare.shuttle().stop();
                    m_compare.seek(toEnd ? m_compare.longestDuration() : 0);
                },
            .seek = [this](const Timecode& time) { m_compare.seek(time.seconds()); },
            .zoom = [this](ZoomCommand command) { m_compare.zoom(command); },
            .escape = [this] { Q_EMIT left(); },
            .fullScreen = nullptr,
            .undo = nullptr,
            .redo = nullptr,
            .toMark = nullptr,
            .toProblem = nullptr,
            .bringBack = nullptr};
}

void CompareView::showMode()
{
    const bool tiles = m_pair.mode() == CompareMode::tiles;
    QWidget* page = tiles ? static_cast<QWidget*>(m_grid) : m_page;
    if (page == m_pages->currentWidget() && isAncestorOf(focusWidget()))
        return;
    m_pages->setCurrentWidget(page);
    if (!tiles)
        m_page->picture().setFocus();
    else if (!m_grid->tiles().empty())
        m_grid->tiles().front()->setFocus();
}

} // namespace vantroque
