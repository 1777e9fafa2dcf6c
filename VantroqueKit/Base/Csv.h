#pragma once

#include <QString>
#include <QStringList>

/// Tables for spreadsheets, one line a record, as RFC 4180 has them.
namespace vantroque::Csv {

/// A text as a field: on one line, without blanks around, and quoted where it must be. What a
/// spreadsheet would run as a formula gets an apostrophe in front. Not for numbers, since one below
/// zero begins like a formula.
QString text(const QString& text);

/// A line of finished fields, without its end.
QString line(const QStringList& fields);

} // namespace vantroque::Csv
