#include "Base/ScratchFolder.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueApp/SessionEnd.h"
#include "VantroqueApp/SingleInstance.h"
#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Files/DroppedFiles.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "VantroqueApp/Views/Window/MainWindow.h"
#include "VantroqueApp/WidgetDesktop.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include <QApplication>

#include <csignal>
#include <cstdio>
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

/// The way out. Later starts wait for the end of this process, and find all of it saved.
[[noreturn]] void leave(AppModel& model, int status)
{
    model.saveWorkspaceNow();
    // An analysis may take minutes yet. Its tools end with this process, whose own end must not
    // wait for them.
    ScratchFolder::removeAll();
    std::_Exit(status);
}

/// Qt calls exit() when the display goes away. What belongs to the main thread goes first then,
/// while the libraries that the workers use are still whole.
struct Unexpected {
    ~Unexpected()
    {
        if (model != nullptr)
            leave(*model, EXIT_FAILURE);
    }

    AppModel* model = nullptr;
};
thread_local Unexpected unexpectedEnd;

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGXFSZ, SIG_IGN); // Too large a file is an error like any other.
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Vantroque"_s);
    QApplication::setDesktopFileName(u"vantroque"_s);
    const auto files =
        DroppedFiles::urls(std::vector<std::filesystem::path>(argv + 1, argv + argc));
    SingleInstance instance;
    const auto start = instance.start(files);
    if (!start) {
        std::fputs(qUtf8Printable(u"vantroque: %1\n"_s.arg(start.error().description)), stderr);
        return EXIT_FAILURE;
    }
    if (*start == SingleInstance::Start::handedOver)
        return EXIT_SUCCESS;
    const SessionEnd sessionEnd;
    ScratchFolder::sweep();

    UserDefaults defaults;
    RecognizerPool recognizers(
        [languages = textLanguages(defaults)] { return TesseractRecognizer::make(languages); });
    EnchantSpeller speller;
    WidgetDesktop desktop;
    AppModel model(
        defaults, desktop, AnalysisEngine::real(&recognizers), speller, ProfileStore::loadAll(),
        [](const PlaybackSource& source) { return std::make_unique<DecoderEngine>(source); });
    unexpectedEnd.model = &model;
    Look::begin();
    Look::use(model.appearance().mode());
    const FocusRing ring;
    MainWindow window(model);
    QObject::connect(&instance, &SingleInstance::called, &window,
                     [&](const std::vector<FileUrl>& later) {
                         if (!later.empty())
                             model.files().add(later);
                         bringToFront(window);
                     });
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &window,
        [&model] { model.saveWorkspaceNow(); }, Qt::DirectConnection);
    window.show();
    if (!files.empty())
        model.files().add(files);
    leave(model, QApplication::exec());
}
