#include "CLI/Cli.h"

#include "Base/Json.h"
#include "Base/Text.h"

#include <QJsonArray>

#include <cstdlib>
#include <stdexcept>

namespace vantroque::Cli {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

std::runtime_error unexpected(const ProgramRun& run, const QString& problem)
{
    return std::runtime_error(problem.toStdString() + "\nstatus " + std::to_string(run.status)
                              + "\n" + run.out.toStdString() + "\n" + run.err.toStdString());
}

} // namespace

fs::path program()
{
    const char* chosen = std::getenv("VANTROQUE_CLI");
    return chosen != nullptr ? chosen : VANTROQUE_CLI;
}

std::vector<std::string> command(const std::vector<std::string>& words)
{
    std::vector<std::string> all{program().native()};
    all.insert(all.end(), words.begin(), words.end());
    return all;
}

ProgramRun run(const std::vector<std::string>& words, const ProgramOptions& options)
{
    return runProgram(command(words), options);
}

QJsonObject json(const ProgramRun& run)
{
    const auto value = Json::parse(run.out);
    if (!value)
        throw unexpected(run, value.error().description);
    return value->toObject();
}

std::vector<File> checked(const ProgramRun& run)
{
    std::vector<File> files;
    const QJsonObject root = json(run);
    for (const QJsonValue& value : root.value("files"_L1).toArray()) {
        const QJsonObject object = value.toObject();
        File file{object.value("path"_L1).toString(),
                  object.value("status"_L1).toString(),
                  {},
                  {},
                  object.contains("media"_L1)};
        if (object.contains("error"_L1))
            file.error = object.value("error"_L1).toString();
        if (object.contains("report"_L1)) {
            const auto report = RecordCoding::decode<FileReport>(object.value("report"_L1));
            if (!report)
                throw unexpected(run, Error(report.error()).description);
            file.report = *report;
        }
        files.push_back(file);
    }
    return files;
}

std::vector<File> check(const std::vector<std::string>& words, const ProgramOptions& options)
{
    std::vector<std::string> all{"check", "--format", "json"};
    all.insert(all.end(), words.begin(), words.end());
    return checked(run(all, options));
}

Profile containerProfile(const char* id, ProfileGroup group, const char* container)
{
    Profile profile;
    profile.id = QString::fromUtf8(id);
    profile.name = u"Test "_s + profile.id;
    profile.group = group;
    profile.verifiedDate = u"2020-02-02"_s;
    profile.container = ContainerRule{{QString::fromUtf8(container)}, {}, {}, {}};
    return profile;
}

ProfilesFolder::ProfilesFolder()
{
    // Also for runs of the program as another user.
    fs::permissions(path(), fs::perms::others_read | fs::perms::others_exec, fs::perm_options::add);
    add(containerProfile("mp4-only", ProfileGroup::digital, "mp4"));
    add(containerProfile("mxf-only", ProfileGroup::broadcast, "mxf"));
    add(containerProfile("webm-advised", ProfileGroup::recommendation, "webm"));
}

void ProfilesFolder::add(const Profile& profile) const
{
    m_folder.write(profile.id.toStdString() + ".json", Json::write(profile).value());
}

} // namespace vantroque::Cli
