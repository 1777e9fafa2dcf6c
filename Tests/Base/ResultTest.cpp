#include "Base/Result.h"

#include "Support/TestFolder.h"

#include <memory>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

/// An error of its own kind that also stands for the general one.
struct PositionError {
    int position = 0;
    operator Error() const { return {u"at %1"_s.arg(position)}; }
};

Result<int> half(int number)
{
    if (number % 2 != 0)
        return failure(u"odd"_s);
    return number / 2;
}

Result<int> quarter(int number)
{
    return TRY(half(TRY(half(number))));
}

Result<void> check(int number)
{
    TRY(half(number));
    return {};
}

Result<QString> checkedText(int number)
{
    TRY(check(number));
    return u"even"_s;
}

Result<int> positioned()
{
    const auto failing = []() -> Result<int, PositionError> {
        return tl::unexpected(PositionError{7});
    };
    return TRY(failing());
}

Result<std::unique_ptr<int>> owned(int number)
{
    return std::make_unique<int>(TRY(half(number)));
}

Result<int> unwrapped(int number)
{
    return *TRY(owned(number));
}

TEST(Result, AValuePassesThroughATry)
{
    EXPECT_EQ(quarter(8).value(), 2);
    EXPECT_EQ(checkedText(2).value(), u"even"_s);
    EXPECT_EQ(unwrapped(10).value(), 5);
}

TEST(Result, AnErrorReturnsEarlyAndUnchanged)
{
    EXPECT_EQ(quarter(3).error(), Error{u"odd"_s});
    EXPECT_EQ(quarter(6).error(), Error{u"odd"_s});
    EXPECT_EQ(checkedText(1).error(), Error{u"odd"_s});
    EXPECT_EQ(unwrapped(1).error(), Error{u"odd"_s});
}

TEST(Result, AnErrorOfAnotherKindIsTurnedIntoWords)
{
    EXPECT_EQ(positioned().error(), Error{u"at 7"_s});
}

} // namespace
} // namespace vantroque
