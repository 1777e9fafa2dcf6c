#pragma once

#include "Records/Profile.h"
#include "Records/Report.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"

#include <QJsonObject>

/// The built command line program, started as people start it. The environment variable
/// VANTROQUE_CLI names another build of it.
namespace vantroque::Cli {

std::filesystem::path program();

/// The program's name in front of these words.
std::vector<std::string> command(const std::vector<std::string>& words);
ProgramRun run(const std::vector<std::string>& words, const ProgramOptions& options = {});

/// The object that was printed; throws with all that the program said when it is none.
QJsonObject json(const ProgramRun& run);

/// One file of `check --format json`.
struct File {
    QString path;
    QString status;
    std::optional<QString> error;
    std::optional<FileReport> report;
    bool hasMedia = false;
};
std::vector<File> checked(const ProgramRun& run);
/// Runs `check --format json` with these words after it.
std::vector<File> check(const std::vector<std::string>& words, const ProgramOptions& options = {});

/// A profile whose only rule is the container.
Profile containerProfile(const char* id, ProfileGroup group, const char* container);

/// Three profiles that an MP4 file passes ("mp4-only", digital), fails ("mxf-only", broadcast) and
/// is below ("webm-advised", recommendation).
class ProfilesFolder {
public:
    ProfilesFolder();
    const std::filesystem::path& path() const { return m_folder.path(); }
    void add(const Profile& profile) const;
    /// The words that choose it.
    std::vector<std::string> words() const { return {"--profiles-dir", path().native()}; }

private:
    TestFolder m_folder;
};

} // namespace vantroque::Cli
