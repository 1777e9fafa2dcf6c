#pragma once

#include <QByteArray>

#include <cstdlib>
#include <filesystem>

namespace vantroque {

/// An environment variable that has another value, or none, until the end of the scope.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::filesystem::path& value) : ScopedVariable(name)
    {
        ::setenv(name, value.c_str(), 1);
    }
    /// Without the variable.
    explicit ScopedVariable(const char* name)
        : m_name(name), m_wasSet(qEnvironmentVariableIsSet(name)), m_before(qgetenv(name))
    {
        ::unsetenv(name);
    }
    ~ScopedVariable()
    {
        if (m_wasSet)
            ::setenv(m_name, m_before.constData(), 1);
        else
            ::unsetenv(m_name);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* m_name;
    bool m_wasSet;
    QByteArray m_before;
};

} // namespace vantroque
