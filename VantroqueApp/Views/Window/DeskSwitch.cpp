#include "VantroqueApp/Views/Window/DeskSwitch.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace vantroque {

using namespace Qt::StringLiterals;

DeskSwitch::DeskSwitch(QWidget* parent)
    : QFrame(parent),
      m_report(tab(u"Report"_s, u"The files and the report, beside the picture  (F2)"_s, false)),
      m_review(tab(u"Review"_s, {}, true))
{
    setObjectName(u"deskSwitch"_s);
    setAccessibleName(u"Desk"_s);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(0);
    layout->addWidget(m_report);
    layout->addWidget(m_review);
    show(false, false);
}

QPushButton* DeskSwitch::tab(const QString& name, const QString& help, bool review)
{
    auto* tab = new QPushButton(name, this);
    tab->setProperty("kind", u"tab"_s);
    tab->setAccessibleName(name);
    tab->setFont(Type::text(Type::caption, QFont::Medium));
    tab->setToolTip(help);
    tab->setCheckable(true);
    tab->setAutoExclusive(true);
    tab->setAutoDefault(true); // so that Return presses it: the space bar plays
    tab->setFocusPolicy(Qt::TabFocus);
    connect(tab, &QPushButton::clicked, this, [this, review] { Q_EMIT chosen(review); });
    return tab;
}

bool DeskSwitch::isReview() const
{
    return m_review->isChecked();
}

void DeskSwitch::show(bool review, bool possible)
{
    (review ? m_review : m_report)->setChecked(true);
    m_report->setEnabled(possible);
    m_review->setEnabled(possible);
    m_review->setToolTip(possible ? u"The picture with its instruments and your notes  (F3)"_s
                                  : u"Select a file that is analysed and has a picture"_s);
}

} // namespace vantroque
