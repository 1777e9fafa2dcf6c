#include "VantroqueApp/Views/Files/Sidebar.h"

#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Files/FileListView.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

Sidebar::Sidebar(FileList& list, const AnalysisQueue& queue, const ProfileChoice& profiles,
                 QWidget* parent)
    : QWidget(parent),
      m_list(list),
      m_profiles(profiles),
      m_files(new FileListView(list, queue, this)),
      m_well(DropWell::small(this)),
      m_platforms(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2)),
      m_count(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2))
{
    setObjectName(u"sidebar"_s);
    setAttribute(Qt::WA_StyledBackground);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(0);
    layout->addWidget(m_files, 1);
    layout->addSpacing(6);
    layout->addWidget(m_well);
    layout->addSpacing(8);
    layout->addStretch(0);
    layout->addWidget(foot());
    connect(m_well, &DropWell::pressed, this, &Sidebar::addPressed);
    connect(&list, &FileList::listChanged, this, &Sidebar::refresh);
    connect(&profiles, &ProfileChoice::changed, this, &Sidebar::refresh);
    refresh();
}

QWidget* Sidebar::foot()
{
    auto* foot = new QWidget(this);
    foot->setObjectName(u"sidebarFoot"_s);
    foot->setAttribute(Qt::WA_StyledBackground);
    auto* clear = new QPushButton(u"Clear All"_s);
    clear->setProperty("kind", u"plain"_s);
    clear->setFont(Type::text(Type::caption, QFont::Medium));
    clear->setAccessibleName(clear->text());
    clear->setToolTip(u"Remove every file from the list"_s);
    connect(clear, &QPushButton::clicked, &m_list, &FileList::clearAll);
    m_platforms->setWordWrap(true);
    auto* counted = new QHBoxLayout;
    counted->addWidget(m_count);
    counted->addStretch();
    counted->addWidget(clear);
    auto* layout = new QVBoxLayout(foot);
    layout->setContentsMargins(8, 12, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_platforms);
    layout->addLayout(counted);
    return foot;
}

void Sidebar::refresh()
{
    const auto files = m_list.analyses().size();
    m_count->setText(files == 1 ? u"1 file"_s : u"%1 files"_s.arg(files));
    const auto platforms = m_profiles.enabledProfiles().size();
    if (m_profiles.profilesError())
        m_platforms->setText(*m_profiles.profilesError());
    else if (platforms == 0)
        m_platforms->setText(u"No platforms selected"_s);
    else
        m_platforms->setText(u"Checking %1 platforms"_s.arg(platforms));
}

} // namespace vantroque
