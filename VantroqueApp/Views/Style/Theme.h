#pragma once

#include "Records/Palette.h"
#include "Records/Report.h"

#include <QColor>

namespace vantroque {

/// The colours of the window by their role. The colours of verdicts never change with the
/// appearance, and are fills or outlines on dark ground, never text.
struct Theme {
    bool isDark = true;
    QColor window;
    QColor sidebar; ///< Also the header.
    QColor card;    ///< Also menus and controls.
    QColor hairline;
    QColor controlEdge;
    QColor dashes; ///< Around a drop target.
    QColor text1;
    QColor text2;
    QColor text3;
    QColor accent;
    QColor onAccent;
    QColor selected;
    QColor hover;
    QColor pressed;
    QColor badge;
    QColor chip;         ///< Behind the verdict of the summary.
    QColor glyphOutline; ///< Around verdict fills; transparent where they need none.

    // The same in all looks.
    QColor stage{0x0E, 0x0F, 0x11}; ///< Around a picture.
    QColor readout{0x1C, 0x1E, 0x23};
    QColor track{0x26, 0x28, 0x2E};
    QColor ground{0x17, 0x18, 0x1C};
    QColor meterBar{0x9D, 0xB2, 0xD3};
    QColor toleranceBand{0x4A, 0x54, 0x68};
    QColor pass{QColor::fromRgba(Palette::green.argb())};
    QColor warn{QColor::fromRgba(Palette::amber.argb())};
    QColor fail{QColor::fromRgba(Palette::red.argb())};

    QColor of(Verdict verdict) const;

    static const Theme& dark();
    static const Theme& light();
    /// The one in use; main thread.
    static const Theme& current();
    static void use(const Theme& theme);
};

} // namespace vantroque
