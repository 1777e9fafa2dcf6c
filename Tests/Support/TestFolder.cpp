#include "Support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vantroque {

namespace fs = std::filesystem;

TestFolder::TestFolder()
{
    std::string pattern = (fs::temp_directory_path() / "vqtest-XXXXXX").native();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for the test");
    m_path = pattern;
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

fs::path TestFolder::write(const std::string& name, const QByteArray& bytes) const
{
    const fs::path file = m_path / name;
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.constData(), bytes.size());
    out.close();
    EXPECT_TRUE(out) << file;
    return file;
}

fs::path TestFolder::writeScript(const std::string& name, const QByteArray& text) const
{
    const fs::path file = write(name, text);
    fs::permissions(file, fs::perms::owner_all);
    return file;
}

std::vector<std::string> TestFolder::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_path))
        names.push_back(entry.path().filename().native());
    std::ranges::sort(names);
    return names;
}

QByteArray contents(const fs::path& file)
{
    const std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return QByteArray::fromStdString(bytes.str());
}

} // namespace vantroque
