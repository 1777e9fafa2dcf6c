#pragma once

#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"
#include "Tools/ProcessTable.h"

#include <gmock/gmock.h>

namespace vantroque {

/// Gives the code under test a temporary folder of its own, and expects when the scope ends that
/// nothing is left in it and that no process is left of it.
class CleanRun {
public:
    CleanRun() : m_variable("TMPDIR", m_folder.path()) {}
    ~CleanRun()
    {
        EXPECT_THAT(m_folder.names(), testing::IsEmpty());
        EXPECT_FALSE(hasChildren());
        EXPECT_THAT(processesNaming(m_folder.path().native()), testing::IsEmpty());
    }
    CleanRun(const CleanRun&) = delete;
    CleanRun& operator=(const CleanRun&) = delete;

private:
    TestFolder m_folder;
    ScopedVariable m_variable;
};

} // namespace vantroque
