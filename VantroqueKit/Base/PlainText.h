#pragma once

#include <QString>

/// Text without what does more than to be read.
namespace vantroque::PlainText {

/// A control character, which a terminal acts on, or a mark that breaks lines or turns the
/// direction of writing over, which would show a name as another one.
bool steersTerminals(QChar c);

/// On one line and without blanks around: each line end, tab or other control character becomes a
/// blank, and so does what neither XML nor a table can hold.
QString oneLine(const QString& text);

} // namespace vantroque::PlainText
