#include "VantroqueCLI/OutputTarget.h"

#include "Base/FileUrl.h"
#include "Base/Files.h"
#include "Base/Numbers.h"
#include "VantroqueCLI/Output.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Of films and sound. Pictures are not among them: a still may be taken again.
bool isCalledLikeMedia(const fs::path& path)
{
    static const std::set<QString> extensions{
        u"3g2"_s, u"3gp"_s, u"aac"_s,  u"ac3"_s,  u"aif"_s,  u"aiff"_s, u"asf"_s,  u"avi"_s,
        u"bwf"_s, u"caf"_s, u"divx"_s, u"dv"_s,   u"eac3"_s, u"f4v"_s,  u"flac"_s, u"flv"_s,
        u"gxf"_s, u"m1v"_s, u"m2t"_s,  u"m2ts"_s, u"m2v"_s,  u"m4a"_s,  u"m4v"_s,  u"mj2"_s,
        u"mka"_s, u"mkv"_s, u"mov"_s,  u"mp2"_s,  u"mp3"_s,  u"mp4"_s,  u"mpeg"_s, u"mpg"_s,
        u"mts"_s, u"mxf"_s, u"oga"_s,  u"ogg"_s,  u"ogv"_s,  u"opus"_s, u"rm"_s,   u"ts"_s,
        u"vob"_s, u"w64"_s, u"wav"_s,  u"webm"_s, u"wma"_s,  u"wmv"_s,  u"y4m"_s,
    };
    return extensions.contains(FileUrl::fromPath(path).extension().toLower());
}

/// The descriptor of ours that a name stands for.
std::optional<int> descriptorOf(const std::string& name)
{
    if (name.empty() || name == "/dev/stdout")
        return STDOUT_FILENO;
    if (name == "/dev/stderr")
        return STDERR_FILENO;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"})
        if (name.starts_with(folder))
            if (const auto number =
                    Numbers::toInt(QString::fromStdString(name.substr(folder.size())));
                number && *number >= 0 && *number <= INT32_MAX)
                return static_cast<int>(*number);
    return std::nullopt;
}

/// What a name leads to. Nothing need be there: a link may lead to nowhere as yet.
Result<fs::path, int> pastLinks(fs::path path)
{
    constexpr int mostLinks = 40; // as many as the kernel follows
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / next; // an absolute one stands alone
    }
    return tl::unexpected(ELOOP);
}

/// Whether two names mean the same file, or would if it were there.
bool areSame(const fs::path& a, const fs::path& b)
{
    struct stat first {};
    struct stat second {};
    const bool hasFirst = ::stat(a.c_str(), &first) == 0;
    const bool hasSecond = ::stat(b.c_str(), &second) == 0;
    if (hasFirst && hasSecond)
        return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
    std::error_code error;
    return !hasFirst && !hasSecond
           && fs::weakly_canonical(a, error) == fs::weakly_canonical(b, error);
}

/// Why an open descriptor cannot be written: 0 or an error number.
int problemWith(int descriptor)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    if (flags < 0)
        return errno;
    return (flags & O_ACCMODE) == O_RDONLY ? EBADF : 0;
}

/// The kind of what a name leads to; 0 when nothing is there.
mode_t kindOf(const fs::path& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

bool isWrittenThrough(mode_t kind)
{
    return kind == S_IFIFO || kind == S_IFCHR;
}

/// Why a document cannot be put there: 0 or an error number.
int problemWith(const fs::path& target)
{
    const mode_t kind = kindOf(target);
    if (kind == S_IFDIR)
        return EISDIR;
    if (kind == S_IFBLK || kind == S_IFSOCK)
        return ENXIO;
    // Whole files are replaced, which is a change of their folder.
    const fs::path changed = isWrittenThrough(kind)     ? target
                             : target.has_parent_path() ? target.parent_path()
                                                        : fs::path(".");
    return ::access(changed.c_str(), W_OK) == 0 ? 0 : errno;
}

tl::unexpected<Error> failed(const std::string& name, int problem)
{
    return failure(QString::fromStdString(name) + u": "_s + Files::systemMessage(problem));
}

} // namespace

Result<OutputTarget> OutputTarget::of(const Arguments& arguments,
                                      const std::vector<std::string>& inputs)
{
    return of(arguments, inputs, {});
}

Result<OutputTarget> OutputTarget::of(const Arguments& arguments,
                                      const std::vector<std::string>& inputs,
                                      const std::string& otherwise)
{
    OutputTarget target(arguments.value("output", otherwise), inputs, arguments.has("overwrite"));
    if (arguments.has("output") && target.m_name.empty())
        return failure(u"-o needs a name"_s);
    TRY(target.guard());
    return target;
}

Result<OutputTarget> OutputTarget::inFolder(const Arguments& arguments,
                                            const std::vector<std::string>& inputs,
                                            const std::string& name)
{
    const std::string folder = arguments.value("output", {});
    if (folder.empty())
        return failure(u"-o needs a name"_s);
    OutputTarget target(fs::path(folder) / name, inputs, arguments.has("overwrite"));
    TRY(target.guard());
    return target;
}

Result<OutputTarget> OutputTarget::toResume(const std::string& name,
                                            const std::vector<std::string>& inputs)
{
    if (name.empty())
        return failure(u"--resume needs a name"_s);
    constexpr bool overwrites = true; // since it only goes on with what it knows
    OutputTarget target(name, inputs, overwrites);
    TRY(target.guard());
    return target;
}

QString OutputTarget::displayName() const
{
    return m_name.empty() ? u"standard output"_s : QString::fromStdString(m_name);
}

bool OutputTarget::isFile() const
{
    return !descriptorOf(m_name) && !isWrittenThrough(kindOf(m_name));
}

Result<void> OutputTarget::guardOthers() const
{
    const auto descriptor = descriptorOf(m_name);
    const fs::path place = descriptor ? "/proc/self/fd/" + Numbers::wholeText(*descriptor) : m_name;
    const QString name = displayName();
    const bool isRegular = kindOf(place) == S_IFREG;
    for (const std::string& input : m_inputs)
        if ((isRegular || !descriptor) && areSame(place, input))
            return failure(u"%1 is a file to be read, and is not written over"_s.arg(name));
    std::error_code error;
    if (isRegular && !m_name.empty() && !m_overwrites
        && (isCalledLikeMedia(m_name) || isCalledLikeMedia(fs::weakly_canonical(place, error))))
        return failure(
            u"%1 is called like media and is there already; --overwrite replaces it"_s.arg(name));
    return {};
}

Result<void> OutputTarget::guard() const
{
    TRY(guardOthers());
    if (m_name.empty())
        return {};
    const auto descriptor = descriptorOf(m_name);
    const auto target = pastLinks(m_name);
    const int problem = descriptor ? problemWith(*descriptor)
                        : target   ? problemWith(*target)
                                   : target.error();
    if (problem != 0)
        return failed(m_name, problem);
    return {};
}

Result<void> OutputTarget::write(const QByteArray& document) const
{
    if (m_name.empty())
        return Output::print(document);
    TRY(guard());
    if (const auto descriptor = descriptorOf(m_name))
        return Output::writeThrough(*descriptor, document, QString::fromStdString(m_name));
    const auto target = pastLinks(m_name);
    if (!target)
        return failed(m_name, target.error());
    if (!isWrittenThrough(kindOf(*target)))
        return Files::writeAtomically(*target, document);
    const FileDescriptor open(::open(target->c_str(), O_WRONLY | O_CLOEXEC));
    return Output::writeThrough(open.get(), document, QString::fromStdString(m_name));
}

Result<FileDescriptor> OutputTarget::openToAppend() const
{
    TRY(guard());
    int descriptor = -1;
    if (const auto standing = descriptorOf(m_name)) {
        descriptor = ::fcntl(*standing, F_DUPFD_CLOEXEC, 0);
    } else {
        const auto target = pastLinks(m_name);
        if (!target)
            return failed(m_name, target.error());
        const int flags =
            isWrittenThrough(kindOf(*target)) ? O_WRONLY : O_RDWR | O_APPEND | O_CREAT;
        descriptor = ::open(target->c_str(), flags | O_CLOEXEC, 0666);
    }
    if (descriptor < 0)
        return failed(displayName().toStdString(), errno);
    return FileDescriptor(descriptor);
}

} // namespace vantroque
