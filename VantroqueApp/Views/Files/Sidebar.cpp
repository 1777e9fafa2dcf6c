#include "VantroqueApp/Views/Files/Sidebar.h"

#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Files/FileListView.h"
#include "VantroqueApp/Views/Files/FilterBar.h"
#include "VantroqueApp/Views/Files/QueueFoot.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

Sidebar::Sidebar(FileList& list, const AnalysisQueue& queue, const QueueRun& run,
                 const ProfileChoice& profiles, QWidget* parent)
    : QWidget(parent),
      m_list(list),
      m_run(run),
      m_profiles(profiles),
      m_files(new FileListView(list, queue, this)),
      m_none(noFiles()),
      m_well(DropWell::small(this)),
      m_platforms(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2)),
      m_count(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2))
{
    setObjectName(u"sidebar"_s);
    setAttribute(Qt::WA_StyledBackground);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(0);
    auto* filter = new FilterBar(m_files->files(), this);
    setTabOrder(filter, m_files);
    layout->addWidget(filter);
    layout->addWidget(m_files, 1);
    layout->addWidget(m_none);
    layout->addSpacing(6);
    layout->addWidget(m_well);
    layout->addSpacing(8);
    layout->addStretch(0);
    layout->addWidget(foot());
    connect(m_well, &DropWell::pressed, this, &Sidebar::addPressed);
    connect(&m_files->files(), &FileListModel::followed, this, &Sidebar::refreshRows);
    connect(&list, &FileList::listChanged, this, &Sidebar::refresh);
    connect(&list, &FileList::selectionChanged, this, &Sidebar::refresh);
    connect(&profiles, &ProfileChoice::changed, this, &Sidebar::refresh);
    refresh();
    refreshRows();
}

QWidget* Sidebar::noFiles()
{
    auto* none = new QWidget(this);
    auto* all = new QPushButton(u"Show all"_s);
    all->setProperty("kind", u"plain"_s);
    all->setAccessibleName(all->text());
    connect(all, &QPushButton::clicked, this, [this] {
        m_files->files().setOrder({FileFilter::all, m_files->files().order().sort});
        m_files->setFocus();
    });
    auto* layout = new QVBoxLayout(none);
    layout->setContentsMargins(8, 24, 8, 24);
    layout->addWidget(Type::label(u"No files here"_s, Type::body, QFont::Normal, Type::Ink::text2),
                      0, Qt::AlignHCenter);
    layout->addWidget(all, 0, Qt::AlignHCenter);
    return none;
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
    auto* queue = new QueueFoot(m_run, foot);
    connect(queue, &QueueFoot::runningWanted, this, [this] {
        if (const auto running = m_run.runningFile())
            m_files->goTo(*running);
    });
    auto* layout = new QVBoxLayout(foot);
    layout->setContentsMargins(8, 10, 0, 4);
    layout->setSpacing(4);
    layout->addWidget(queue);
    layout->addWidget(m_platforms);
    layout->addLayout(counted);
    return foot;
}

void Sidebar::refresh()
{
    const auto files = m_list.analyses().size();
    QString count = files == 1 ? u"1 file"_s : u"%1 files"_s.arg(files);
    if (m_files->files().order().filter != FileFilter::all)
        count += u" · %1 shown"_s.arg(m_files->model()->rowCount());
    if (m_list.isSeveralSelected())
        count += u" · %1 selected"_s.arg(m_list.selection().ids.size());
    m_count->setText(count);
    const auto platforms = m_profiles.enabledProfiles().size();
    if (m_profiles.profilesError())
        m_platforms->setText(*m_profiles.profilesError());
    else if (platforms == 0)
        m_platforms->setText(u"No platforms selected"_s);
    else
        m_platforms->setText(u"Checking %1 platforms"_s.arg(platforms));
}

void Sidebar::refreshRows()
{
    const bool none =
        m_files->model()->rowCount() == 0 && m_files->files().count(FileFilter::all) > 0;
    m_files->setVisible(!none);
    m_none->setVisible(none);
    refresh();
}

} // namespace vantroque
