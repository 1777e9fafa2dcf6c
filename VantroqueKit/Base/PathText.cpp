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

} // namespace vantroque::PathText
