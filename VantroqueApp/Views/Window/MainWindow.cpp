#include "VantroqueApp/Views/Window/MainWindow.h"

#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Files/DroppedFiles.h"
#include "VantroqueApp/Views/Files/FileListView.h"
#include "VantroqueApp/Views/Files/Sidebar.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "VantroqueApp/Views/Window/DetailPane.h"
#include "VantroqueApp/Views/Window/Header.h"

#include <QDragEnterEvent>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

MainWindow::MainWindow(AppModel& model)
    : m_model(model),
      // The keyboard goes through the widgets as they are made.
      m_header(
          new Header(model.files(), model.profiles(), model.appearance(), model.exports(), this)),
      m_pages(new QStackedWidget(this)),
      m_well(DropWell::large(model.queue().toolMissing(),
                             model.profiles().profilesError().value_or(QString()), this)),
      m_sidebar(new Sidebar(model.files(), model.queue(), model.profiles(), this)),
      m_files(files())
{
    setObjectName(u"window"_s);
    setAttribute(Qt::WA_StyledBackground);
    setWindowTitle(u"Vantroque"_s);
    setAcceptDrops(true);
    setMinimumSize(1024, 700);
    constexpr QSize frame(16, 48); // about what a desktop puts around a window
    resize(QSize(1440, 900).boundedTo(screen()->availableSize() - frame));
    m_pages->addWidget(m_well);
    m_pages->addWidget(m_files);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_header);
    layout->addWidget(m_pages, 1);
    connect(m_header, &Header::addPressed, this, &MainWindow::chooseFiles);
    connect(m_header, &Header::namePressed, this, &MainWindow::chooseName);
    connect(m_header, &Header::quitPressed, this, &QWidget::close);
    connect(m_well, &DropWell::pressed, this, &MainWindow::chooseFiles);
    connect(m_sidebar, &Sidebar::addPressed, this, &MainWindow::chooseFiles);
    connect(&model.files(), &FileList::listChanged, this, &MainWindow::refresh);
    connect(&model.appearance(), &AppearanceChoice::changed, this,
            [this] { Look::use(m_model.appearance().mode()); });
    refresh();
}

QSplitter* MainWindow::files()
{
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setHandleWidth(1);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_sidebar);
    splitter->setFocusProxy(&m_sidebar->files());
    setTabOrder(&m_sidebar->files(), &m_sidebar->well());
    splitter->addWidget(new DetailPane(m_model.files(), m_model.queue(), m_model.profiles(),
                                       m_model.openPlayer(), m_model.noteAuthor(),
                                       m_model.defaults(), splitter));
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    m_sidebar->setMinimumWidth(Sidebar::narrowest);
    m_sidebar->setMaximumWidth(Sidebar::widest);
    connect(splitter, &QSplitter::splitterMoved, this, [this] { m_ownSidebar = true; });
    return splitter;
}

/// Narrow windows take from the list last; on very wide ones names have more room.
int MainWindow::sidebarWidth(int windowWidth)
{
    constexpr int veryWide = 2560;
    constexpr int wideSidebar = 320;
    constexpr int besideIt = 980; // the least that the rest should have
    if (windowWidth >= veryWide)
        return wideSidebar;
    return std::clamp(windowWidth - besideIt, Sidebar::narrowest, Sidebar::usual);
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int sidebar = sidebarWidth(width());
    if (!m_ownSidebar)
        m_files->setSizes({sidebar, width() - sidebar - m_files->handleWidth()});
}

void MainWindow::chooseFiles()
{
    const QStringList names = QFileDialog::getOpenFileNames(
        this, u"Add Files"_s, {},
        u"Video files (*.mp4 *.mov *.m4v *.mxf *.webm *.mpg *.mpeg *.avi *.mkv *.MP4 *.MOV *.M4V "
        "*.MXF *.WEBM *.MPG *.MPEG *.AVI *.MKV)"_s,
        nullptr, QFileDialog::HideNameFilterDetails);
    std::vector<std::filesystem::path> paths;
    for (const QString& name : names)
        paths.emplace_back(QFile::encodeName(name).toStdString());
    take(std::move(paths));
}

void MainWindow::chooseName()
{
    NoteAuthor& author = m_model.noteAuthor();
    bool isChosen = false;
    const QString name =
        QInputDialog::getText(this, u"Name on Notes"_s,
                              u"Your notes are signed with this name. Without one, with that "
                              u"of your account."_s,
                              QLineEdit::Normal, author.name().value_or(QString()), &isChosen);
    if (isChosen)
        author.setName(name);
}

void MainWindow::take(std::vector<std::filesystem::path> paths)
{
    // A folder may be large, or far away.
    m_lister.run([paths = std::move(paths)] { return DroppedFiles::urls(paths); },
                 [this](const std::vector<FileUrl>& files) { m_model.files().add(files); });
}

void MainWindow::refresh()
{
    // A list that is still being read is on its way.
    const bool none = m_model.files().analyses().empty() && !m_model.workspace().isRestoring();
    QWidget* page = none ? static_cast<QWidget*>(m_well) : m_files;
    if (page == m_pages->currentWidget() && focusWidget() != nullptr)
        return;
    m_pages->setCurrentWidget(page);
    page->setFocus();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!DroppedFiles::holdsFiles(*event->mimeData()))
        return;
    event->acceptProposedAction();
    setInviting(true);
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent*)
{
    setInviting(false);
}

void MainWindow::dropEvent(QDropEvent* event)
{
    setInviting(false);
    event->acceptProposedAction();
    take(DroppedFiles::paths(*event->mimeData()));
}

void MainWindow::setInviting(bool inviting)
{
    m_well->setInviting(inviting);
    m_sidebar->well().setInviting(inviting);
}

} // namespace vantroque
