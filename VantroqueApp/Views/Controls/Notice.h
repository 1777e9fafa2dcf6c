#pragma once

#include <QString>

#include <functional>

namespace vantroque {

/// Something that happened, for a bar over the pane.
struct Notice {
    /// What it is about: a later notice of the same subject takes its place. Empty: of its own.
    QString subject;
    QString icon;
    QString text; ///< A sentence.
    QString help; ///< All of it, where the sentence is short; may be empty.
    /// What can be done about it, which also closes the bar. No button without a label.
    struct Action {
        QString label;
        QString icon; ///< May be empty.
        std::function<void()> act;
    };
    Action action;
    /// Goes after a while by itself; else it stays until it is closed.
    bool isPassing = false;
};

} // namespace vantroque
