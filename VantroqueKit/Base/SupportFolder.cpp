#include "Base/SupportFolder.h"

#include <cstdlib>
#include <system_error>

namespace vantroque::SupportFolder {

namespace fs = std::filesystem;

namespace {

/// An absolute path in an environment variable; the XDG base directory specification wants
/// relative ones ignored. Read here and not by QStandardPaths, which does not keep a name's bytes.
fs::path folderIn(const char* variable)
{
    const char* value = std::getenv(variable);
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

} // namespace

fs::path path()
{
    if (const fs::path data = folderIn("XDG_DATA_HOME"); !data.empty())
        return data / "Vantroque";
    if (const fs::path home = folderIn("HOME"); !home.empty())
        return home / ".local/share/Vantroque";
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    return (error ? fs::path("/tmp") : temporary) / "Vantroque";
}

} // namespace vantroque::SupportFolder
