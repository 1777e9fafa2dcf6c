#include "VantroqueCLI/HeldFilm.h"

#include <cerrno>
#include <fcntl.h>

namespace vantroque {

Result<HeldFilm, int> HeldFilm::hold(const std::filesystem::path& path)
{
    HeldFilm held;
    held.m_file =
        FileDescriptor(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!held.m_file.isOpen())
        return tl::unexpected(errno);
    if (::fcntl(held.m_file.get(), F_SETLEASE, F_RDLCK) != 0 && errno == EAGAIN)
        return tl::unexpected(EAGAIN);
    if (::fstat(held.m_file.get(), &held.m_status) != 0)
        return tl::unexpected(errno);
    if (!S_ISREG(held.m_status.st_mode))
        return tl::unexpected(ELOOP);
    return held;
}

} // namespace vantroque
