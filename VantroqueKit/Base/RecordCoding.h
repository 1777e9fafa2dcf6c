#pragma once

#include "Base/FileUrl.h"
#include "Base/Record.h"
#include "Base/Result.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QUuid>

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vantroque {

/// Why a record could not be read or written: where in it, and what is wrong there.
struct CodingError {
    QString path; ///< For instance ".video.codecs[0].codec"; empty for the whole value.
    QString problem;

    CodingError within(const QString& outer) const { return {outer + path, problem}; }
    operator Error() const
    {
        return {path.isEmpty() ? problem : path + QLatin1String(": ") + problem};
    }
};

template<typename T>
using Coded = Result<T, CodingError>;

/// Records to JSON values and back. A plain member is required on reading; a `std::optional` one
/// may be absent or null, and is written only when it has a value; a `std::shared_ptr` to a
/// constant one is such a member, null without a value. Integers keep 64 bits; a whole-valued
/// number serves an integer member; a bool is no number. NaN, the infinities and an invalid date
/// have no JSON form and are an error on writing. Unknown keys are ignored.
namespace RecordCoding {

// Leaves, in RecordCoding.cpp.
tl::unexpected<CodingError> wrongType(const char* expected, const QJsonValue& found);
Coded<bool> decodeBool(const QJsonValue& json);
Coded<std::int64_t> decodeInteger(const QJsonValue& json, std::int64_t min, std::int64_t max);
Coded<double> decodeNumber(const QJsonValue& json);
Coded<QString> decodeText(const QJsonValue& json);
Coded<FileUrl> decodeFileUrl(const QJsonValue& json);
/// ISO 8601 in whole seconds of UTC, such as "2026-03-01T12:30:00Z"; reading takes any offset.
Coded<QJsonValue> encodeDate(const QDateTime& date);
Coded<QDateTime> decodeDate(const QJsonValue& json);
Coded<QUuid> decodeUuid(const QJsonValue& json);
Coded<std::size_t> decodeCase(const QJsonValue& json, const std::string_view* names,
                              std::size_t count);
Coded<QJsonValue> encodeNumber(double value);
/// The shortest decimal that reads back as the same single-precision value.
Coded<QJsonValue> encodeNumber(float value);

template<typename T>
Coded<QJsonValue> encode(const T& value);
template<typename T>
Coded<T> decode(const QJsonValue& json);

/// A leaf that reads itself from any JSON value.
template<typename T>
concept ReadsItself = requires(const QJsonValue& json)
{
    {
        T::fromJson(json)
        } -> std::same_as<T>;
};

template<typename T>
constexpr bool isOptional = false;
template<typename T>
constexpr bool isOptional<std::optional<T>> = true;
template<typename T>
constexpr bool isShared = false;
template<typename T>
constexpr bool isShared<std::shared_ptr<const T>> = true;
template<typename T>
constexpr bool isList = false;
template<typename T>
constexpr bool isList<std::vector<T>> = true;
template<typename T>
constexpr bool isMap = false;
template<typename T>
constexpr bool isMap<std::map<QString, T>> = true;
template<typename T>
constexpr bool isPair = false;
template<typename T>
constexpr bool isPair<std::pair<T, T>> = true;

inline QLatin1String latin(std::string_view name)
{
    return {name.data(), static_cast<qsizetype>(name.size())};
}

inline QString key(std::string_view name)
{
    return latin(name);
}

inline QString indexPath(qsizetype index)
{
    return QLatin1Char('[') + QString::number(index) + QLatin1Char(']');
}

template<typename Record, typename Value>
Coded<void> encodeMember(const Record& record, const Member<Record, Value>& member,
                         QJsonObject& object)
{
    const Value& value = record.*member.pointer;
    const auto put = [&](const auto& present) -> Coded<void> {
        auto json = encode(present);
        if (!json)
            return tl::unexpected(json.error().within(QLatin1Char('.') + key(member.name)));
        object.insert(key(member.name), *json);
        return {};
    };
    if constexpr (isOptional<Value> || isShared<Value>)
        return value ? put(*value) : Coded<void>{};
    else
        return put(value);
}

template<typename Record, typename Value>
Coded<void> decodeMember(Record& record, const Member<Record, Value>& member,
                         const QJsonObject& object)
{
    const QJsonValue json = object.value(latin(member.name));
    const auto take = [&]<typename T>(T& target) -> Coded<void> {
        auto decoded = decode<T>(json);
        if (!decoded)
            return tl::unexpected(decoded.error().within(QLatin1Char('.') + key(member.name)));
        target = *std::move(decoded);
        return {};
    };
    Value& target = record.*member.pointer;
    if constexpr (isOptional<Value> || isShared<Value>) {
        if (json.isUndefined() || json.isNull())
            return {};
    }
    if constexpr (isOptional<Value>) {
        return take(target.emplace());
    } else if constexpr (isShared<Value>) {
        auto value = std::make_shared<std::remove_const_t<typename Value::element_type>>();
        target = value;
        return take(*value);
    } else {
        if (json.isUndefined())
            return tl::unexpected(
                CodingError{QLatin1Char('.') + key(member.name), QStringLiteral("missing")});
        return take(target);
    }
}

template<typename T>
Coded<QJsonValue> encodeList(const T& list)
{
    QJsonArray array;
    for (const auto& element : list) {
        auto json = encode(element);
        if (!json)
            return tl::unexpected(json.error().within(indexPath(array.size())));
        array.append(*json);
    }
    return QJsonValue(array);
}

template<typename T>
Coded<std::vector<T>> decodeList(const QJsonValue& json)
{
    if (!json.isArray())
        return wrongType("a list", json);
    const QJsonArray array = json.toArray();
    std::vector<T> list;
    list.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue& element : array) {
        auto decoded = decode<T>(element);
        if (!decoded)
            return tl::unexpected(
                decoded.error().within(indexPath(static_cast<qsizetype>(list.size()))));
        list.push_back(*std::move(decoded));
    }
    return list;
}

template<typename T>
Coded<QJsonValue> encode(const T& value)
{
    if constexpr (std::same_as<T, bool> || std::same_as<T, QString>) {
        return QJsonValue(value);
    } else if constexpr (std::integral<T>) {
        return QJsonValue(static_cast<qint64>(value));
    } else if constexpr (std::floating_point<T>) {
        return encodeNumber(value);
    } else if constexpr (std::same_as<T, FileUrl>) {
        return QJsonValue(value.toString());
    } else if constexpr (std::same_as<T, QDateTime>) {
        return encodeDate(value);
    } else if constexpr (std::same_as<T, QUuid>) {
        return QJsonValue(value.toString(QUuid::WithoutBraces).toUpper());
    } else if constexpr (NamedEnum<T>) {
        return QJsonValue(key(enumName(value)));
    } else if constexpr (isList<T>) {
        return encodeList(value);
    } else if constexpr (isPair<T>) {
        return encodeList(std::array{value.first, value.second});
    } else if constexpr (isMap<T>) {
        QJsonObject object;
        for (const auto& [name, element] : value) {
            auto json = encode(element);
            if (!json)
                return tl::unexpected(json.error().within(QLatin1Char('.') + name));
            object.insert(name, *json);
        }
        return QJsonValue(object);
    } else {
        static_assert(RecordType<T>, "not a record, and no leaf that records may hold");
        QJsonObject object;
        Coded<void> outcome;
        std::apply(
            [&](const auto&... member) {
                // Short-circuits at the first member that has no JSON form.
                static_cast<void>(
                    ((outcome = encodeMember(value, member, object)).has_value() && ...));
            },
            T::members());
        if (!outcome)
            return tl::unexpected(outcome.error());
        return QJsonValue(object);
    }
}

template<typename T>
Coded<T> decode(const QJsonValue& json)
{
    if constexpr (ReadsItself<T>) {
        return T::fromJson(json);
    } else if constexpr (std::same_as<T, bool>) {
        return decodeBool(json);
    } else if constexpr (std::same_as<T, QString>) {
        return decodeText(json);
    } else if constexpr (std::integral<T>) {
        using Limits = std::numeric_limits<T>;
        return static_cast<T>(TRY(decodeInteger(json, Limits::min(), Limits::max())));
    } else if constexpr (std::floating_point<T>) {
        const auto number = static_cast<T>(TRY(decodeNumber(json)));
        if (!std::isfinite(number))
            return tl::unexpected(CodingError{{}, QStringLiteral("out of range")});
        return number;
    } else if constexpr (std::same_as<T, FileUrl>) {
        return decodeFileUrl(json);
    } else if constexpr (std::same_as<T, QDateTime>) {
        return decodeDate(json);
    } else if constexpr (std::same_as<T, QUuid>) {
        return decodeUuid(json);
    } else if constexpr (NamedEnum<T>) {
        static constexpr auto names = enumNames(T{});
        return static_cast<T>(TRY(decodeCase(json, names.data(), names.size())));
    } else if constexpr (isList<T>) {
        return decodeList<typename T::value_type>(json);
    } else if constexpr (isPair<T>) {
        auto bounds = TRY(decodeList<typename T::first_type>(json));
        if (bounds.size() != 2)
            return tl::unexpected(CodingError{{}, QStringLiteral("expected two elements")});
        return T{bounds[0], bounds[1]};
    } else if constexpr (isMap<T>) {
        if (!json.isObject())
            return wrongType("an object", json);
        const QJsonObject object = json.toObject();
        T map;
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            auto decoded = decode<typename T::mapped_type>(entry.value());
            if (!decoded)
                return tl::unexpected(decoded.error().within(QLatin1Char('.') + entry.key()));
            map.emplace(entry.key(), *std::move(decoded));
        }
        return map;
    } else {
        static_assert(RecordType<T>, "not a record, and no leaf that records may hold");
        if (!json.isObject())
            return wrongType("an object", json);
        const QJsonObject object = json.toObject();
        T record{};
        Coded<void> outcome;
        std::apply(
            [&](const auto&... member) {
                static_cast<void>(
                    ((outcome = decodeMember(record, member, object)).has_value() && ...));
            },
            T::members());
        if (!outcome)
            return tl::unexpected(outcome.error());
        return record;
    }
}

} // namespace RecordCoding
} // namespace vantroque
