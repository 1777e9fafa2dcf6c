#pragma once

// Plain value records name their members once, beside the declaration. Coding (RecordCoding.h),
// equality and the paths in reading errors all come from that one list.

#include <array>
#include <string_view>
#include <tuple>

namespace vantroque {

/// One entry of a record's member list.
template<typename Record, typename Value>
struct Member {
    std::string_view name;
    Value Record::*pointer;
};

template<typename Record, typename Value>
constexpr Member<Record, Value> member(std::string_view name, Value Record::*pointer)
{
    return {name, pointer};
}

template<typename T>
concept RecordType = requires
{
    T::members();
};

template<typename T>
concept NamedEnum = requires(T value)
{
    enumNames(value);
};

} // namespace vantroque

// Applies `macro(argument, x)` to up to 340 arguments.
#define VANTROQUE_PARENTHESES ()
#define VANTROQUE_EXPAND(...)                                                                      \
    VANTROQUE_EXPAND3(VANTROQUE_EXPAND3(VANTROQUE_EXPAND3(VANTROQUE_EXPAND3(__VA_ARGS__))))
#define VANTROQUE_EXPAND3(...)                                                                     \
    VANTROQUE_EXPAND2(VANTROQUE_EXPAND2(VANTROQUE_EXPAND2(VANTROQUE_EXPAND2(__VA_ARGS__))))
#define VANTROQUE_EXPAND2(...)                                                                     \
    VANTROQUE_EXPAND1(VANTROQUE_EXPAND1(VANTROQUE_EXPAND1(VANTROQUE_EXPAND1(__VA_ARGS__))))
#define VANTROQUE_EXPAND1(...) __VA_ARGS__
#define VANTROQUE_FOR_EACH(macro, argument, ...)                                                   \
    __VA_OPT__(VANTROQUE_EXPAND(VANTROQUE_FOR_EACH_STEP(macro, argument, __VA_ARGS__)))
#define VANTROQUE_FOR_EACH_STEP(macro, argument, first, ...)                                       \
    macro(argument, first)                                                                         \
        __VA_OPT__(, VANTROQUE_FOR_EACH_AGAIN VANTROQUE_PARENTHESES(macro, argument, __VA_ARGS__))
#define VANTROQUE_FOR_EACH_AGAIN() VANTROQUE_FOR_EACH_STEP

#define VANTROQUE_MEMBER(Type, name) ::vantroque::member(#name, &Type::name)

/// Stands last inside a record: `VANTROQUE_RECORD(CropRect, width, height, x, y)`. The list is a
/// template, so that only whoever codes a record pays for compiling it; therefore a record cannot
/// be declared inside a function.
#define VANTROQUE_RECORD(Type, ...)                                                                \
    template<typename Self = Type>                                                                 \
    static constexpr auto members()                                                                \
    {                                                                                              \
        return std::make_tuple(VANTROQUE_FOR_EACH(VANTROQUE_MEMBER, Self, __VA_ARGS__));           \
    }                                                                                              \
    bool operator==(const Type&) const = default;

#define VANTROQUE_CASE_NAME(Type, name) std::string_view(#name)

/// Names the cases of an enumeration, in the order of their declaration and without gaps. Stands
/// after the enumeration, in its namespace.
#define VANTROQUE_ENUM_NAMES(Type, ...)                                                            \
    constexpr auto enumNames(Type)                                                                 \
    {                                                                                              \
        return std::array{VANTROQUE_FOR_EACH(VANTROQUE_CASE_NAME, Type, __VA_ARGS__)};             \
    }                                                                                              \
    static_assert(                                                                                 \
        [] {                                                                                       \
            using enum Type;                                                                       \
            constexpr std::array cases{__VA_ARGS__};                                               \
            for (std::size_t i = 0; i < cases.size(); ++i)                                         \
                if (static_cast<std::size_t>(cases[i]) != i)                                       \
                    return false;                                                                  \
            return true;                                                                           \
        }(),                                                                                       \
        "the names must follow the order of the cases");

namespace vantroque {

/// The case name by which an enumeration is stored and printed.
template<NamedEnum T>
constexpr std::string_view enumName(T value)
{
    return enumNames(value)[static_cast<std::size_t>(value)];
}

} // namespace vantroque
