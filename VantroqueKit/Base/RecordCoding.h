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
/// Takes the place of `target`; after a failure of all, or a part, of it.
template<typename T>
Coded<void> decodeInto(const QJsonValue& json, T& target);
template<typename T>
Coded<T> decode(const QJsonValue& json)
{
    T value{};
    TRY(decodeInto(json, value));
    return value;
}

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

/// What becomes of one member: false, and why in `outcome`, when it fails. Not one of the values
/// that could fail, since records have hundreds of members and each of those would be code.
bool put(Coded<QJsonValue> value, std::string_view name, QJsonObject& object, Coded<void>& outcome);
bool take(Coded<void> member, std::string_view name, Coded<void>& outcome);
bool missing(std::string_view name, Coded<void>& outcome);

template<typename Value>
bool encodeMember(const Value& value, std::string_view name, QJsonObject& object,
                  Coded<void>& outcome)
{
    if constexpr (isOptional<Value> || isShared<Value>)
        return !value || put(encode(*value), name, object, outcome);
    else
        return put(encode(value), name, object, outcome);
}

template<typename Value>
bool decodeMember(Value& target, std::string_view name, const QJsonObject& object,
                  Coded<void>& outcome)
{
    const QJsonValue json = object.value(latin(name));
    if constexpr (isOptional<Value> || isShared<Value>) {
        if (json.isUndefined() || json.isNull())
            return true;
    }
    if constexpr (isOptional<Value>) {
        return take(decodeInto(json, target.emplace()), name, outcome);
    } else if constexpr (isShared<Value>) {
        auto value = std::make_shared<std::remove_const_t<typename Value::element_type>>();
        target = value;
        return take(decodeInto(json, *value), name, outcome);
    } else {
        if (json.isUndefined())
            return missing(name, outcome);
        return take(decodeInto(json, target), name, outcome);
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
Coded<void> decodeList(const QJsonValue& json, std::vector<T>& list)
{
    if (!json.isArray())
        return wrongType("a list", json);
    const QJsonArray array = json.toArray();
    list.clear(); // a record may begin with some
    list.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue& element : array) {
        T value{};
        auto decoded = decodeInto(element, value);
        if (!decoded)
            return tl::unexpected(
                decoded.error().within(indexPath(static_cast<qsizetype>(list.size()))));
        list.push_back(std::move(value));
    }
    return {};
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
                    (encodeMember(value.*member.pointer, member.name, object, outcome) && ...));
            },
            T::members());
        if (!outcome)
            return tl::unexpected(outcome.error());
        return QJsonValue(object);
    }
}

template<typename T>
Coded<void> decodeInto(const QJsonValue& json, T& target)
{
    if constexpr (ReadsItself<T>) {
        target = T::fromJson(json);
    } else if constexpr (std::same_as<T, bool>) {
        target = TRY(decodeBool(json));
    } else if constexpr (std::same_as<T, QString>) {
        target = TRY(decodeText(json));
    } else if constexpr (std::integral<T>) {
        using Limits = std::numeric_limits<T>;
        target = static_cast<T>(TRY(decodeInteger(json, Limits::min(), Limits::max())));
    } else if constexpr (std::floating_point<T>) {
        target = static_cast<T>(TRY(decodeNumber(json)));
        if (!std::isfinite(target))
            return tl::unexpected(CodingError{{}, QStringLiteral("out of range")});
    } else if constexpr (std::same_as<T, FileUrl>) {
        target = TRY(decodeFileUrl(json));
    } else if constexpr (std::same_as<T, QDateTime>) {
        target = TRY(decodeDate(json));
    } else if constexpr (std::same_as<T, QUuid>) {
        target = TRY(decodeUuid(json));
    } else if constexpr (NamedEnum<T>) {
        static constexpr auto names = enumNames(T{});
        target = static_cast<T>(TRY(decodeCase(json, names.data(), names.size())));
    } else if constexpr (isList<T>) {
        return decodeList(json, target);
    } else if constexpr (isPair<T>) {
        std::vector<typename T::first_type> bounds;
        TRY(decodeList(json, bounds));
        if (bounds.size() != 2)
            return tl::unexpected(CodingError{{}, QStringLiteral("expected two elements")});
        target = T{bounds[0], bounds[1]};
    } else if constexpr (isMap<T>) {
        if (!json.isObject())
            return wrongType("an object", json);
        const QJsonObject object = json.toObject();
        target.clear();
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            auto decoded = decodeInto(entry.value(), target[entry.key()]);
            if (!decoded)
                return tl::unexpected(decoded.error().within(QLatin1Char('.') + entry.key()));
        }
    } else {
        static_assert(RecordType<T>, "not a record, and no leaf that records may hold");
        if (!json.isObject())
            return wrongType("an object", json);
        const QJsonObject object = json.toObject();
        Coded<void> outcome;
        std::apply(
            [&](const auto&... member) {
                static_cast<void>(
                    (decodeMember(target.*member.pointer, member.name, object, outcome) && ...));
            },
            T::members());
        return outcome;
    }
    return {};
}

} // namespace RecordCoding
} // namespace vantroque
