#include "VantroqueApp/WidgetDesktop.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

std::optional<FileUrl> chosen(const QString& name)
{
    if (name.isEmpty())
        return std::nullopt;
    return FileUrl::fromPath(QFile::encodeName(name).toStdString());
}

} // namespace

std::optional<FileUrl> WidgetDesktop::chooseSaveFile(const QString& proposedName)
{
    return chosen(
        QFileDialog::getSaveFileName(QApplication::activeWindow(), u"Save"_s, proposedName));
}

std::optional<FileUrl> WidgetDesktop::chooseOpenFile(const QString& message,
                                                     const QStringList& extensions)
{
    QStringList patterns;
    for (const QString& extension : extensions)
        patterns << u"*."_s + extension;
    return chosen(QFileDialog::getOpenFileName(
        QApplication::activeWindow(), message, {},
        u"Files of this kind (%1);;All files (*)"_s.arg(patterns.join(u' '))));
}

} // namespace vantroque
