#pragma once

#include "Base/ScopedVariable.h"

#include <memory>

namespace vantroque {

/// A desktop's session (XSMP), for the one program that starts while it lasts.
class SessionManager {
public:
    SessionManager();
    ~SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    /// Whether the program comes to be part of the session.
    bool soonHasProgram();
    /// Tells the program that the session is about to end. Whether it says that all is saved.
    bool askToSave();
    /// Tells it to end.
    void askToEnd();

private:
    struct Listening;

    /// Once at the start, and then when it is asked to.
    bool soonSaved(int times) const;

    std::unique_ptr<Listening> m_listening;
    std::unique_ptr<ScopedVariable> m_address;
};

} // namespace vantroque
