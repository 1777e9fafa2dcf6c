#pragma once

#include <QByteArray>

/// What the program tells of itself, made of the table of its commands.
namespace vantroque::Manual {

/// For --help.
QByteArray usage();
/// The page of vantroque-cli for `man`, section 1.
QByteArray page();

} // namespace vantroque::Manual
