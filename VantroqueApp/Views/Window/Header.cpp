#include "VantroqueApp/Views/Window/Header.h"

#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/MenuHeading.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Player/TransportKeys.h"
#include "VantroqueApp/Views/Style/Type.h"
#include "VantroqueApp/Views/Window/HelpPage.h"
#include "VantroqueApp/Views/Window/ProfilesMenu.h"

#include <QActionGroup>
#include <QDesktopServices>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QShortcut>
#include <QTimer>

namespace vantroque {

using namespace Qt::StringLiterals;

Header::Header(const FileList& list, ProfileChoice& profiles, AppearanceChoice& appearance,
               Exports& exports, QWidget* parent)
    : QWidget(parent),
      m_list(list),
      m_appearance(appearance),
      m_exports(exports),
      m_add(new ToolButton(u"plus"_s, u"Add File"_s, this)),
      m_profiles(new ToolButton(u"list"_s, u"Profiles"_s, this)),
      m_export(new ToolButton(u"export"_s, u"Export Report"_s, this)),
      m_appearances(new QActionGroup(this)),
      m_message(new ElidedLabel(Type::text(Type::caption), Qt::ElideMiddle, u"text1"_s, this)),
      m_messageEnd(new QTimer(this)),
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
    layout->addWidget(m_message, 1);
    layout->addWidget(m_printing);
    layout->addWidget(m_cancel);
    layout->addSpacing(8);
    layout->addWidget(m_add);
    layout->addWidget(m_profiles);
    layout->addWidget(m_export);

    m_add->setToolTip(u"Choose video files to check"_s);
    connect(m_add, &QToolButton::clicked, this, &Header::addPressed);
    m_profiles->setToolTip(u"Choose the platforms to check against"_s);
    m_profiles->setMenu(new ProfilesMenu(profiles, m_profiles));
    m_export->setToolTip(u"Export the QC report and any review notes"_s);
    m_export->setMenu(exportMenu());

    m_message->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_message->setMinimumWidth(0);
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_message->setAccessibleName(u"Last export"_s);
    m_messageEnd->setSingleShot(true);
    connect(m_messageEnd, &QTimer::timeout, this, [this] { m_exports.setExportMessage({}); });

    m_printing->setFixedSize(96, 4);
    m_printing->setTextVisible(false);
    m_printing->setAccessibleName(u"Files in the PDF"_s);
    m_cancel->setToolTip(u"Give up the PDF; nothing of it is left"_s);
    connect(m_cancel, &QToolButton::clicked, &exports, &Exports::cancelPDF);

    connect(&list, &FileList::listChanged, this, &Header::refresh);
    connect(&list, &FileList::entryChanged, this, &Header::refresh);
    connect(&list, &FileList::selectionChanged, this, &Header::refresh);
    connect(&exports, &Exports::exportMessageChanged, this, &Header::showMessage);
    connect(&exports, &Exports::pdfProgressChanged, this, &Header::showPrinting);
    refresh();
    showPrinting();
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
    file->addSeparator();
    file->addAction(u"Quit"_s, QKeySequence(Qt::CTRL | Qt::Key_Q), this, &Header::quitPressed);
    QMenu* view = bar->addMenu(u"&View"_s);
    view->setAccessibleName(u"View"_s);
    addFullScreen(*view);
    addAppearanceMenu(*view);
    addHelpMenu(*bar);
    // The desktop's key for menus, beside Alt.
    new QShortcut(Qt::Key_F10, this, [bar, file] { bar->setActiveAction(file->menuAction()); });
    return bar;
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
        help->addAction(page.title, [file = page.file] { QDesktopServices::openUrl(file); })
            ->setData(page.file);
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
    QAction* text = menu->addAction(u"This File as Text"_s, &m_exports, &Exports::saveReport);
    text->setToolTip(u"Writes this report, and those of all other analysed files, into one file"_s);
    menu->addSeparator();
    MenuHeading::add(*menu, u"Markers for This File"_s);
    const std::vector<std::pair<QString, MarkerExport::Format>> formats{
        {u"Avid Media Composer"_s, MarkerExport::Format::avid},
        {u"DaVinci Resolve"_s, MarkerExport::Format::resolve},
        {u"Premiere"_s, MarkerExport::Format::premiere},
        {u"Comma separated"_s, MarkerExport::Format::csv}};
    for (const auto& [name, format] : formats)
        menu->addAction(name, [this, format = format] { m_exports.exportMarkers(format); });
    return menu;
}

void Header::refresh()
{
    m_export->setEnabled(m_list.selectedReport() != nullptr);
}

void Header::showMessage()
{
    constexpr int milliseconds = 8000;
    const QString text = m_exports.exportMessage().value_or(QString());
    m_message->setText(text.section(u'\n', 0, 0));
    m_message->setToolTip(text);
    if (!text.isEmpty())
        m_messageEnd->start(milliseconds);
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
    m_messageEnd->stop(); // The line stays until it is done.
    m_printing->setRange(0, static_cast<int>(progress->all));
    m_printing->setValue(static_cast<int>(progress->done));
}

} // namespace vantroque
