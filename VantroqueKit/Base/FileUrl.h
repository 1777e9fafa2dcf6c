#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <memory>
#include <optional>

namespace vantroque {

/// The absolute place of a file on this machine. Keeps the name's bytes as the file system has
/// them, so that a name that is not valid UTF-8 can be opened, handed to a tool and stored. A copy
/// is cheap: lists of thousands of files are copied.
class FileUrl {
public:
    FileUrl() = default;

    /// A relative path counts from the working directory; being absolute also keeps a name such as
    /// "-y" or "http:x" from being taken for an option or a protocol by a tool.
    static FileUrl fromPath(const std::filesystem::path& path);
    /// Reads "file:///..." with percent-encoded bytes; nothing for any other text.
    static std::optional<FileUrl> fromString(const QString& text);
    QString toString() const;

    const std::filesystem::path& path() const;
    /// The path and its last component for people: invalid bytes become U+FFFD.
    QString displayPath() const;
    QString fileName() const;
    /// The text after the last dot of the file name, and the name without dot and extension. A
    /// name that starts with its only dot, or ends in a dot, has no extension.
    QString extension() const;
    QString stem() const;

    bool operator==(const FileUrl& other) const;

private:
    explicit FileUrl(std::filesystem::path absolute);

    std::shared_ptr<const std::filesystem::path> m_path; ///< Null for the empty one.
};

} // namespace vantroque
