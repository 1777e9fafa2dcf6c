#include "VantroqueApp/WidgetDesktop.h"

#include "Base/Text.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

namespace vantroque {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

std::optional<FileUrl> chosen(const QString& name)
{
    if (name.isEmpty())
        return std::nullopt;
    return FileUrl::fromPath(QFile::encodeName(name).toStdString());
}

/// A panel that begins in a folder of a share that does not answer would hang the window with it.
bool answersSoon(const fs::path& folder)
{
    constexpr std::chrono::milliseconds patience{200};
    std::promise<bool> promise;
    auto answer = promise.get_future();
    // A thread that waits for such a share cannot be ended: this one may stay for good.
    std::thread([folder, promise = std::move(promise)]() mutable {
        std::error_code error;
        promise.set_value(fs::is_directory(folder, error));
    }).detach();
    return answer.wait_for(patience) == std::future_status::ready && answer.get();
}

/// The folder of that file, where it can be looked at.
void beginBeside(QFileDialog& panel, const FileUrl& file)
{
    const fs::path folder = file.path().parent_path();
    panel.setDirectory(answersSoon(folder) ? QFile::decodeName(folder.c_str()) : QDir::homePath());
}

} // namespace

std::optional<FileUrl> WidgetDesktop::chooseSaveFile(const SaveQuestion& question)
{
    const QString extension = question.name.section(u'.', -1);
    QFileDialog panel(QApplication::activeWindow(), question.title);
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setFileMode(QFileDialog::AnyFile);
    panel.setNameFilters({u"%1 (*.%2)"_s.arg(question.kind, extension), u"All files (*)"_s});
    panel.setDefaultSuffix(extension);
    beginBeside(panel, question.beside);
    panel.selectFile(question.name);
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    return chosen(panel.selectedFiles().value(0));
}

std::optional<FileUrl> WidgetDesktop::chooseFolder(const QString& title, const FileUrl& beside)
{
    QFileDialog panel(QApplication::activeWindow(), title);
    panel.setFileMode(QFileDialog::Directory);
    beginBeside(panel, beside);
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    return chosen(panel.selectedFiles().value(0));
}

bool WidgetDesktop::mayReplace(const QStringList& names, const FileUrl& folder)
{
    constexpr qsizetype most = 8; ///< Lines, so that the panel has room on a screen.
    QStringList lines;
    for (const QString& name : names.first(std::min(names.size(), most)))
        lines << Text::printable(name);
    if (names.size() > most)
        lines << u"and %1 more"_s.arg(names.size() - most);
    QMessageBox panel(QMessageBox::Question, u"Replace Files"_s,
                      u"%1 file%2 in %3 would be replaced."_s.arg(
                          QString::number(names.size()), Text::plural(names.size()),
                          Text::printable(folder.fileName())),
                      QMessageBox::Cancel, QApplication::activeWindow());
    panel.setTextFormat(Qt::PlainText);
    panel.setInformativeText(lines.join(u'\n'));
    const auto* replace = panel.addButton(u"Replace"_s, QMessageBox::DestructiveRole);
    panel.setDefaultButton(QMessageBox::Cancel);
    panel.exec();
    return panel.clickedButton() == replace;
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

void WidgetDesktop::showInFolder(const FileUrl& file)
{
    // The file manager's own service also selects the file.
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
                                               u"/org/freedesktop/FileManager1"_s,
                                               u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList{file.toString()} << QString();
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), qApp);
    const QString folder = QFile::decodeName(file.path().parent_path().c_str());
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, [answer, folder] {
        if (answer->isError()) // there is no such service
            QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
        answer->deleteLater();
    });
}

} // namespace vantroque
