#pragma once

#include "Base/FileUrl.h"

/// Paths as stored records hold them: plain text, and a path whose bytes are not valid UTF-8 in its
/// "file://" form, which no absolute path can be mistaken for.
namespace vantroque::PathText {

QString of(const FileUrl& url);
FileUrl url(const QString& text);

} // namespace vantroque::PathText
