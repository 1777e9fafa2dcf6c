#include "Base/PathText.h"

namespace vantroque::PathText {

QString of(const FileUrl& url)
{
    const std::string& bytes = url.path().native();
    const QString text = url.displayPath();
    return text.toStdString() == bytes ? text : url.toString();
}

FileUrl url(const QString& text)
{
    return FileUrl::fromString(text).value_or(FileUrl::fromPath(text.toStdString()));
}

std::optional<QString> base64(const std::filesystem::path& path)
{
    const QByteArray bytes = QByteArray::fromStdString(path.native());
    if (QUtf8StringView(bytes).isValidUtf8() && !bytes.contains("\xEF\xBB\xBF"))
        return std::nullopt;
    return QString::fromLatin1(bytes.toBase64());
}

} // namespace vantroque::PathText
