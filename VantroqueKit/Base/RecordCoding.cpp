#include "Base/RecordCoding.h"

#include <charconv>
#include <cmath>

namespace vantroque::RecordCoding {

namespace {

const char* typeName(const QJsonValue& json)
{
    switch (json.type()) {
    case QJsonValue::Null: return "null";
    case QJsonValue::Bool: return "a bool";
    case QJsonValue::Double: return "a number";
    case QJsonValue::String: return "text";
    case QJsonValue::Array: return "a list";
    case QJsonValue::Object: return "an object";
    case QJsonValue::Undefined: break;
    }
    return "nothing";
}

tl::unexpected<CodingError> problem(const QString& text)
{
    return tl::unexpected(CodingError{{}, text});
}

} // namespace

tl::unexpected<CodingError> wrongType(const char* expected, const QJsonValue& found)
{
    return problem(QStringLiteral("expected %1, found %2")
                       .arg(QLatin1String(expected), QLatin1String(typeName(found))));
}

bool put(Coded<QJsonValue> value, std::string_view name, QJsonObject& object, Coded<void>& outcome)
{
    if (value)
        object.insert(key(name), *value);
    else
        outcome = tl::unexpected(value.error().within(QLatin1Char('.') + key(name)));
    return value.has_value();
}

bool take(Coded<void> member, std::string_view name, Coded<void>& outcome)
{
    if (!member)
        outcome = tl::unexpected(member.error().within(QLatin1Char('.') + key(name)));
    return member.has_value();
}

bool missing(std::string_view name, Coded<void>& outcome)
{
    outcome = tl::unexpected(CodingError{QLatin1Char('.') + key(name), QStringLiteral("missing")});
    return false;
}

Coded<bool> decodeBool(const QJsonValue& json)
{
    if (!json.isBool())
        return wrongType("a bool", json);
    return json.toBool();
}

Coded<std::int64_t> decodeInteger(const QJsonValue& json, std::int64_t min, std::int64_t max)
{
    if (!json.isDouble())
        return wrongType("a whole number", json);
    // QJsonValue answers with the fallback when the number is not whole or does not fit.
    const qint64 value = json.toInteger(0);
    if (value == 0 && json.toInteger(1) == 1)
        return problem(QStringLiteral("expected a whole number"));
    if (value < min || value > max)
        return problem(QStringLiteral("out of range"));
    return value;
}

Coded<double> decodeNumber(const QJsonValue& json)
{
    if (!json.isDouble())
        return wrongType("a number", json);
    if (!std::isfinite(json.toDouble()))
        return problem(QStringLiteral("not a finite number"));
    return json.toDouble();
}

Coded<QString> decodeText(const QJsonValue& json)
{
    if (!json.isString())
        return wrongType("text", json);
    return json.toString();
}

Coded<FileUrl> decodeFileUrl(const QJsonValue& json)
{
    auto url = FileUrl::fromString(TRY(decodeText(json)));
    if (!url)
        return problem(QStringLiteral("expected a file URL"));
    return *std::move(url);
}

Coded<QJsonValue> encodeDate(const QDateTime& date)
{
    const QString text = date.toUTC().toString(Qt::ISODate); // empty beyond the year 9999, too
    if (text.isEmpty())
        return problem(QStringLiteral("not a date"));
    return QJsonValue(text);
}

Coded<QDateTime> decodeDate(const QJsonValue& json)
{
    const QString text = TRY(decodeText(json));
    const QDateTime date = QDateTime::fromString(text, Qt::ISODate);
    // Without a zone the text would mean another moment on another machine.
    if (!date.isValid() || date.timeSpec() == Qt::LocalTime)
        return problem(QStringLiteral("expected a date such as 2026-03-01T12:30:00Z"));
    return date.toUTC();
}

Coded<QUuid> decodeUuid(const QJsonValue& json)
{
    const QString text = TRY(decodeText(json));
    const QUuid id = QUuid::fromString(text);
    if (id.isNull() && text != QUuid().toString(QUuid::WithoutBraces))
        return problem(QStringLiteral("expected a UUID"));
    return id;
}

Coded<std::size_t> decodeCase(const QJsonValue& json, const std::string_view* names,
                              std::size_t count)
{
    const QString text = TRY(decodeText(json));
    for (std::size_t i = 0; i < count; ++i)
        if (text == key(names[i]))
            return i;
    return problem(QStringLiteral("unknown value \"%1\"").arg(text));
}

Coded<QJsonValue> encodeNumber(double value)
{
    if (!std::isfinite(value))
        return problem(QStringLiteral("not a finite number"));
    return QJsonValue(value);
}

Coded<QJsonValue> encodeNumber(float value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    double shortest = 0;
    if (!std::isfinite(value) || std::from_chars(text.data(), end, shortest).ec != std::errc{})
        return problem(QStringLiteral("not a finite number"));
    return QJsonValue(shortest);
}

} // namespace vantroque::RecordCoding
