#include "Base/FileUrl.h"

namespace vantroque {

namespace {

const QString scheme = QStringLiteral("file://");

/// Where the extension's dot stands in a file name, or -1.
qsizetype extensionDot(const QString& name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot <= 0 || dot == name.size() - 1 ? -1 : dot;
}

} // namespace

FileUrl::FileUrl(std::filesystem::path absolute)
    : m_path(std::make_shared<const std::filesystem::path>(std::move(absolute)))
{
}

const std::filesystem::path& FileUrl::path() const
{
    static const std::filesystem::path none;
    return m_path ? *m_path : none;
}

bool FileUrl::operator==(const FileUrl& other) const
{
    return m_path == other.m_path || path() == other.path();
}

FileUrl FileUrl::fromPath(const std::filesystem::path& path)
{
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    // Repeated slashes go, so that one place has one name. ".." stays: after a link it leads
    // elsewhere.
    std::filesystem::path plain;
    for (const auto& part : error ? path : absolute)
        plain /= part;
    return FileUrl(std::move(plain));
}

std::optional<FileUrl> FileUrl::fromString(const QString& text)
{
    if (!text.startsWith(scheme + u'/'))
        return std::nullopt;
    const QByteArray bytes = QByteArray::fromPercentEncoding(text.mid(scheme.size()).toUtf8());
    if (bytes.contains('\0'))
        return std::nullopt;
    return FileUrl(std::filesystem::path(bytes.toStdString()));
}

QString FileUrl::toString() const
{
    return scheme
           + QString::fromLatin1(QByteArray::fromStdString(path().native()).toPercentEncoding("/"));
}

QString FileUrl::displayPath() const
{
    return QString::fromStdString(path().native());
}

QString FileUrl::fileName() const
{
    const std::string& whole = path().native();
    const std::size_t name = whole.rfind('/') + 1; // 0 without any
    return QString::fromUtf8(whole.data() + name, static_cast<qsizetype>(whole.size() - name));
}

QString FileUrl::extension() const
{
    const QString name = fileName();
    const qsizetype dot = extensionDot(name);
    return dot < 0 ? QString() : name.mid(dot + 1);
}

QString FileUrl::stem() const
{
    const QString name = fileName();
    return name.left(extensionDot(name)); // left(-1) is the whole name
}

} // namespace vantroque
