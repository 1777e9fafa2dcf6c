#include "Base/ScratchFolder.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueApp/SessionEnd.h"
#include "VantroqueApp/SingleInstance.h"
#include "VantroqueApp/Views/DroppedFiles.h"
#include "VantroqueApp/Views/FocusRing.h"
#include "VantroqueApp/Views/Look.h"
#include "VantroqueApp/Views/MainWindow.h"
#include "VantroqueApp/WidgetDesktop.h"
#include "VantroquePlatform/TesseractRecognizer.h"

#include <QApplication>

#include <cstdlib>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

std::vector<std::string> textLanguages(const UserDefaults& defaults)
{
    std::vector<std::string> languages;
    for (const QString& code : defaults.textList(u"text.languages"_s).value_or(QStringList()))
        languages.push_back(code.toStdString());
    return languages.empty() ? std::vector<std::string>{"eng"} : languages;
}

void bringToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Vantroque"_s);
    QApplication::setDesktopFileName(u"vantroque"_s);
    const SessionEnd sessionEnd;
    const auto files =
        DroppedFiles::urls(std::vector<std::filesystem::path>(argv + 1, argv + argc));
    SingleInstance instance;
    if (instance.handOver(files))
        return 0;
    ScratchFolder::sweep();

    UserDefaults defaults;
    RecognizerPool recognizers(
        [languages = textLanguages(defaults)] { return TesseractRecognizer::make(languages); });
    WidgetDesktop desktop;
    AppModel model(defaults, desktop, AnalysisEngine::real(&recognizers), ProfileStore::loadAll());
    Look::begin();
    Look::use(model.appearance());
    const FocusRing ring;
    MainWindow window(model);
    QObject::connect(&instance, &SingleInstance::called, &window,
                     [&](const std::vector<FileUrl>& later) {
                         if (!later.empty())
                             model.add(later);
                         bringToFront(window);
                     });
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &model,
                     &AppModel::saveWorkspaceNow, Qt::DirectConnection);
    window.show();
    if (!files.empty())
        model.add(files);

    const int status = QApplication::exec();
    instance.stop();
    model.saveWorkspaceNow();
    // An analysis may take minutes yet. Its tools end with this process, whose own end must not
    // wait for them.
    ScratchFolder::removeAll();
    std::_Exit(status);
}
