#include "VantroqueApp/Views/Files/FilterBar.h"

#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Files/FilterChip.h"

#include <QActionGroup>
#include <QButtonGroup>
#include <QMenu>

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 6;
constexpr int lineHeight = 30; // of the button, which is higher than a chip

const std::array<QString, 4>& sortNames()
{
    static const std::array<QString, 4> names{u"Added"_s, u"Name"_s, u"Verdict"_s, u"Length"_s};
    return names;
}

} // namespace

FilterBar::FilterBar(FileListModel& files, QWidget* parent)
    : QWidget(parent),
      m_files(files),
      m_group(new QButtonGroup(this)),
      m_sort(new ToolButton(u"sort"_s, sortNames().front(), this))
{
    setAccessibleName(u"Filter"_s);
    addChip(FileFilter::all, u"All"_s, {});
    addChip(FileFilter::failed, u"Fail"_s, Verdict::fail);
    addChip(FileFilter::warned, u"Warn"_s, Verdict::warn);
    addChip(FileFilter::notAnalyzed, u"Could not analyze"_s, {});
    m_sort->setPlain();
    m_sort->setToolTip(u"The order of the list"_s);
    m_sort->setMenu(sortMenu());
    m_sort->raise(); // after the chips for the keyboard, too
    setTabOrder(m_chips.back(), m_sort);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&files, &FileListModel::followed, this, &FilterBar::refresh);
    refresh();
}

void FilterBar::addChip(FileFilter filter, const QString& name, std::optional<Verdict> sign)
{
    auto* chip = new FilterChip(name, sign, this);
    m_group->addButton(chip);
    m_chips.push_back(chip);
    connect(chip, &QAbstractButton::clicked, this, [this, filter] { choose(filter); });
}

QMenu* FilterBar::sortMenu()
{
    auto* menu = new QMenu(this);
    menu->setAccessibleName(u"Sort"_s);
    auto* group = new QActionGroup(menu);
    for (std::size_t i = 0; i < sortNames().size(); ++i) {
        QAction* action = menu->addAction(sortNames().at(i), this, [this, i] {
            m_files.setOrder({m_files.order().filter, static_cast<FileSort>(i)});
        });
        action->setCheckable(true);
        group->addAction(action);
        m_sorts.push_back(action);
    }
    return menu;
}

void FilterBar::choose(FileFilter filter)
{
    m_files.setOrder({filter, m_files.order().sort});
}

void FilterBar::refresh()
{
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        const auto filter = static_cast<FileFilter>(i);
        m_chips[i]->setCount(m_files.count(filter));
        m_chips[i]->setChecked(m_files.order().filter == filter);
    }
    const auto sort = static_cast<std::size_t>(m_files.order().sort);
    m_sort->setText(sortNames().at(sort));
    m_sort->setAccessibleName(u"Sort: %1"_s.arg(sortNames().at(sort)));
    m_sorts.at(sort)->setChecked(true);
    setVisible(m_files.count(FileFilter::all) > 1 || m_files.order() != FileOrder());
    updateGeometry();
    resizeEvent(nullptr);
}

/// The chips one after the other, and the button at the right of the last line that has room.
std::vector<QRect> FilterBar::places(int width) const
{
    std::vector<QRect> places;
    std::vector<int> used{0}; // of each line
    const auto place = [&](const QSize& size, std::size_t line) {
        const int top = static_cast<int>(line) * lineHeight + (lineHeight - size.height()) / 2;
        places.emplace_back(QPoint(used[line], top), size);
        used[line] += size.width() + gap;
    };
    for (const FilterChip* chip : m_chips) {
        if (used.back() > 0 && used.back() + chip->sizeHint().width() > width)
            used.push_back(0);
        place(chip->sizeHint(), used.size() - 1);
    }
    const QSize sort = m_sort->sizeHint();
    std::size_t line = used.size();
    while (line > 0 && used[line - 1] + sort.width() > width)
        --line;
    if (line == 0) {
        used.push_back(0);
        line = used.size();
    }
    place(sort, line - 1);
    places.back().moveRight(std::max(width, sort.width()) - 1);
    return places;
}

int FilterBar::heightForWidth(int width) const
{
    constexpr int below = 6; // before the first row
    int bottom = 0;
    for (const QRect& place : places(width))
        bottom = std::max(bottom, place.bottom() + 1);
    return bottom + below;
}

QSize FilterBar::sizeHint() const
{
    return {0, heightForWidth(width())};
}

void FilterBar::resizeEvent(QResizeEvent*)
{
    const auto all = places(width());
    for (std::size_t i = 0; i < m_chips.size(); ++i)
        m_chips[i]->setGeometry(all[i]);
    m_sort->setGeometry(all.back());
}

} // namespace vantroque
