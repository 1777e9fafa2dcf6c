#pragma once

#include "Base/FileUrl.h"
#include "Base/UserDefaults.h"

#include <QSet>

#include <map>
#include <set>

namespace vantroque {

/// Which rows of a file's report are open.
struct OpenRows {
    std::set<QString> problems; ///< By their check.
    QSet<QString> rows;         ///< Of the platforms, by key.
    QSet<QString> seen;         ///< Platforms that were shown, and so opened if they fail.
    bool isChosen = false;      ///< The operator opened or closed one.
};

/// The open rows of all files. Those of the last files in which the operator chose some outlive the
/// program, under "window.openRows" of the user defaults, newest first: for each file a text of
/// four lines, its address and the three sets, their parts between tabs.
class OpenRowsMemory {
public:
    explicit OpenRowsMemory(UserDefaults& defaults) : m_defaults(defaults) {}

    /// Stays valid.
    OpenRows& of(const FileUrl& file);
    /// Stores those of a file, if the operator chose any. What was chosen longest ago is forgotten.
    void keep(const FileUrl& file);

    static constexpr qsizetype most = 50; ///< Files.

private:
    UserDefaults& m_defaults;
    std::map<QString, OpenRows> m_files; ///< By address.
};

} // namespace vantroque
