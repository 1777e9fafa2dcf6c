#pragma once

#include "Base/ScopedVariable.h"
#include "Support/Program.h"

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
    /// Whether a window of that program and title comes to have the keyboard.
    bool soonActive(const Program& program, const std::string& title = "Vantroque") const;
    /// Takes the display away.
    void end();

private:
    std::unique_ptr<Program> m_server;
    std::unique_ptr<ScopedVariable> m_display;
    std::unique_ptr<ScopedVariable> m_platform;
    std::unique_ptr<Program> m_manager;
};

} // namespace vantroque
