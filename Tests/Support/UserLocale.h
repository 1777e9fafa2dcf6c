#pragma once

#include <gtest/gtest.h>
#include <unicode/locid.h>

namespace vantroque {

/// The user's locale, in whose language languages have their names, until the end of the scope.
class UserLocale {
public:
    explicit UserLocale(const char* name) { set(icu::Locale(name)); }
    ~UserLocale() { set(m_before); }
    UserLocale(const UserLocale&) = delete;
    UserLocale& operator=(const UserLocale&) = delete;

private:
    static void set(const icu::Locale& locale)
    {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(locale, status);
        EXPECT_TRUE(U_SUCCESS(status));
    }

    const icu::Locale m_before = icu::Locale::getDefault();
};

} // namespace vantroque
