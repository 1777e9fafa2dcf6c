#include "VantroqueApp/Views/Profiles/SavedSets.h"

#include "VantroqueApp/Views/Profiles/SetChip.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int gap = 8;
constexpr int nameWidth = 160;

} // namespace

SavedSets::SavedSets(ProfileSets& sets, int width, QWidget* parent)
    : QWidget(parent),
      m_sets(sets),
      m_save(new QPushButton(u"+ Save this choice"_s, this)),
      m_name(new QLineEdit(this))
{
    m_save->setProperty("kind", u"link"_s);
    m_save->setFont(Type::text(Type::caption, QFont::Medium));
    m_save->setAccessibleName(u"Save this choice"_s);
    m_save->setToolTip(u"Keep the platforms that are checked under a name"_s);
    m_save->setFocusPolicy(Qt::TabFocus);
    m_name->setObjectName(u"setName"_s);
    m_name->setFont(Type::text(Type::caption));
    m_name->setMaxLength(ProfileSets::longestName);
    m_name->setPlaceholderText(u"Name of the set"_s);
    m_name->setAccessibleName(u"Name of the set"_s);
    m_name->setFixedSize(nameWidth, SetChip::chipHeight);
    m_name->hide();
    setFixedWidth(width);
    connect(m_save, &QPushButton::clicked, this, [this] { startNaming(std::nullopt); });
    connect(m_name, &QLineEdit::returnPressed, this, &SavedSets::takeName);
    connect(&sets, &ProfileSets::changed, this, &SavedSets::refill);
    addChips();
    refill();
}

void SavedSets::refill()
{
    if (!isShown()) {
        const auto focused = std::ranges::find_if(m_chips, &QWidget::hasFocus) - m_chips.begin();
        for (SetChip* chip : std::exchange(m_chips, {})) {
            chip->setParent(nullptr);
            chip->deleteLater(); // its menu may be what called
        }
        addChips();
        if (focused < std::ssize(m_chips))
            m_chips[static_cast<std::size_t>(focused)]->setFocus(Qt::OtherFocusReason);
    }
    const auto current = m_sets.current();
    for (std::size_t i = 0; i < m_chips.size(); ++i)
        m_chips[i]->setChecked(current == i);
    m_save->setEnabled(m_sets.canSave());
}

/// Most changes are of the choice, and leave the sets as they are.
bool SavedSets::isShown() const
{
    const auto& sets = m_sets.sets();
    bool same = m_chips.size() == sets.size();
    for (std::size_t i = 0; same && i < sets.size(); ++i)
        same = m_chips[i]->shows(sets[i].name, m_sets.count(i));
    return same;
}

void SavedSets::addChips()
{
    QWidget* before = nullptr;
    for (std::size_t i = 0; i < m_sets.sets().size(); ++i) {
        auto* chip = new SetChip(m_sets.sets()[i].name, m_sets.count(i), this);
        connect(chip, &QPushButton::clicked, this, [this, i] { m_sets.choose(i); });
        connect(chip, &SetChip::renameWanted, this, [this, i] { startNaming(i); });
        connect(chip, &SetChip::updateWanted, this, [this, i] { m_sets.update(i); });
        connect(chip, &SetChip::deleteWanted, this, [this, i] { m_sets.remove(i); });
        chip->show();
        if (before != nullptr)
            setTabOrder(before, chip);
        before = chip;
        m_chips.push_back(chip);
    }
    if (before != nullptr)
        setTabOrder(before, m_save);
    setTabOrder(m_save, m_name);
    arrange();
}

bool SavedSets::isNaming() const
{
    return !m_name->isHidden();
}

void SavedSets::startNaming(std::optional<std::size_t> renamed)
{
    m_renamed = renamed;
    m_name->setText(renamed ? m_sets.sets().at(*renamed).name : QString());
    m_name->selectAll();
    m_name->show();
    m_save->hide();
    arrange();
    m_name->setFocus(Qt::OtherFocusReason);
}

void SavedSets::stopNaming()
{
    m_save->show();
    if (m_name->hasFocus())
        m_save->setFocus(Qt::OtherFocusReason);
    m_name->hide();
    arrange();
}

/// One that cannot be given stays in the field.
void SavedSets::takeName()
{
    const QString name = m_name->text().simplified();
    if (m_renamed)
        m_sets.rename(*m_renamed, name);
    else
        m_sets.save(name);
    const bool isGiven = std::ranges::any_of(m_sets.sets(), [&](const ProfileSet& set) {
        return set.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (isGiven)
        stopNaming();
    else
        m_name->selectAll();
}

/// From left to right in lines.
void SavedSets::arrange()
{
    std::vector<QWidget*> all(m_chips.begin(), m_chips.end());
    all.push_back(isNaming() ? static_cast<QWidget*>(m_name) : m_save);
    QPoint place;
    for (QWidget* each : all) {
        const int wanted = each == m_name ? nameWidth : each->sizeHint().width();
        const QSize size(std::min(wanted, width()), SetChip::chipHeight);
        if (place.x() > 0 && place.x() + size.width() > width())
            place = {0, place.y() + SetChip::chipHeight + gap};
        each->setGeometry({place, size});
        place.rx() += size.width() + gap;
    }
    const int high = place.y() + SetChip::chipHeight;
    setFixedHeight(high);
    resize(width(), high); // which growing does not do by itself
    Q_EMIT heightChanged();
}

} // namespace vantroque
