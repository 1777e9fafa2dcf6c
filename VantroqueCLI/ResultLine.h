#pragma once

#include "VantroqueCLI/CheckReports.h"

#include <QIODevice>
#include <QJsonObject>

namespace vantroque {

/// One file's result as `check` wrote it in JSON.
struct WrittenResult {
    CheckedFile file;   ///< Without what `media` holds.
    QJsonObject object; ///< All of it but the version.
    QString version;    ///< Of the program that checked the file.
};

/// Results in JSON Lines: the object that a document of `check --format json` has for a file, on a
/// line of its own, with the program's version ahead.
namespace ResultLine {

/// With its line end. `version` as `read` takes it.
QByteArray of(const QJsonObject& result,
              const QString& version = QStringLiteral(VANTROQUE_VERSION));

/// No line is longer.
constexpr qsizetype maxBytes = 100'000'000;

/// The next line with its end; empty when there is none. One that is longer than any of ours is cut
/// off, and the rest of it skipped.
QByteArray next(QIODevice& file);

/// The result on a whole line of any origin; says why it is none.
Result<WrittenResult> read(const QByteArray& line);
/// The same of an object in a document of that version, unless the object has its own.
Result<WrittenResult> read(QJsonObject object, const QString& version);

/// Whether a line that has no end may be what a killed program left.
bool isTorn(const QByteArray& line);

} // namespace ResultLine
} // namespace vantroque
