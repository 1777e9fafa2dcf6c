#pragma once

#include "Base/FileUrl.h"

/// Paths as stored records hold them: plain text, and a path whose bytes are not valid UTF-8 in its
/// "file://" form, which no absolute path can be mistaken for.
namespace vantroque::PathText {

QString of(const FileUrl& url);
FileUrl url(const QString& text);

/// The bytes of a path in Base64, for other programs, when text would not lead back to them: they
/// are not valid UTF-8, or hold a byte order mark, which readers of text drop.
std::optional<QString> base64(const std::filesystem::path& path);

} // namespace vantroque::PathText
