#include "Support/Media.h"

#include "Support/Program.h"

#include <QCryptographicHash>

#include <fcntl.h>
#include <stdexcept>
#include <sys/file.h>
#include <unistd.h>

namespace vantroque::Media {

namespace fs = std::filesystem;

namespace {

std::string hashOf(const std::string& name, const std::vector<std::string>& key)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&](const std::string& text) {
        hash.addData(QByteArray::fromStdString(text) + '\0');
    };
    add(name);
    for (const std::string& text : key)
        add(text);
    return hash.result().toHex().left(16).toStdString();
}

/// Held by one test program at a time; released by the system when that program dies.
class FileLock {
public:
    explicit FileLock(const fs::path& file)
        : m_descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666))
    {
        if (m_descriptor < 0 || ::flock(m_descriptor, LOCK_EX) != 0)
            throw std::runtime_error("cannot lock " + file.native());
    }
    ~FileLock() { ::close(m_descriptor); }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int m_descriptor;
};

} // namespace

std::vector<std::string> operator+(std::vector<std::string> first,
                                   const std::vector<std::string>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void ffmpeg(const std::vector<std::string>& arguments)
{
    const std::vector<std::string> start{"ffmpeg", "-v", "error", "-nostdin", "-y"};
    const ProgramRun run = runProgram(start + arguments);
    if (run.status != 0)
        throw std::runtime_error("ffmpeg ended with status " + std::to_string(run.status) + ": "
                                 + run.err.toStdString());
}

fs::path make(const Recipe& recipe)
{
    return make(recipe.name, recipe.arguments, [&](const fs::path& target) {
        ffmpeg(recipe.arguments + std::vector{target.native()});
    });
}

fs::path make(const std::string& name, const std::vector<std::string>& key,
              const std::function<void(const fs::path&)>& build)
{
    const fs::path folder = fs::path(VANTROQUE_TEST_MEDIA) / hashOf(name, key);
    const fs::path file = folder / name;
    fs::create_directories(folder);
    const FileLock lock(folder / "lock");
    if (!fs::exists(file)) {
        // ffmpeg tells the format by the extension.
        const fs::path partial = folder / ("partial" + file.extension().native());
        build(partial);
        fs::rename(partial, file);
    }
    return file;
}

} // namespace vantroque::Media
