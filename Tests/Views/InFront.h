#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QWidget>

namespace vantroque {

/// Shows a window, and waits until the keyboard is its own: a window manager decides when.
inline void bringToFront(QWidget& window)
{
    window.show();
    window.activateWindow();
    constexpr int milliseconds = 60'000;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, milliseconds));
}

} // namespace vantroque
