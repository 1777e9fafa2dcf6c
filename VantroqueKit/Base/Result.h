#pragma once

#include <QString>

#include <tl/expected.hpp>

#include <type_traits>
#include <utility>

namespace vantroque {

/// What went wrong, in words for the operator. Shown unchanged.
struct Error {
    QString description;
    bool operator==(const Error&) const = default;
};

/// A value or the reason why there is none. Ignoring one is a compiler error.
template<typename T, typename E = Error>
class [[nodiscard]] Result : public tl::expected<T, E> {
public:
    using tl::expected<T, E>::expected;
};

/// Makes the failed state of any `Result` whose error type takes `description`.
inline tl::unexpected<Error> failure(QString description)
{
    return tl::unexpected<Error>(Error{std::move(description)});
}

namespace detail {
template<typename T, typename E>
T taken(Result<T, E>&& result)
{
    if constexpr (!std::is_void_v<T>)
        return *std::move(result);
}
} // namespace detail

} // namespace vantroque

/// The value of `expression`, or an early return of its error. A statement expression, which g++
/// and clang both have, so that the value can be used in place.
#define TRY(...)                                                                                   \
    __extension__({                                                                                \
        _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wshadow\"");             \
        auto tryResult = (__VA_ARGS__);                                                            \
        _Pragma("GCC diagnostic pop");                                                             \
        if (!tryResult.has_value())                                                                \
            return tl::unexpected(std::move(tryResult).error());                                   \
        ::vantroque::detail::taken(std::move(tryResult));                                          \
    })
