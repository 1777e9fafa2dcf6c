#include "VantroqueApp/Views/Files/SelectionPane.h"

#include "VantroqueApp/Views/Controls/CopyButton.h"
#include "VantroqueApp/Views/Controls/SignChip.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Files/SelectedFiles.h"
#include "VantroqueApp/Views/Files/SelectionRowDelegate.h"
#include "VantroqueApp/Views/Files/SharedProblemsPanel.h"
#include "VantroqueApp/Views/Style/Type.h"

#include "Base/Text.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int fileRow = 40;
constexpr int problemRow = 36;
constexpr int headerHeight = 32;

QTableView* table(QAbstractItemModel& model)
{
    auto* table = new QTableView;
    table->setModel(&model);
    table->setAccessibleName(u"Selected files"_s);
    table->setItemDelegate(new SelectionRowDelegate(table));
    table->setShowGrid(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(fileRow);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setSectionsClickable(false);
    table->horizontalHeader()->setFixedHeight(headerHeight);
    table->horizontalHeader()->setMinimumSectionSize(48);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setSectionResizeMode(SelectedFiles::name, QHeaderView::Stretch);
    return table;
}

QString filesWord(std::size_t count)
{
    return u"%1 file%2"_s.arg(QString::number(count), Text::plural(static_cast<qint64>(count)));
}

} // namespace

SelectionPane::SelectionPane(FileList& list, QWidget* parent)
    : QWidget(parent),
      m_list(list),
      m_files(new SelectedFiles(this)),
      m_sign(new SignChip),
      m_title(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_summary(Type::label({}, Type::body, QFont::Normal, Type::Ink::text2)),
      m_copy(new CopyButton(u"Copy"_s)),
      m_table(table(*m_files)),
      m_problemsTitle(Type::label({}, Type::heading, QFont::DemiBold, Type::Ink::text1)),
      m_problemCount(Type::label({}, Type::badge, QFont::Medium, Type::Ink::text1)),
      m_problems(new SharedProblemsPanel)
{
    constexpr int padding = 24;
    setObjectName(u"report"_s); // for its ground
    setAttribute(Qt::WA_StyledBackground);
    m_table->setObjectName(u"card"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, 20, padding, 20);
    layout->setSpacing(12);
    layout->addWidget(heading());
    layout->addWidget(m_table);
    layout->addSpacing(8);
    layout->addWidget(problemsHeading());
    layout->addWidget(m_problems);
    layout->addStretch(1);
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(m_problems, &SharedProblemsPanel::heightChanged, this, &SelectionPane::fit);
    connect(m_problems, &SharedProblemsPanel::fileChosen, this,
            [this](const QUuid& file) { m_list.select(file); });
    connect(&m_soon, &QTimer::timeout, this, &SelectionPane::take);
    connect(&list, &FileList::entryChanged, this, [this](const QUuid& id) {
        if (m_list.selection().ids.contains(id))
            refresh();
    });
}

QWidget* SelectionPane::problemsHeading()
{
    m_problemCount->setObjectName(u"countBadge"_s);
    auto* heading = new QWidget;
    auto* layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_problemsTitle);
    layout->addWidget(m_problemCount);
    layout->addStretch();
    return heading;
}

QWidget* SelectionPane::heading()
{
    auto* heading = new QWidget;
    auto* remove = new ToolButton(u"trash"_s, u"Remove from List"_s, heading);
    connect(remove, &QToolButton::clicked, this,
            [this] { m_list.remove(std::set(m_list.selection().ids)); });
    m_copy->setToolTip(u"Copy the table"_s);
    connect(m_copy, &QAbstractButton::pressed, this,
            [this] { m_copy->setCopied(m_files->text()); });
    m_summary->setWordWrap(true);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(m_title);
    words->addWidget(m_summary);
    auto* layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(m_sign, 0, Qt::AlignTop);
    layout->addLayout(words, 1);
    layout->addWidget(m_copy, 0, Qt::AlignVCenter);
    layout->addWidget(remove, 0, Qt::AlignVCenter);
    return heading;
}

void SelectionPane::refresh()
{
    if (isVisible())
        m_soon.start(); // many files may change at a time
}

void SelectionPane::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_soon.start(); // the window is shown first
}

void SelectionPane::take()
{
    std::vector<FileAnalysis> files;
    for (const FileAnalysis* file : m_list.allSelected())
        files.push_back(*file);
    FileStanding worst = FileStanding::missing;
    for (const FileAnalysis& file : files)
        worst = std::min(worst, standingOf(file));
    m_sign->setVerdict(worst == FileStanding::failed   ? Verdict::fail
                       : worst <= FileStanding::warned ? Verdict::warn
                       : worst == FileStanding::passed ? Verdict::pass
                                                       : Verdict::info);
    m_title->setText(u"%1 selected"_s.arg(filesWord(files.size())));
    m_files->show(std::move(files));
    merge();
    m_summary->setText(summary());
    fit();
}

/// In the background.
void SelectionPane::merge()
{
    SharedFindings asked{
        .problems = {}, .names = {}, .ids = {}, .selected = m_files->files().size()};
    std::vector<std::shared_ptr<const FileReport>> reports;
    for (const FileAnalysis& file : m_files->files())
        if (const auto* done = std::get_if<FileAnalysis::Done>(&file.status)) {
            reports.push_back(done->report);
            asked.names.push_back(file.url.fileName());
            asked.ids.push_back(file.id);
        }
    m_merging.run(
        [asked = std::move(asked), reports = std::move(reports), before = m_problems->findings()] {
            std::vector<std::vector<Problem>> problems;
            for (const auto& report : reports)
                problems.push_back(Problems::of(*report));
            auto findings = std::make_shared<SharedFindings>(asked);
            findings->problems = SharedProblems::of(problems);
            return *findings == *before ? before : std::shared_ptr<const SharedFindings>(findings);
        },
        [this](const auto& findings) {
            m_problems->show(findings);
            showProblems();
        });
}

void SelectionPane::showProblems()
{
    const auto count = m_problems->findings()->problems.size();
    m_problemsTitle->setText(count > 0 ? u"Problems"_s : u"No problems"_s);
    m_problemCount->setText(QString::number(count));
    m_problemCount->setVisible(count > 0);
    m_problems->setVisible(count > 0);
    m_summary->setText(summary());
    fit();
}

/// "2 of 3 fail. 5 problems, 2 of them in every file."
QString SelectionPane::summary() const
{
    const auto& files = m_files->files();
    const auto failing = static_cast<std::size_t>(std::ranges::count(
        files, FileStanding::failed, [](const FileAnalysis& file) { return standingOf(file); }));
    QString text = failing == files.size() ? u"All %1 fail."_s.arg(failing)
                   : failing == 0          ? u"None of them fails."_s
                                           : u"%1 of %2 fail."_s.arg(failing).arg(files.size());
    const auto& problems = m_problems->findings()->problems;
    if (problems.empty())
        return text;
    text += u" %1 problem%2"_s.arg(QString::number(problems.size()),
                                   Text::plural(std::ssize(problems)));
    const auto everywhere = std::ranges::count_if(
        problems, [&](const SharedProblem& one) { return one.files.size() == files.size(); });
    if (everywhere > 0)
        text += u", %1 of them in every file"_s.arg(everywhere);
    return text + u'.';
}

void SelectionPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

/// Both tables are as high as their rows; of what there is no room for, each shows its share.
void SelectionPane::fit()
{
    constexpr int around = 198; // margins, heading and titles
    constexpr int edge = 2;
    constexpr int nameWidth = 160;
    const int files = m_files->rowCount() * fileRow + headerHeight + edge;
    const int problems = m_problems->wantedHeight();
    const int room = std::max(height() - around, 2 * fileRow);
    const int shared = std::min(files, std::max(room - problems, room / 2));
    m_table->setFixedHeight(shared);
    m_problems->setFixedHeight(
        std::clamp(room - shared, problemRow, std::max(problems, problemRow)));
    // The last columns tell most: those between yield where there is no room.
    constexpr std::array widths{0, 68, 92, 84, 98, 92, 88, 130};
    int left = m_table->width() - nameWidth - widths.back();
    m_table->setColumnWidth(SelectedFiles::fails, widths.back());
    for (int column = 1; column < SelectedFiles::fails; ++column) {
        const int wide = widths.at(static_cast<std::size_t>(column));
        m_table->setColumnHidden(column, left < wide);
        m_table->setColumnWidth(column, wide);
        left -= wide;
    }
}

} // namespace vantroque
