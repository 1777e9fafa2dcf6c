#pragma once

#include "Base/Record.h"
#include "Base/UserDefaults.h"

#include <QObject>

namespace vantroque {

/// How the window looks.
enum class AppearanceMode { dark, light, system };
VANTROQUE_ENUM_NAMES(AppearanceMode, dark, light, system)

/// The look that the operator chose, under "appearance" of the user defaults. Main thread.
class AppearanceChoice : public QObject {
    Q_OBJECT

public:
    /// Dark unless something else was chosen. `defaults` must outlive it.
    explicit AppearanceChoice(UserDefaults& defaults);

    AppearanceMode mode() const { return m_mode; }
    /// Remembers another look.
    void setMode(AppearanceMode mode);

Q_SIGNALS:
    void changed();

private:
    UserDefaults& m_defaults;
    AppearanceMode m_mode;
};

} // namespace vantroque
