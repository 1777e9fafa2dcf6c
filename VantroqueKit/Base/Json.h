#pragma once

#include "Base/RecordCoding.h"

#include <QByteArray>

/// JSON text of any origin to values and back, with bounds that keep a hostile document harmless.
namespace vantroque::Json {

constexpr qsizetype maxBytes = 100'000'000;
constexpr int maxDepth = 512;

/// The object or list in `text`. Fails on malformed UTF-8 or JSON (with the byte offset), on more
/// than `limit` bytes and on nesting deeper than `maxDepth`.
Result<QJsonValue> parse(const QByteArray& text, qsizetype limit = maxBytes);

/// Indented UTF-8 with a final line feed; keys in alphabetical order. Needs an object or
/// a list.
QByteArray print(const QJsonValue& value);

/// The same of an object, without blanks and line ends.
QByteArray onOneLine(const QJsonObject& object);

/// A record from its JSON text.
template<typename T>
Result<T> read(const QByteArray& text)
{
    return TRY(RecordCoding::decode<T>(TRY(parse(text))));
}

/// A record as JSON text.
template<typename T>
Result<QByteArray> write(const T& record)
{
    return print(TRY(RecordCoding::encode(record)));
}

} // namespace vantroque::Json
