#include "VantroqueApp/Views/Notes/NoteTabs.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace vantroque {

using namespace Qt::StringLiterals;

NoteTabs::NoteTabs(QWidget* parent)
    : QFrame(parent), m_notes(tab(u"Notes"_s)), m_detected(tab(u"Detected"_s))
{
    setObjectName(u"noteTabs"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(0);
    layout->addWidget(m_notes);
    layout->addWidget(m_detected);
    m_notes->setChecked(true);
    setCounts(0, 0);
}

QPushButton* NoteTabs::tab(const QString& name)
{
    auto* tab = new QPushButton(name, this);
    tab->setProperty("kind", u"tab"_s);
    tab->setFont(Type::text(Type::caption, QFont::Medium));
    tab->setCheckable(true);
    tab->setAutoExclusive(true);
    tab->setAutoDefault(true); // so that Return presses it: the space bar plays
    tab->setFocusPolicy(Qt::TabFocus);
    connect(tab, &QPushButton::clicked, this, &NoteTabs::changed);
    return tab;
}

void NoteTabs::setCounts(int notes, int detected)
{
    m_notes->setText(u"Notes %1"_s.arg(notes));
    m_detected->setText(u"Detected %1"_s.arg(detected));
    for (QPushButton* each : {m_notes, m_detected})
        each->setAccessibleName(each->text());
}

bool NoteTabs::showsDetected() const
{
    return m_detected->isChecked();
}

void NoteTabs::showDetected(bool detected)
{
    if (showsDetected() == detected)
        return;
    (detected ? m_detected : m_notes)->setChecked(true);
    Q_EMIT changed();
}

} // namespace vantroque
