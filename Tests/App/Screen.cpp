#include "App/Screen.h"

#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"

#include <stdexcept>

namespace vantroque {

Screen::Screen()
{
    const TestFolder notes;
    const auto number = notes.write("number", {});
    m_server =
        std::make_unique<Program>(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen",
                                                           "0", "1600x1000x24", "-nolisten", "tcp"},
                                  ProgramOptions{.standardOutput = number});
    if (!comesTrue([&] { return contents(number).endsWith('\n'); }))
        throw std::runtime_error("no screen for the test");
    m_display =
        std::make_unique<ScopedVariable>("DISPLAY", ":" + contents(number).trimmed().toStdString());
    m_platform = std::make_unique<ScopedVariable>("QT_QPA_PLATFORM", "xcb");
    const auto ready = notes / "ready";
    m_manager = std::make_unique<Program>(std::vector<std::string>{
        "openbox", "--sm-disable", "--startup", "touch " + ready.native()});
    if (!comesTrue([&] { return std::filesystem::exists(ready); }))
        throw std::runtime_error("no window manager for the test");
}

Screen::~Screen() = default;

void Screen::press(const std::vector<std::string>& keys) const
{
    std::vector<std::string> command{"xdotool", "key"};
    command.insert(command.end(), keys.begin(), keys.end());
    if (runProgram(command).status != 0)
        throw std::runtime_error("no key was pressed");
}

void Screen::type(const std::string& text) const
{
    if (runProgram({"xdotool", "type", text}).status != 0)
        throw std::runtime_error("nothing was typed");
}

bool Screen::soonActive(const Program& program, const std::string& title) const
{
    const QByteArray expected =
        QByteArray::number(program.id()) + '\n' + QByteArray::fromStdString(title) + '\n';
    return comesTrue([&] {
        return runProgram({"xdotool", "getactivewindow", "getwindowpid", "getwindowname"}).out
               == expected;
    });
}

void Screen::end()
{
    m_server.reset();
}

} // namespace vantroque
