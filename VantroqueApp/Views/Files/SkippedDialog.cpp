#include "VantroqueApp/Views/Files/SkippedDialog.h"

#include "Base/Text.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace vantroque::SkippedDialog {

using namespace Qt::StringLiterals;

namespace {

QTreeWidget* table(const std::vector<SkippedFile>& files, QWidget* parent)
{
    auto* table = new QTreeWidget(parent);
    table->setAccessibleName(u"Skipped files"_s);
    table->setHeaderLabels({u"File"_s, u"Why"_s});
    table->setRootIsDecorated(false);
    table->setUniformRowHeights(true);
    table->setTextElideMode(Qt::ElideMiddle);
    QList<QTreeWidgetItem*> rows;
    for (const SkippedFile& file : files) {
        const QString name = Text::printable(file.name);
        auto* row = new QTreeWidgetItem({name, file.reason});
        row->setToolTip(0, name);
        rows << row;
    }
    table->addTopLevelItems(rows);
    table->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    table->header()->setStretchLastSection(false);
    return table;
}

} // namespace

void open(const std::vector<SkippedFile>& files, QWidget* parent)
{
    constexpr QSize size(560, 360);
    auto* dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(
        u"%1 file%2 skipped"_s.arg(QString::number(files.size()), Text::plural(std::ssize(files))));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(table(files, dialog));
    layout->addWidget(buttons);
    dialog->resize(size);
    dialog->open();
}

} // namespace vantroque::SkippedDialog
