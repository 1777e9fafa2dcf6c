#include "Base/ScratchFolder.h"
#include "Profiles/ProfileStore.h"
#include "VantroqueApp/SessionEnd.h"
#include "VantroqueApp/SingleInstance.h"
#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "VantroqueApp/Views/Window/MainWindow.h"
#include "VantroqueApp/WidgetDesktop.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"
#include "VantroquePlatform/Spelling/EnchantSpeller.h"

#include <QApplication>
#include <QDeadlineTimer>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

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

/// Not looked at yet: a disk may not answer.
std::vector<FileUrl> places(int count, char** arguments)
{
    std::vector<FileUrl> places;
    for (int i = 1; i < count; ++i)
        if (const std::filesystem::path path = arguments[i]; !path.empty())
            places.push_back(FileUrl::fromPath(path));
    return places;
}

void take(MainWindow& window, const std::vector<FileUrl>& files)
{
    FileLooker::Paths paths;
    for (const FileUrl& file : files)
        paths.push_back(file.path());
    if (!paths.empty())
        window.take(std::move(paths));
}

void bringToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

/// Files that were handed over last are in the list before it is saved, unless they lie on a disk
/// that does not answer. Nobody else is heard meanwhile: a session manager waits for the answer to
/// what it asked.
void finishTaking(const MainWindow& window)
{
    constexpr std::chrono::seconds patience{3};
    constexpr std::chrono::milliseconds pause{2};
    const QDeadlineTimer end(patience);
    while (window.isTaking() && !end.hasExpired()) {
        std::this_thread::sleep_for(pause);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents
                                        | QEventLoop::ExcludeSocketNotifiers);
    }
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

/// The answer to a call for the program's words alone.
std::optional<std::string> toldTo(int count, char** arguments)
{
    const std::string_view word = count == 2 ? arguments[1] : "";
    if (word == "--version")
        return "vantroque " VANTROQUE_VERSION "\n";
    if (word == "--help")
        return "Usage: vantroque [FILE]...\n"
               "Opens the window with these files. Put \"./\" before names that begin with a "
               "hyphen.\nThe command line is vantroque-cli.\n";
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    if (const auto words = toldTo(argc, argv)) {
        std::fputs(words->c_str(), stdout);
        return EXIT_SUCCESS;
    }
    std::signal(SIGXFSZ, SIG_IGN); // Too large a file is an error like any other.
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Vantroque"_s);
    QApplication::setApplicationVersion(QStringLiteral(VANTROQUE_VERSION));
    QApplication::setDesktopFileName(u"vantroque"_s);
    const auto files = places(argc, argv);
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
                         take(window, later);
                         bringToFront(window);
                     });
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &window,
        [&] {
            finishTaking(window);
            model.saveWorkspaceNow();
        },
        Qt::DirectConnection);
    window.show();
    take(window, files);
    const int status = QApplication::exec();
    finishTaking(window);
    leave(model, status);
}
