#include "Base/Json.h"

#include "Base/PlainText.h"

#include <QJsonDocument>

#include <algorithm>

namespace vantroque::Json {

namespace {

/// Whether brackets outside of strings nest deeper than the limit. Runs before the parser, whose
/// own limit is higher and not ours to set.
bool isTooDeep(const QByteArray& text)
{
    int depth = 0;
    bool inString = false;
    bool escaped = false;
    for (const char c : text) {
        if (inString) {
            if (escaped)
                escaped = false;
            else if (c == '\\')
                escaped = true;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > maxDepth)
                return true;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

/// Names and tags may hold what steers a terminal. In a string, where alone it can stand, an escape
/// says the same.
QByteArray harmless(const QByteArray& json)
{
    const auto isHarmful = [](QChar c) { return c != u'\n' && PlainText::steersTerminals(c); };
    const QString text = QString::fromUtf8(json);
    if (std::ranges::none_of(text, isHarmful))
        return json;
    QString escaped;
    for (const QChar c : text)
        if (isHarmful(c))
            escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        else
            escaped += c;
    return escaped.toUtf8();
}

} // namespace

Result<QJsonValue> parse(const QByteArray& text, qsizetype limit)
{
    if (text.size() > limit)
        return failure(QStringLiteral("JSON larger than %1 MB").arg(limit / 1'000'000));
    if (isTooDeep(text))
        return failure(QStringLiteral("JSON nested deeper than %1 levels").arg(maxDepth));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return failure(QStringLiteral("not valid JSON at byte %1: %2")
                           .arg(QString::number(error.offset), error.errorString()));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QByteArray print(const QJsonValue& value)
{
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return harmless(document.toJson(QJsonDocument::Indented));
}

QByteArray onOneLine(const QJsonObject& object)
{
    return harmless(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace vantroque::Json
