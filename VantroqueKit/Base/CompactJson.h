#pragma once

#include "Base/RecordCoding.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>

/// Records to JSON text without blanks and line breaks, keys in alphabetical order: what
/// `RecordCoding::encode` and a printer would give, in a fraction of the time for want of the tree
/// of values between. For what is large and written often.
namespace vantroque::CompactJson {

// Leaves, in CompactJson.cpp.
void printText(const QString& text, std::string& out);
void printInteger(std::int64_t value, std::string& out);
Coded<void> printNumber(double value, std::string& out);
Coded<void> printNumber(float value, std::string& out);

template<typename T>
Coded<void> print(const T& value, std::string& out);

/// The places of a record's members in alphabetical order.
template<typename T>
constexpr auto sortedMembers()
{
    constexpr auto names =
        std::apply([](const auto&... member) { return std::array{member.name...}; }, T::members());
    std::array<std::size_t, names.size()> order{};
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t place) { return names[place]; });
    return order;
}

template<typename Record, typename Value>
Coded<void> printMember(const Record& record, const Member<Record, Value>& member, std::string& out)
{
    const Value& value = record.*member.pointer;
    const auto put = [&](const auto& present) -> Coded<void> {
        out.append(out.back() == '{' ? "\"" : ",\"").append(member.name).append("\":");
        auto printed = print(present, out);
        if (!printed)
            return tl::unexpected(
                printed.error().within(QLatin1Char('.') + RecordCoding::key(member.name)));
        return {};
    };
    if constexpr (RecordCoding::isOptional<Value> || RecordCoding::isShared<Value>)
        return value ? put(*value) : Coded<void>{};
    else
        return put(value);
}

template<typename T>
Coded<void> printList(const T& list, std::string& out)
{
    out += '[';
    qsizetype index = 0;
    for (const auto& element : list) {
        if (index > 0)
            out += ',';
        auto printed = print(element, out);
        if (!printed)
            return tl::unexpected(printed.error().within(RecordCoding::indexPath(index)));
        ++index;
    }
    out += ']';
    return {};
}

template<typename T>
Coded<void> printRecord(const T& record, std::string& out)
{
    static constexpr auto order = sortedMembers<T>();
    static constexpr auto members = T::members();
    out += '{';
    Coded<void> outcome;
    const auto printAll = [&]<std::size_t... i>(std::index_sequence<i...>)
    {
        // Short-circuits at the first member that has no JSON form.
        static_cast<void>(
            ((outcome = printMember(record, std::get<order[i]>(members), out)).has_value() && ...));
    };
    printAll(std::make_index_sequence<order.size()>());
    out += '}';
    return outcome;
}

template<typename T>
Coded<void> print(const T& value, std::string& out)
{
    if constexpr (std::same_as<T, bool>) {
        out += value ? "true" : "false";
    } else if constexpr (std::integral<T>) {
        printInteger(value, out);
    } else if constexpr (std::floating_point<T>) {
        return printNumber(value, out);
    } else if constexpr (std::same_as<T, QString>) {
        printText(value, out);
    } else if constexpr (NamedEnum<T>) {
        out.append("\"").append(enumName(value)).append("\"");
    } else if constexpr (RecordCoding::isList<T>) {
        return printList(value, out);
    } else if constexpr (RecordCoding::isPair<T>) {
        return printList(std::array{value.first, value.second}, out);
    } else if constexpr (RecordCoding::isMap<T>) {
        out += '{';
        for (const auto& [name, element] : value) {
            if (out.back() != '{')
                out += ',';
            printText(name, out);
            out += ':';
            auto printed = print(element, out);
            if (!printed)
                return tl::unexpected(printed.error().within(QLatin1Char('.') + name));
        }
        out += '}';
    } else if constexpr (RecordType<T>) {
        return printRecord(value, out);
    } else {
        printText(TRY(RecordCoding::encode(value)).toString(), out);
    }
    return {};
}

/// The whole text of a record; on failure the place of what has no JSON form.
template<typename T>
Coded<std::string> print(const T& record)
{
    std::string text;
    TRY(print(record, text));
    return text;
}

} // namespace vantroque::CompactJson
