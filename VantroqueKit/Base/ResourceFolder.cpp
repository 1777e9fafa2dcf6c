#include "Base/ResourceFolder.h"

#include <system_error>

namespace vantroque::ResourceFolder {

namespace fs = std::filesystem;

fs::path executableFolder()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

std::optional<fs::path> path()
{
    std::error_code error;
    fs::path folder = executableFolder().parent_path() / "share" / "vantroque";
    if (!fs::is_directory(folder, error))
        return std::nullopt;
    return folder;
}

} // namespace vantroque::ResourceFolder
