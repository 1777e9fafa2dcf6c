#include "Base/ResourceFolder.h"
#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"
#include "Tools/FFTool.h"

#include <unistd.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

/// Of this process alone: tests that run beside it put tools into the same build tree.
const std::string toolName = "vantroque-test-tool-" + std::to_string(getpid());

/// No tool is chosen, and the search path holds one folder of the test before the system's.
class FFToolFind : public testing::Test {
protected:
    static std::string found(const std::string& name = toolName)
    {
        const auto tool = FFTool::find(name);
        return tool ? tool->native() : tool.error().description().toStdString();
    }
    static std::string notFound(const std::string& name = toolName)
    {
        return name + " not found. Install ffmpeg (brew install ffmpeg) or bundle it with the app.";
    }
    std::string addTool(const std::string& path) const
    {
        return m_folder.writeScript(path, "#!/bin/sh\n").native();
    }
    /// Makes the search on the path answer with this.
    void answerWith(const QByteArray& script) const
    {
        m_folder.writeScript("path/which", "#!/bin/sh\n" + script + '\n');
    }

    const TestFolder m_folder;
    const ScopedVariable m_chosen{"VANTROQUE_FFMPEG_DIR"};
    const ScopedVariable m_path{"PATH", (m_folder / "path").native() + ":/usr/bin:/bin"};
};

TEST_F(FFToolFind, TheChosenFolderComesFirst)
{
    const std::string tool = addTool("chosen/" + toolName);
    addTool("path/" + toolName);
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR", m_folder / "chosen");
    EXPECT_EQ(found(), tool);
}

TEST_F(FFToolFind, AnEmptyChoiceIsNone)
{
    const std::string tool = addTool("path/" + toolName);
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR", "");
    EXPECT_EQ(found(), tool);
}

TEST_F(FFToolFind, AChosenFolderWithoutTheToolIsPassedOver)
{
    const std::string tool = addTool("path/" + toolName);
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR", m_folder / "chosen");
    EXPECT_EQ(found(), tool);
}

TEST_F(FFToolFind, WhatCannotBeExecutedIsPassedOver)
{
    const std::string tool = addTool("path/" + toolName);
    m_folder.write("file/" + toolName, "#!/bin/sh\n");
    fs::create_directories(m_folder / ("folder/" + toolName));
    for (const char* choice : {"file", "folder"}) {
        const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR", m_folder / choice);
        EXPECT_EQ(found(), tool) << choice;
    }
}

TEST_F(FFToolFind, ALinkToAToolIsATool)
{
    fs::create_directory(m_folder / "chosen");
    fs::create_symlink(addTool("real"), m_folder / ("chosen/" + toolName));
    const ScopedVariable chosen("VANTROQUE_FFMPEG_DIR", m_folder / "chosen");
    EXPECT_EQ(found(), (m_folder / ("chosen/" + toolName)).native());
}

TEST_F(FFToolFind, ABundledToolComesBeforeTheSearchPath)
{
    const auto resources = ResourceFolder::path();
    ASSERT_TRUE(resources);
    addTool("path/" + toolName);
    const fs::path bundled = *resources / "bin" / toolName;
    std::error_code error;
    fs::create_directories(bundled.parent_path(), error);
    if (error)
        GTEST_SKIP() << "the build tree cannot be written";
    fs::copy_file("/bin/true", bundled, fs::copy_options::overwrite_existing);
    EXPECT_EQ(found(), bundled.native());
    fs::remove(bundled);
    fs::remove(bundled.parent_path(), error); // Unless other tools are there.
}

TEST_F(FFToolFind, AToolThatIsNowhereIsNotFound)
{
    EXPECT_EQ(found(), notFound());
    EXPECT_EQ(FFTool::find(toolName).error().kind, FFToolError::Kind::notFound);
}

TEST_F(FFToolFind, NothingIsRemembered)
{
    EXPECT_EQ(found(), notFound());
    const std::string tool = addTool("path/" + toolName);
    EXPECT_EQ(found(), tool);
    fs::remove(tool);
    EXPECT_EQ(found(), notFound());
}

TEST_F(FFToolFind, ASystemWithoutASearchCommandHasNoTool)
{
    const ScopedVariable path("PATH", m_folder / "none");
    EXPECT_EQ(found(), notFound());
}

TEST_F(FFToolFind, TheAnswerOfTheSearchIsTrimmedAndTaken)
{
    answerWith("printf ' \\n/some where/\\303\\251 \\n\\n'");
    EXPECT_EQ(found(), "/some where/\xC3\xA9");
}

TEST_F(FFToolFind, AnEmptyOrUndecodableAnswerIsNone)
{
    answerWith("printf ' \\n'");
    EXPECT_EQ(found(), notFound());
    answerWith("printf '/bin/\\377'");
    EXPECT_EQ(found(), notFound());
    answerWith("echo /bin/true; exit 1");
    EXPECT_EQ(found(), notFound());
}

TEST_F(FFToolFind, BothToolsAreOnThisSystem)
{
    for (const std::string name : {"ffmpeg", "ffprobe"})
        EXPECT_EQ(fs::path(found(name)).filename(), name);
}

} // namespace
} // namespace vantroque
