#pragma once

#include "Base/UserDefaults.h"

namespace vantroque {

/// Whether the desktop tells of the end of a long queue, under "notifyWhenDone" of the user
/// defaults; on unless it was turned off. Main thread.
class DoneNoticeChoice {
public:
    /// `defaults` must outlive it.
    explicit DoneNoticeChoice(UserDefaults& defaults) : m_defaults(defaults) {}

    bool isOn() const { return m_defaults.text(key()) != QStringLiteral("false"); }
    void setOn(bool isOn) { m_defaults.setOn(key(), isOn); }

private:
    static QString key() { return QStringLiteral("notifyWhenDone"); }

    UserDefaults& m_defaults;
};

} // namespace vantroque
