// The list of files that a window left, with all that was measured and said of each.

#include "Analysis/Analyzer.h"
#include "Check/ProblemsText.h"
#include "Check/TextRenderer.h"
#include "Export/MarkerExport.h"
#include "Export/MeasurementCSV.h"
#include "Fuzz/Target.h"
#include "Profiles/ProfileStore.h"
#include "Review/WorkspaceStore.h"

using namespace vantroque;

namespace {

const std::vector<Profile>& profiles()
{
    static const std::vector<Profile> all = [] {
        auto read = ProfileStore::loadFrom(FUZZ_PROFILES);
        Fuzz::hold(read.has_value(), "the profiles can be read");
        return *std::move(read);
    }();
    return all;
}

void tell(const FileReport& report)
{
    TextRenderer::render(report, true);
    ProblemsText::render(report, profiles());
    MarkerExport::markers({.report = &report}, 25);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Fuzz::FileInMemory file(Fuzz::bytesOf(data, size));
    const auto workspace = WorkspaceStore::load(file.path());
    if (!workspace)
        return 0;
    for (const WorkspaceFile& entry : workspace->files) {
        if (entry.report)
            tell(*entry.report);
        if (!entry.media)
            continue;
        MeasurementCSV::line(*entry.media, {}, {});
        tell(Analyzer::report(*entry.media, profiles()));
        Analyzer::needsAdditionalSignalPass(*entry.media, profiles());
    }
    return 0;
}
