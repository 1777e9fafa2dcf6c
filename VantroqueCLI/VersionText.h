#pragma once

#include <QByteArray>

namespace vantroque {

/// What this program is; with `isVerbose` also which tools it would use and what holds around them,
/// for which they are run.
QByteArray versionText(bool isVerbose);

} // namespace vantroque
