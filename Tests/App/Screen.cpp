#include "App/Screen.h"

#include "Tools/ProcessTable.h"

#include <QtEndian>

#include <stdexcept>

namespace vantroque {

namespace {

void doAll(std::vector<std::string> steps)
{
    steps.insert(steps.begin(), "xdotool");
    if (runProgram(steps).status != 0)
        throw std::runtime_error("the screen took no " + steps.at(1));
}

std::vector<std::string> moveTo(QPoint place)
{
    return {"mousemove", QByteArray::number(place.x()).toStdString(),
            QByteArray::number(place.y()).toStdString()};
}

std::vector<std::string> moveTo(QPoint place, const std::vector<std::string>& then)
{
    auto steps = moveTo(place);
    steps.insert(steps.end(), then.begin(), then.end());
    return steps;
}

} // namespace

Screen::Screen()
{
    const TestFolder notes;
    const auto number = notes.write("number", {});
    m_server = std::make_unique<Program>(
        std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24",
                                 "-nolisten", "tcp", "-fbdir", m_folder.path().native()},
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
    std::vector<std::string> steps{"key"};
    steps.insert(steps.end(), keys.begin(), keys.end());
    doAll(steps);
}

void Screen::type(const std::string& text) const
{
    doAll({"type", text});
}

void Screen::click(QPoint place) const
{
    doAll(moveTo(place, {"click", "1"}));
}

void Screen::drag(const std::vector<QPoint>& places,
                  const std::function<void(QPoint)>& atEach) const
{
    doAll(moveTo(places.front(), {"mousedown", "1"}));
    for (const QPoint place : places) {
        doAll(moveTo(place));
        atEach(place);
    }
    doAll({"mouseup", "1"});
}

/// The server writes it as a dump of a window (XWD): a header of big-endian words, colours, rows.
QImage Screen::picture() const
{
    const QByteArray dump = contents(m_folder / "Xvfb_screen0");
    const auto word = [&](qsizetype index) {
        return static_cast<int>(qFromBigEndian<quint32>(dump.constData() + 4 * index));
    };
    const qsizetype headerBytes = word(0);
    const qsizetype colorBytes = 12 * qsizetype{word(19)};
    const QImage shared(reinterpret_cast<const uchar*>(dump.constData() + headerBytes + colorBytes),
                        word(4), word(5), word(12), QImage::Format_RGB32);
    return shared.copy();
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
