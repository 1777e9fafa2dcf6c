#include "VantroqueApp/Views/Window/MainWindow.h"

#include "Base/FilmTypes.h"
#include "Captions/CaptionLoader.h"
#include "VantroqueApp/Views/Compare/CompareView.h"
#include "VantroqueApp/Views/Controls/DropWell.h"
#include "VantroqueApp/Views/Controls/NoticeBars.h"
#include "VantroqueApp/Views/Files/FileListView.h"
#include "VantroqueApp/Views/Files/Sidebar.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "VantroqueApp/Views/Window/DetailPane.h"
#include "VantroqueApp/Views/Window/ExportNotices.h"
#include "VantroqueApp/Views/Window/FileNotices.h"
#include "VantroqueApp/Views/Window/Header.h"
#include "VantroqueApp/Views/Window/HelpPage.h"
#include "VantroqueApp/Views/Window/NoteNotices.h"
#include "VantroqueApp/Views/Window/ProfileNotices.h"
#include "VantroqueApp/Views/Window/WindowMemory.h"

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
#include <iterator>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString sidebarKey()
{
    return u"window.sidebar"_s;
}

/// Of films, for the panel that asks for files.
QString patterns()
{
    QStringList all;
    for (const QString& extension : FilmTypes::extensions())
        all << u"*."_s + extension << u"*."_s + extension.toUpper();
    return all.join(u' ');
}

} // namespace

MainWindow::MainWindow(AppModel& model, FileLooker::Look look)
    : m_model(model),
      // The keyboard goes through the widgets as they are made.
      m_header(new Header(model.files(), model.profiles(), model.profileSets(), model.ownProfiles(),
                          model.appearance(), model.exports(), this)),
      m_pages(new QStackedWidget(this)),
      m_well(DropWell::large(model.queue().toolMissing(),
                             model.profiles().profilesError().value_or(QString()), this)),
      m_sidebar(
          new Sidebar(model.files(), model.queue(), model.queueRun(), model.profiles(), this)),
      m_files(files()),
      m_notices(new NoticeBars(this)),
      m_fileNotices(new FileNotices(model.files(), *m_notices)),
      m_looker(std::move(look)),
      m_doneNotice(model.queueRun(), model.doneNotice(), *this)
{
    setObjectName(u"window"_s);
    setAttribute(Qt::WA_StyledBackground);
    setWindowTitle(u"Vantroque"_s);
    setAcceptDrops(true);
    setWindowIcon(Icons::application());
    constexpr QSize frame(16, 48); // about what a desktop puts around a window
    const QSize room = screen()->availableSize() - frame;
    setMinimumSize(QSize(1024, 700).boundedTo(room));
    resize(QSize(1440, 900).boundedTo(room));
    WindowMemory::restore(*this, model.defaults());
    m_well->offerGuide(!HelpPage::all().empty());
    m_pages->addWidget(m_well);
    m_pages->addWidget(m_files);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_header);
    layout->addWidget(m_pages, 1);
    ExportNotices::tell(model.exports(), *m_notices);
    NoteNotices::tell(model.openPlayer(), *m_notices);
    ProfileNotices::tell(model.profiles(), *m_notices, [this] { m_header->showProfiles(); });
    addDoneNotice();
    connect(m_header, &Header::addPressed, this, &MainWindow::chooseFiles);
    connect(m_header, &Header::comparePressed, this, &MainWindow::compare);
    connect(m_header, &Header::leavePressed, this,
            [this] { m_model.comparison().setComparing(false); });
    connect(&model.openComparison(), &OpenComparison::aboutToGo, this, &MainWindow::dropCompare);
    connect(&model.openComparison(), &OpenComparison::changed, this, &MainWindow::showCompare);
    connect(m_header, &Header::deskChosen, this, [this](bool review) {
        m_model.comparison().setComparing(false);
        m_detail->setReview(review);
    });
    connect(m_detail, &DetailPane::reviewChanged, this, &MainWindow::showDesk);
    connect(m_header, &Header::namePressed, this, &MainWindow::chooseName);
    connect(m_header, &Header::quitPressed, this, &QWidget::close);
    connect(m_well, &DropWell::pressed, this, &MainWindow::chooseFiles);
    connect(m_well, &DropWell::guideWanted, m_header, &Header::showGuide);
    connect(m_sidebar, &Sidebar::addPressed, this, &MainWindow::chooseFiles);
    connect(&model.files(), &FileList::listChanged, this, &MainWindow::refresh);
    connect(&model.files(), &FileList::entryChanged, this, &MainWindow::showComparable);
    connect(&model.appearance(), &AppearanceChoice::changed, this,
            [this] { Look::use(m_model.appearance().mode()); });
    refresh();
}

void MainWindow::addDoneNotice()
{
    auto* action = new QAction(u"Notify When a Long Queue Is Done"_s, this);
    action->setCheckable(true);
    action->setChecked(m_model.doneNotice().isOn());
    connect(action, &QAction::toggled, this, [this](bool on) { m_model.doneNotice().setOn(on); });
    m_header->addSetting(action);
}

QSplitter* MainWindow::files()
{
    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setHandleWidth(1);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_sidebar);
    splitter->setFocusProxy(&m_sidebar->files());
    setTabOrder(&m_sidebar->files(), &m_sidebar->well());
    m_detail =
        new DetailPane(m_model.files(), m_model.queue(), m_model.profiles(), m_model.openPlayer(),
                       m_model.noteAuthor(), m_model.defaults(), splitter);
    splitter->addWidget(m_detail);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    m_sidebar->setMaximumWidth(Sidebar::widest);
    m_ownSidebar =
        WindowMemory::width(m_model.defaults(), sidebarKey(), Sidebar::narrowest, Sidebar::widest);
    connect(splitter, &QSplitter::splitterMoved, this, [this](int width) {
        m_ownSidebar = width;
        WindowMemory::keepWidth(m_model.defaults(), sidebarKey(), width);
    });
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
    return std::clamp(windowWidth - besideIt, leastSidebar(windowWidth), Sidebar::usual);
}

/// Half of a usual screen, for eyes that want all twice as large, is narrower than the window likes
/// to be.
int MainWindow::leastSidebar(int windowWidth)
{
    constexpr int small = 1024;
    constexpr int tight = 180;
    return windowWidth < small ? tight : Sidebar::narrowest;
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_sidebar->setMinimumWidth(leastSidebar(width()));
    const int sidebar = m_ownSidebar.value_or(sidebarWidth(width()));
    m_files->setSizes({sidebar, width() - sidebar - m_files->handleWidth()});
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    WindowMemory::keep(*this, m_model.defaults());
    QWidget::closeEvent(event);
}

void MainWindow::chooseFiles()
{
    const QStringList names = QFileDialog::getOpenFileNames(
        this, u"Add Files"_s, {}, u"Video files (%1)"_s.arg(patterns()), nullptr,
        QFileDialog::HideNameFilterDetails);
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

void MainWindow::take(FileLooker::Paths paths)
{
    m_looker.look(std::move(paths), [this](const auto& found) { add(found); });
}

void MainWindow::add(const DroppedFiles::Found& found)
{
    std::vector<SkippedFile> skipped = found.skipped;
    const auto captions = std::ranges::find_if(found.files, CaptionLoader::isSidecar);
    if (captions != found.files.end() && m_model.player() == nullptr)
        skipped.push_back({captions->fileName(), u"holds captions, and no film is open"_s});
    std::ranges::move(m_model.files().add(found.files), std::back_inserter(skipped));
    m_fileNotices->tellSkipped(skipped);
}

void MainWindow::refresh()
{
    // A list that is still being read is on its way.
    const bool none = m_model.files().analyses().empty() && !m_model.workspace().isRestoring();
    QWidget* page = m_compare != nullptr ? static_cast<QWidget*>(m_compare)
                    : none               ? static_cast<QWidget*>(m_well)
                                         : m_files;
    showComparable();
    placeNotices(page);
    if (page == m_pages->currentWidget() && focusWidget() != nullptr)
        return;
    m_pages->setCurrentWidget(page);
    page->setFocus();
}

void MainWindow::placeNotices(QWidget* page)
{
    constexpr int inWell = 40; // clear of its dashes
    if (page == m_well)
        m_notices->follow(*m_well, inWell);
    else if (m_compare != nullptr && page == m_compare)
        m_notices->follow(m_compare->pages());
    else
        m_notices->follow(m_detail->noticesPlace());
}

/// Where there are not two yet, another one is asked for.
void MainWindow::compare()
{
    if (m_model.comparison().canCompare())
        m_model.comparison().setComparing(true);
    else
        chooseFiles();
}

void MainWindow::showCompare()
{
    OpenComparison& open = m_model.openComparison();
    if (open.controller() != nullptr && m_compare == nullptr) {
        m_compare = new CompareView(*open.controller(), m_pages);
        connect(
            m_compare, &CompareView::left, this,
            [this] { m_model.comparison().setComparing(false); }, Qt::QueuedConnection);
        m_pages->addWidget(m_compare);
    }
    refresh();
    if (m_compare != nullptr && open.leftOut() > 0)
        m_fileNotices->tellLeftOut(open.controller()->tiles().size(), open.leftOut());
}

void MainWindow::dropCompare()
{
    m_fileNotices->withdrawLeftOut();
    placeNotices(m_files);
    delete std::exchange(m_compare, nullptr);
}

void MainWindow::showComparable()
{
    m_header->showCompare(m_compare != nullptr, m_model.comparison().canCompare());
}

/// A desk for reviewing has no list.
void MainWindow::showDesk()
{
    placeNotices(m_pages->currentWidget());
    const bool review = m_detail->isReview();
    m_sidebar->setVisible(!review);
    m_header->showDesk(review, m_detail->canReview());
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
