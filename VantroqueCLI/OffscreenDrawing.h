#pragma once

#include <QGuiApplication>

namespace vantroque {

/// What drawing text takes, without a screen. One at a time, on the main thread.
class OffscreenDrawing {
public:
    OffscreenDrawing();

private:
    /// Comes first: platforms are chosen, and remarks for developers made, at the start.
    struct Quiet {
        Quiet();
    };

    Quiet m_quiet;
    int m_count = 1;
    char m_name[14] = "vantroque-cli";
    char* m_names[2] = {m_name, nullptr};
    QGuiApplication m_application;
};

} // namespace vantroque
