#pragma once

#include "Base/Result.h"

#include <QByteArray>
#include <QString>

/// Where the words of the command line go.
namespace vantroque::Output {

/// Writes a document to standard output.
Result<void> print(const QByteArray& document);
/// Writes a document to an open descriptor, which `name` means in an error.
Result<void> writeThrough(int descriptor, const QByteArray& document, const QString& name);

/// One line on standard error, after the program's name.
void complain(const QString& message);

/// Whether colour is welcome on standard output: a terminal, and NO_COLOR not set.
bool isColorTerminal();

} // namespace vantroque::Output
