#include "VantroqueApp/Views/Files/SharedProblemRow.h"

#include "Base/Text.h"
#include "VantroqueApp/Views/Controls/FixBox.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Files/SelectionRowDelegate.h"
#include "VantroqueApp/Views/Files/SharedProblemFiles.h"
#include "VantroqueApp/Views/Files/SharedProblemLine.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QTableView>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QLabel* wrapped(const QString& text)
{
    QLabel* label = Type::label(text, Type::caption, QFont::Normal, Type::Ink::text2);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

SharedProblemRow::SharedProblemRow(std::shared_ptr<const SharedFindings> findings,
                                   std::size_t problem, QWidget* parent)
    : QFrame(parent),
      m_findings(std::move(findings)),
      m_place(problem),
      m_line(new SharedProblemLine(this->problem(), m_findings->selected)),
      m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_line);
    connect(m_line, &QAbstractButton::toggled, this, &SharedProblemRow::showDetails);
    connect(m_line, &FoldLine::copyRequested, this, &SharedProblemRow::copy);
}

bool SharedProblemRow::isOpen() const
{
    return m_line->isChecked();
}

void SharedProblemRow::setOpen(bool open)
{
    m_line->setChecked(open);
}

void SharedProblemRow::showDetails(bool open)
{
    if (open && m_details == nullptr) {
        m_details = details();
        m_layout->addWidget(m_details);
        QWidget* before = m_line;
        for (auto* next : m_details->findChildren<QWidget*>())
            if (qobject_cast<QTableView*>(next) != nullptr
                || qobject_cast<QAbstractButton*>(next) != nullptr) {
                setTabOrder(before, next);
                before = next;
            }
    }
    if (m_details != nullptr)
        m_details->setVisible(open);
    update();
    Q_EMIT opened(open);
}

QWidget* SharedProblemRow::details()
{
    constexpr int side = 8;
    constexpr int below = 12;
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(RowParts::indent - side, 0, side, below);
    layout->setSpacing(8);
    layout->addWidget(files());
    addFixes(*layout);
    return box;
}

/// As high as its rows, up to some; beyond those it scrolls.
QTableView* SharedProblemRow::files()
{
    constexpr int rowHeight = 28;
    constexpr int most = 8;
    constexpr int measuredWide = 190;
    constexpr int expectedWide = 230;
    auto* table = new QTableView;
    auto* model = new SharedProblemFiles(m_findings, m_place, table);
    table->setModel(model);
    table->setAccessibleName(u"Files with %1"_s.arg(problem().title));
    table->setItemDelegate(new SelectionRowDelegate(table));
    table->setFrameShape(NoFrame);
    table->setShowGrid(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setSectionResizeMode(SharedProblemFiles::name, QHeaderView::Stretch);
    table->setColumnWidth(SharedProblemFiles::measured, measuredWide);
    table->setColumnWidth(SharedProblemFiles::expected, expectedWide);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->setFixedHeight(rowHeight * std::min(model->rowCount(), most));
    connect(table, &QTableView::activated, this, [this, model](const QModelIndex& index) {
        Q_EMIT fileChosen(model->fileAt(index.row()));
    });
    return table;
}

/// Of many the first: a fix that names a measured value is another one for each file.
void SharedProblemRow::addFixes(QBoxLayout& layout) const
{
    constexpr std::size_t most = 4;
    const auto& fixes = problem().fixes;
    for (std::size_t i = 0; i < std::min(fixes.size(), most); ++i) {
        if (fixes.size() > 1 || fixes[i].files.size() < problem().files.size())
            layout.addWidget(wrapped(ofFiles(fixes[i])));
        layout.addWidget(new FixBox(fixes[i].text));
    }
    if (fixes.size() > most)
        layout.addWidget(wrapped(
            u"%1 more fixes: select a file alone to see its own."_s.arg(fixes.size() - most)));
}

/// "For a.mov, b.mov and 3 others".
QString SharedProblemRow::ofFiles(const SharedProblem::Fix& fix) const
{
    constexpr std::size_t named = 2;
    QStringList names;
    for (std::size_t i = 0; i < std::min(fix.files.size(), named); ++i)
        names << Text::printable(m_findings->names.at(fix.files[i]));
    const auto others = static_cast<qint64>(fix.files.size()) - names.size();
    return u"For "_s + names.join(others > 0 ? u", "_s : u" and "_s)
           + (others > 0 ? u" and %1 other%2"_s.arg(QString::number(others), Text::plural(others))
                         : QString());
}

/// The problem and, tab separated, its files.
void SharedProblemRow::copy() const
{
    const auto& own = problem();
    QStringList lines{u"%1: %2 → %3"_s.arg(own.title, own.measured, own.expected)};
    for (const auto& file : own.files)
        lines << QStringList{Text::printable(m_findings->names.at(file.file)), file.measured,
                             file.expected}
                     .join(u'\t');
    for (const auto& fix : own.fixes)
        lines << fix.text;
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void SharedProblemRow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    RowParts::drawSurface(painter, rect(), isOpen(), false);
}

} // namespace vantroque
