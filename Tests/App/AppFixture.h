#pragma once

#include "Base/ScopedVariable.h"
#include "Review/WorkspaceStore.h"
#include "Support/Clips.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

namespace vantroque {

/// The program with a window as people start it, for a user of the test's own. What it shows is the
/// matter of Tests/Views; here it is seen from outside: its processes, its files, its name.
class AppTest : public testing::Test {
protected:
    using Path = std::filesystem::path;

    AppTest();
    ~AppTest() override;

    /// Starts it, and does not wait.
    Program start(const std::vector<Path>& files, ProgramOptions options = {}) const;
    /// Starts it, and waits until it can be called.
    Program open(const std::vector<Path>& files = {}, ProgramOptions options = {}) const;
    /// A file of the test's own with the content of a clip.
    Path file(const std::string& name, const Path& clip = Clips::plain()) const;
    /// A file whose analysis takes long.
    Path longFile() const;

    // What is stored.

    static std::vector<WorkspaceFile> stored();
    static std::vector<std::string> storedNames();
    static bool soonStored(const std::vector<std::string>& names);
    /// So many files have their report.
    static bool soonAnalysed(std::size_t count);

    // What runs.

    /// The analysis of the file decodes, and its frames are read for text.
    bool soonDecodes(const Path& file) const;
    /// No tool of the program is left, and no scratch.
    testing::AssertionResult leftNothing(const Path& file) const;

    TestFolder m_home;

private:
    std::vector<Path> scratch() const;

    ScopedVariable m_data{"XDG_DATA_HOME", m_home / "data"};
    ScopedVariable m_config{"XDG_CONFIG_HOME", m_home / "config"};
    ScopedVariable m_runtime{"XDG_RUNTIME_DIR", m_home / "run"};
    ScopedVariable m_temporary{"TMPDIR", m_home / "tmp"};
    int m_argumentCount = 1;
    std::string m_name = "AppTests";
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    QCoreApplication m_application{m_argumentCount, m_arguments.data()};
};

} // namespace vantroque
