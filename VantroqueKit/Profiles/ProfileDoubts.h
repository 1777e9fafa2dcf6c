#pragma once

#include "Records/Profile.h"

#include <QByteArray>

#include <functional>

/// What can be read of a profile and hardly means what its writer meant.
namespace vantroque::ProfileDoubts {

using Tell = std::function<void(const QString& path, const QString& words)>;

/// Fields of the text that a profile does not have: mostly misspelled ones, whose rule is silently
/// not there.
void tellUnknownFields(const QByteArray& text, const Profile& profile, const Tell& tell);

/// Values that no file could meet, or that nothing here knows.
void tellDoubtfulValues(const Profile& profile, const Tell& tell);

} // namespace vantroque::ProfileDoubts
