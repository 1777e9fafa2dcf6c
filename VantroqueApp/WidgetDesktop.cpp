#include "VantroqueApp/WidgetDesktop.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>

namespace vantroque {

using namespace Qt::StringLiterals;

std::optional<FileUrl> WidgetDesktop::chooseSaveFile(const QString& proposedName)
{
    const QString name =
        QFileDialog::getSaveFileName(QApplication::activeWindow(), u"Save"_s, proposedName);
    if (name.isEmpty())
        return std::nullopt;
    return FileUrl::fromPath(QFile::encodeName(name).toStdString());
}

} // namespace vantroque
