#pragma once

#include "Base/RecordCoding.h"

#include <QUuid>

#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <type_traits>
#include <typeinfo>

namespace vantroque {

using namespace Qt::StringLiterals;

/// JSON Schemas (draft 2020-12) of what `RecordCoding::encode` makes of records: one under "$defs"
/// for each record and enumeration that was met, by its name in the code.
class RecordSchemas {
public:
    /// What stands where a value of that type is.
    template<typename T>
    QJsonObject of();
    const QJsonObject& definitions() const { return m_definitions; }

private:
    template<typename T>
    static QString name();
    template<typename T>
    QJsonObject record();
    template<typename T>
    static QJsonObject cases();
    static QJsonObject text(const QString& format)
    {
        return {{u"type"_s, u"string"_s}, {u"format"_s, format}};
    }
    QJsonObject m_definitions;
};

template<typename T>
QJsonObject RecordSchemas::of()
{
    if constexpr (std::same_as<T, bool>) {
        return {{u"type"_s, u"boolean"_s}};
    } else if constexpr (std::same_as<T, QString>) {
        return {{u"type"_s, u"string"_s}};
    } else if constexpr (std::integral<T>) {
        return {{u"type"_s, u"integer"_s}};
    } else if constexpr (std::floating_point<T>) {
        return {{u"type"_s, u"number"_s}};
    } else if constexpr (std::same_as<T, FileUrl>) {
        return text(u"uri"_s);
    } else if constexpr (std::same_as<T, QDateTime>) {
        return text(u"date-time"_s);
    } else if constexpr (std::same_as<T, QUuid>) {
        return text(u"uuid"_s);
    } else if constexpr (RecordCoding::isList<T>) {
        return {{u"type"_s, u"array"_s}, {u"items"_s, of<typename T::value_type>()}};
    } else if constexpr (RecordCoding::isPair<T>) {
        return {{u"type"_s, u"array"_s},
                {u"items"_s, of<typename T::first_type>()},
                {u"minItems"_s, 2},
                {u"maxItems"_s, 2}};
    } else if constexpr (RecordCoding::isMap<T>) {
        return {{u"type"_s, u"object"_s},
                {u"additionalProperties"_s, of<typename T::mapped_type>()}};
    } else {
        const QString name = RecordSchemas::name<T>();
        if (!m_definitions.contains(name)) {
            if constexpr (NamedEnum<T>)
                m_definitions.insert(name, cases<T>());
            else
                m_definitions.insert(name, record<T>());
        }
        return {{u"$ref"_s, u"#/$defs/"_s + name}};
    }
}

template<typename T>
QString RecordSchemas::name()
{
    const std::unique_ptr<char, decltype(&std::free)> whole(
        abi::__cxa_demangle(typeid(T).name(), nullptr, nullptr, nullptr), &std::free);
    return QString::fromLatin1(whole.get()).remove(u"vantroque::"_s).replace(u"::"_s, u"."_s);
}

template<typename T>
QJsonObject RecordSchemas::record()
{
    QJsonObject properties;
    QJsonArray required;
    const auto add = [&]<typename Value>(const Member<T, Value>& member) {
        const QString key = RecordCoding::key(member.name);
        if constexpr (RecordCoding::isOptional<Value>) {
            properties.insert(key, of<typename Value::value_type>());
        } else if constexpr (RecordCoding::isShared<Value>) {
            properties.insert(key, of<std::remove_const_t<typename Value::element_type>>());
        } else {
            properties.insert(key, of<Value>());
            required.append(key);
        }
    };
    std::apply([&](const auto&... member) { (add(member), ...); }, T::members());
    QJsonObject schema{{u"type"_s, u"object"_s}, {u"properties"_s, properties}};
    if (!required.isEmpty())
        schema.insert(u"required"_s, required);
    return schema;
}

template<typename T>
QJsonObject RecordSchemas::cases()
{
    QJsonArray names;
    for (const std::string_view name : enumNames(T{}))
        names.append(RecordCoding::key(name));
    return {{u"enum"_s, names}};
}

} // namespace vantroque
