#include "VantroqueApp/Views/Window/Header.h"

#include "Check/TextRenderer.h"
#include "VantroqueApp/Views/Controls/MenuHeading.h"
#include "VantroqueApp/Views/Controls/TabSwitch.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"
#include "VantroqueApp/Views/Window/HelpReader.h"

#include <QActionGroup>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QShortcut>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

// The tabs of the desks.
constexpr int reportTab = 0;
constexpr int reviewTab = 1;

} // namespace

Header::Header(const FileList& list, ProfileChoice& profiles, ProfileSets& sets,
               OwnProfilesReader& ownProfiles, AppearanceChoice& appearance, Exports& exports,
               QWidget* parent)
    : QWidget(parent),
      m_list(list),
      m_choice(profiles),
      m_sets(sets),
      m_ownProfiles(ownProfiles),
      m_appearance(appearance),
      m_exports(exports),
      m_desk(new TabSwitch(u"Desk"_s, {u"Report"_s, u"Review"_s}, this)),
      m_add(new ToolButton(u"plus"_s, u"Add File"_s, this)),
      m_compare(new ToolButton(u"compare"_s, u"Compare"_s, this)),
      m_leave(new ToolButton(u"x"_s, {}, this)),
      m_profiles(new ToolButton(u"list"_s, u"Profiles"_s, this)),
      m_export(new ToolButton(u"export"_s, u"Export Report"_s, this)),
      m_appearances(new QActionGroup(this)),
      m_help(new HelpReader(*this)),
      m_printing(new QProgressBar(this)),
      m_cancel(new ToolButton(u"x"_s, u"Cancel"_s, this))
{
    setObjectName(u"header"_s);
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(48);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 0, 12, 1);
    layout->setSpacing(8);
    layout->addWidget(menuBar(), 0, Qt::AlignVCenter);
    layout->addStretch(1);
    layout->addWidget(m_desk, 0, Qt::AlignVCenter);
    layout->addStretch(1);
    layout->addWidget(m_printing);
    layout->addWidget(m_cancel);
    layout->addSpacing(8);
    layout->addWidget(m_add);
    layout->addWidget(m_compare);
    layout->addWidget(m_profiles);
    layout->addWidget(m_export);
    layout->addWidget(m_leave);

    connect(m_desk, &TabSwitch::pressed, this,
            [this](int tab) { Q_EMIT deskChosen(tab == reviewTab); });
    m_add->setToolTip(u"Choose video files to check"_s);
    connect(m_add, &QToolButton::clicked, this, &Header::addPressed);
    connect(m_compare, &QToolButton::clicked, this, &Header::comparePressed);
    m_leave->setAccessibleName(u"Back to the reports"_s);
    m_leave->setToolTip(u"Back to the reports  (esc)"_s);
    connect(m_leave, &QToolButton::clicked, this, &Header::leavePressed);
    m_profiles->setToolTip(u"Choose the platforms to check against"_s);
    m_profiles->setOpens();
    connect(m_profiles, &QToolButton::clicked, this, &Header::toggleProfiles);
    m_export->setToolTip(u"Export the QC report and any review notes"_s);
    m_export->setMenu(exportMenu());

    m_printing->setFixedSize(96, 4);
    m_printing->setTextVisible(false);
    m_printing->setAccessibleName(u"Files in the PDF"_s);
    m_cancel->setToolTip(u"Give up the PDF; nothing of it is left"_s);
    connect(m_cancel, &QToolButton::clicked, &exports, &Exports::cancelPDF);

    connect(&list, &FileList::listChanged, this, &Header::refresh);
    connect(&list, &FileList::entryChanged, this, &Header::refresh);
    connect(&list, &FileList::selectionChanged, this, &Header::refresh);
    connect(&exports, &Exports::pdfProgressChanged, this, &Header::showPrinting);
    refresh();
    showPrinting();
    showDesk(false, false);
    showCompare(false, false);
}

Header::~Header() = default;

void Header::toggleProfiles()
{
    if (m_panel == nullptr) {
        m_panel = new ProfilesPanel(
            m_choice, m_sets, [this] { m_ownProfiles.readAgain(); }, *m_profiles, *window());
        connect(m_panel, &ProfilesPanel::openChanged, this, [this](bool isOpen) {
            m_profiles->setChecked(isOpen);
            m_pause = isOpen ? std::make_unique<TransportKeysPause>() : nullptr;
        });
    }
    if (m_panel->isVisible())
        m_panel->close();
    else
        m_panel->open();
}

void Header::showGuide()
{
    if (const auto pages = HelpPage::all(); !pages.empty())
        m_help->show(pages.front());
}

void Header::showProfiles()
{
    if (m_panel == nullptr || !m_panel->isVisible())
        toggleProfiles();
}

QMenuBar* Header::menuBar()
{
    auto* bar = new QMenuBar(this);
    bar->setNativeMenuBar(false);
    bar->setAccessibleName(u"Menus"_s);
    bar->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    QMenu* file = bar->addMenu(u"&File"_s);
    file->setAccessibleName(u"File"_s);
    file->addAction(u"Add Files"_s, QKeySequence(QKeySequence::Open), this, &Header::addPressed);
    file->addSeparator();
    file->addAction(u"Name on Notes"_s, this, &Header::namePressed);
    m_file = file;
    m_afterSettings = file->addSeparator();
    file->addAction(u"Quit"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), this, &Header::quitPressed);
    QMenu* view = bar->addMenu(u"&View"_s);
    view->setAccessibleName(u"View"_s);
    addFullScreen(*view);
    view->addSeparator();
    addDesks(*view);
    view->addSeparator();
    addAppearanceMenu(*view);
    addHelpMenu(*bar);
    // The desktop's key for menus, beside Alt.
    new QShortcut(Qt::Key_F10, this, [bar, file] { bar->setActiveAction(file->menuAction()); });
    return bar;
}

void Header::addDesks(QMenu& view)
{
    auto* desks = new QActionGroup(this);
    const auto add = [&](const QString& name, Qt::Key key, bool review) {
        QAction* action = view.addAction(name, QKeySequence(key), this,
                                         [this, review] { Q_EMIT deskChosen(review); });
        action->setCheckable(true);
        desks->addAction(action);
        return action;
    };
    m_reportDesk = add(u"Report"_s, Qt::Key_F2, false);
    m_reviewDesk = add(u"Review"_s, Qt::Key_F3, true);
    m_compareDesk =
        view.addAction(u"Compare"_s, QKeySequence(Qt::Key_F4), this, &Header::toggleCompare);
    m_compareDesk->setCheckable(true);
}

void Header::showDesk(bool review, bool possible)
{
    (review ? m_reviewDesk : m_reportDesk)->setChecked(true);
    m_reviewDesk->setEnabled(possible);
    m_desk->choose(review ? reviewTab : reportTab);
    m_desk->offer(reportTab, possible, u"The files and the report, beside the picture  (F2)"_s);
    m_desk->offer(reviewTab, possible,
                  possible ? u"The picture with its instruments and your notes  (F3)"_s
                           : u"Select a file that is analysed and has a picture"_s);
}

void Header::showCompare(bool comparing, bool possible)
{
    m_desk->setVisible(!comparing);
    for (QWidget* tool : std::initializer_list<QWidget*>{m_compare, m_profiles, m_export})
        tool->setVisible(!comparing);
    m_leave->setVisible(comparing);
    m_compareDesk->setChecked(comparing);
    m_compare->setToolTip(possible
                              ? u"Play every video together to compare graphics and end cards"_s
                              : u"Add a second video to compare"_s);
}

void Header::toggleCompare()
{
    const bool comparing = m_leave->isVisible();
    m_compareDesk->setChecked(comparing); // until the window says what became of it
    if (comparing)
        Q_EMIT leavePressed();
    else
        Q_EMIT comparePressed();
}

void Header::addSetting(QAction* action)
{
    m_file->insertAction(m_afterSettings, action);
}

/// What the player in this window does, where there is one.
void Header::addFullScreen(QMenu& view)
{
    const auto offered = [this] {
        const TransportActions* actions = TransportKeys::shared().actionsFor(*this);
        return actions != nullptr ? actions->fullScreen : nullptr;
    };
    QAction* action = view.addAction(u"Full Screen Picture"_s, this, [offered] {
        if (const auto open = offered())
            open();
    });
    connect(&view, &QMenu::aboutToShow, action,
            [action, offered] { action->setEnabled(offered() != nullptr); });
}

void Header::addHelpMenu(QMenuBar& bar)
{
    QMenu* help = bar.addMenu(u"&Help"_s);
    help->setAccessibleName(u"Help"_s);
    for (const HelpPage& page : HelpPage::all())
        help->addAction(page.title, [this, page] { m_help->show(page); })->setData(page.file);
    if (!help->isEmpty())
        help->actions().front()->setShortcut(Qt::Key_F1);
    help->menuAction()->setVisible(!help->isEmpty());
}

void Header::addAppearanceMenu(QMenu& view)
{
    QMenu* menu = view.addMenu(u"Appearance"_s);
    menu->setAccessibleName(menu->title());
    const std::vector<std::pair<QString, AppearanceMode>> modes{
        {u"Match System"_s, AppearanceMode::system},
        {u"Light"_s, AppearanceMode::light},
        {u"Dark"_s, AppearanceMode::dark}};
    for (const auto& [name, mode] : modes) {
        QAction* action =
            menu->addAction(name, [this, mode = mode] { m_appearance.setMode(mode); });
        action->setCheckable(true);
        action->setChecked(m_appearance.mode() == mode);
        m_appearances->addAction(action);
    }
}

QMenu* Header::exportMenu()
{
    auto* menu = new QMenu(m_export);
    menu->setAccessibleName(m_export->text());
    menu->setToolTipsVisible(true);
    const auto print = [this](Exports::Scope scope) { m_exports.exportReviewPDF(scope); };
    m_thisAsPDF =
        menu->addAction(u"This File as PDF"_s, [print] { print(Exports::Scope::selectedFile); });
    m_thisAsPDF->setToolTip(u"The verdict, your notes with their frames, and every result"_s);
    m_allAsPDF =
        menu->addAction(u"All Files as PDF"_s, [print] { print(Exports::Scope::allFiles); });
    m_allAsPDF->setToolTip(u"The same of all analysed files, in one document"_s);
    m_asText = menu->addAction(u"This File as Text"_s, &m_exports, &Exports::saveReport);
    m_asText->setToolTip(
        u"Writes this report, and those of all other analysed files, into one file"_s);
    m_copyReport = menu->addAction(u"Copy Report"_s, this, &Header::copyReport);
    m_copyReport->setToolTip(u"The report of this file as text, to be pasted elsewhere"_s);
    menu->addSeparator();
    m_markersHeading = MenuHeading::add(*menu, u"Markers for This File"_s);
    for (const auto format : {MarkerExport::Format::avid, MarkerExport::Format::resolve,
                              MarkerExport::Format::premiere, MarkerExport::Format::csv})
        menu->addAction(Exports::reader(format),
                        [this, format] { m_exports.exportMarkers(format); });
    return menu;
}

void Header::refresh()
{
    const bool several = m_list.isSeveralSelected();
    const auto& selected = m_list.selection().ids;
    m_export->setEnabled(std::ranges::any_of(m_list.analyses(), [&](const FileAnalysis& file) {
        return file.report() != nullptr && selected.contains(file.id);
    }));
    m_thisAsPDF->setText(several ? u"Selected Files as PDF"_s : u"This File as PDF"_s);
    m_asText->setText(several ? u"Selected Files as Text"_s : u"This File as Text"_s);
    m_copyReport->setEnabled(!several && m_list.selectedReport() != nullptr);
    MenuHeading::setText(*m_markersHeading,
                         several ? u"Markers, a File for Each"_s : u"Markers for This File"_s);
}

void Header::copyReport()
{
    if (const FileReport* report = m_list.selectedReport())
        QGuiApplication::clipboard()->setText(TextRenderer::render(*report, false));
}

void Header::showPrinting()
{
    const auto& progress = m_exports.pdfProgress();
    m_printing->setVisible(progress.has_value());
    m_cancel->setVisible(progress.has_value());
    m_thisAsPDF->setEnabled(!progress);
    m_allAsPDF->setEnabled(!progress);
    if (!progress)
        return;
    m_printing->setRange(0, static_cast<int>(progress->all));
    m_printing->setValue(static_cast<int>(progress->done));
}

} // namespace vantroque
