// prisoner DEED [PATH [OTHER]]: one thing that no decoder does. Ends with 0 when it was done, and
// otherwise with the error number.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sched.h>
#include <string_view>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

int answer(long result)
{
    return result >= 0 ? EXIT_SUCCESS : errno;
}

/// Asks for the number of this process by the table of calls for 32 bits.
int callOfAnotherTable()
{
#if defined(__x86_64__)
    long process = 20;
    asm volatile("int $0x80" : "+a"(process) : : "memory");
    return process > 0 ? EXIT_SUCCESS : ENOSYS;
#else
    return ENOSYS;
#endif
}

/// Once whoever has opened the gate, a pipe, for writing has closed it again.
int readAfter(const char* path, const char* gate)
{
    const int end = ::open(gate, O_RDONLY);
    char byte = 0;
    if (end < 0 || ::read(end, &byte, 1) < 0)
        return errno;
    return answer(::open(path, O_RDONLY));
}

int list(const char* folder)
{
    return ::opendir(folder) != nullptr ? EXIT_SUCCESS : errno;
}

int speakTo(const char* path)
{
    const int end = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (end < 0)
        return errno;
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    return answer(::connect(end, reinterpret_cast<sockaddr*>(&address), sizeof address));
}

int run(const char* program)
{
    ::execl(program, program, static_cast<char*>(nullptr));
    return errno;
}

int dateBack(const char* path)
{
    const timeval times[2] = {{1, 0}, {1, 0}};
    return answer(::utimes(path, times));
}

} // namespace

int main(int argc, char** argv)
{
    const std::string_view deed = argc > 1 ? argv[1] : "";
    const char* path = argc > 2 ? argv[2] : "";
    const char* other = argc > 3 ? argv[3] : "";
    if (deed == "read")
        return answer(::open(path, O_RDONLY));
    if (deed == "read-after")
        return readAfter(path, other);
    if (deed == "write")
        return answer(::open(path, O_WRONLY | O_CREAT, 0644));
    if (deed == "append")
        return answer(::open(path, O_WRONLY | O_APPEND));
    if (deed == "list")
        return list(path);
    if (deed == "run")
        return run(path);
    if (deed == "remove")
        return answer(::unlink(path));
    if (deed == "link")
        return answer(::symlink(path, other));
    if (deed == "name") // one more
        return answer(::link(path, other));
    if (deed == "move")
        return answer(std::rename(path, other));
    if (deed == "cut") // by its name
        return answer(::truncate(path, 0));
    if (deed == "mode")
        return answer(::chmod(path, 0600));
    if (deed == "times")
        return dateBack(path);
    if (deed == "attribute")
        return answer(::setxattr(path, "user.vantroque", "x", 1, 0));
    if (deed == "socket")
        return answer(::socket(AF_INET, SOCK_DGRAM, 0));
    if (deed == "speak")
        return speakTo(path);
    if (deed == "namespace")
        return answer(::unshare(CLONE_NEWUSER));
    if (deed == "trace")
        return answer(::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr));
    if (deed == "signal")
        return answer(::kill(std::atoi(path), 0));
    if (deed == "table")
        return callOfAnotherTable();
    return 255;
}
