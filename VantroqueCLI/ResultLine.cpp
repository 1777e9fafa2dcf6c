#include "VantroqueCLI/ResultLine.h"

#include "Base/Json.h"
#include "Base/PathText.h"

#include <algorithm>

namespace vantroque::ResultLine {

using namespace Qt::StringLiterals;

namespace {

/// Every line begins like this, so that no other file is taken for one with a torn line.
const QByteArray beginning = "{\"version\":\"";

Result<QString> text(const QJsonObject& object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        return failure(u"it has no text \"%1\""_s.arg(key));
    return value.toString();
}

bool isVersion(const QString& text)
{
    constexpr qsizetype longest = 32;
    return !text.isEmpty() && text.size() <= longest && std::ranges::all_of(text, [](QChar c) {
        return (c < QChar(0x80) && c.isLetterOrNumber()) || u".+~-"_s.contains(c);
    });
}

/// The bytes of the file's name.
Result<std::string> nameIn(const QJsonObject& object)
{
    const QString path = TRY(text(object, "path"_L1));
    if (!object.contains("pathBytes"_L1))
        return path.toStdString();
    const auto bytes = QByteArray::fromBase64Encoding(TRY(text(object, "pathBytes"_L1)).toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes || QString::fromUtf8(*bytes) != path)
        return failure(u"\"pathBytes\" are not those of \"path\""_s);
    return (*bytes).toStdString();
}

Result<Analyzer::Analysis> outcomeIn(const QJsonObject& object)
{
    return Analyzer::Analysis{{}, TRY(RecordCoding::decode<FileReport>(object.value("report"_L1)))};
}

} // namespace

QByteArray of(const QJsonObject& result, const QString& version)
{
    return beginning + version.toUtf8() + "\"," + Json::onOneLine(result).sliced(1) + '\n';
}

QByteArray next(QIODevice& file)
{
    constexpr qint64 step = 65'536; // QIODevice takes as much memory as a line may have bytes.
    QByteArray line;
    for (QByteArray piece = file.readLine(step); !piece.isEmpty(); piece = file.readLine(step)) {
        if (line.size() <= maxBytes)
            line += piece;
        if (piece.endsWith('\n'))
            break;
    }
    return line;
}

Result<WrittenResult> read(const QByteArray& line)
{
    const QJsonValue value = TRY(Json::parse(line, maxBytes));
    if (!value.isObject())
        return failure(u"it is a list"_s);
    return read(value.toObject(), {});
}

Result<WrittenResult> read(QJsonObject object, const QString& version)
{
    WrittenResult result;
    result.version = version.isEmpty() || object.contains("version"_L1)
                         ? TRY(text(object, "version"_L1))
                         : version;
    if (!isVersion(result.version))
        return failure(u"its version is none"_s);
    object.remove("version"_L1);
    result.file.name = TRY(nameIn(object));
    const QString status = TRY(text(object, "status"_L1));
    if (status == u"done"_s)
        result.file.outcome = TRY(outcomeIn(object));
    else if (status == u"failed"_s)
        result.file.outcome = failure(TRY(text(object, "error"_L1)));
    else
        return failure(u"its status is neither \"done\" nor \"failed\""_s);
    result.object = std::move(object);
    return result;
}

bool isTorn(const QByteArray& line)
{
    return line.startsWith(beginning) || beginning.startsWith(line);
}

} // namespace vantroque::ResultLine
