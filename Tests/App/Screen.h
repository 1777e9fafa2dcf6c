#pragma once

#include "Base/ScopedVariable.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"

#include <QImage>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vantroque {

/// A screen with a window manager, for programs that start while it lasts.
class Screen {
public:
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// As a person presses them, such as "ctrl+o".
    void press(const std::vector<std::string>& keys) const;
    void type(const std::string& text) const;
    /// With the left button of the mouse.
    void click(QPoint place) const;
    /// Pressed at the first place and let go at the last one. `atEach` is called at every one of
    /// them while the button is down.
    void drag(const std::vector<QPoint>& places, const std::function<void(QPoint)>& atEach) const;
    /// What is on it now.
    QImage picture() const;
    /// Whether a window of that program and title comes to have the keyboard.
    bool soonActive(const Program& program, const std::string& title = "Vantroque") const;
    /// Takes the display away.
    void end();

private:
    TestFolder m_folder; ///< Where the server keeps the picture.
    std::unique_ptr<Program> m_server;
    std::unique_ptr<ScopedVariable> m_display;
    std::unique_ptr<ScopedVariable> m_platform;
    std::unique_ptr<Program> m_manager;
};

} // namespace vantroque
