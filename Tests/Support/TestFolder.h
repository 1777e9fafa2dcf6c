#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

// GoogleTest prints values of the kit in its own words.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace vantroque {

/// A new empty folder that is gone when the test ends.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::string& name) const { return m_path / name; }

    /// Writes a file, with its parent folders, and returns its path.
    std::filesystem::path write(const std::string& name, const QByteArray& bytes) const;
    /// As `write`, and executable: a stand-in for a tool.
    std::filesystem::path writeScript(const std::string& name, const QByteArray& text) const;
    /// The names of the direct entries, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path m_path;
};

QByteArray contents(const std::filesystem::path& file);

} // namespace vantroque
