#pragma once

#include "Base/Result.h"

#include <QByteArray>
#include <QString>

#include <string>

/// Where the words of the command line go.
namespace vantroque::Output {

/// Writes a document to the file, or to standard output when the name is empty. A regular file is
/// replaced whole or left as it was; a pipe or device is written through.
Result<void> write(const std::string& file, const QByteArray& document);

/// One line on standard error, behind the program's name.
void complain(const QString& message);

/// Whether colour is welcome on standard output: a terminal, and NO_COLOR not set.
bool isColorTerminal();

} // namespace vantroque::Output
