#include "Base/FileUrl.h"
#include "Base/Files.h"
#include "Base/Json.h"
#include "Base/Text.h"
#include "Profiles/ProfileCheck.h"
#include "Profiles/SpecFreshness.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/ProfileChoice.h"

#include <QDateTime>
#include <QJsonArray>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Whose a profile is, where it did not come with the program.
QString ownership(const OwnProfiles::Own* own)
{
    if (own == nullptr)
        return {};
    return own->standsIn ? u" (yours, stands in for the shipped one)"_s : u" (yours)"_s;
}

/// Ids by group, each with its name: what --profile and --group take.
QString listing(const LoadedProfiles& loaded)
{
    const std::vector<Profile>& profiles = loaded.all;
    qsizetype width = 0;
    for (const Profile& profile : profiles)
        width = std::max(width, Text::characterCount(profile.id));
    QStringList lines;
    std::optional<ProfileGroup> group;
    for (const Profile& profile : profiles) {
        if (group != profile.group) {
            if (group)
                lines << QString();
            lines << Text::utf8(enumName(profile.group));
            group = profile.group;
        }
        lines << u"  %1  %2  %3%4%5"_s.arg(
            Text::fitted(Text::printable(profile.id), width), Text::printable(profile.verifiedDate),
            Text::printable(profile.name),
            profile.inferred.value_or(false) ? u" (spec inferred)"_s : QString(),
            ownership(OwnProfiles::find(loaded.own, profile.id)));
    }
    return lines.join(u'\n') + u'\n';
}

/// Which of the listed ones are this user's, and where they lie.
QJsonArray ownList(const OwnProfiles::Found& own)
{
    QJsonArray list;
    for (const OwnProfiles::Own& each : own.profiles)
        list.append(QJsonObject{{u"id"_s, each.profile.id},
                                {u"file"_s, FileUrl::fromPath(each.file).displayPath()},
                                {u"standsIn"_s, each.standsIn}});
    return list;
}

Result<QByteArray> document(const LoadedProfiles& loaded, bool freshness, bool json)
{
    const std::vector<Profile>& profiles = loaded.all;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    if (!json)
        return (freshness ? SpecFreshnessReport::summary(profiles, now) + u'\n' : listing(loaded))
            .toUtf8();
    const QJsonValue list =
        freshness ? TRY(RecordCoding::encode(SpecFreshnessReport::rows(profiles, now)))
                  : TRY(RecordCoding::encode(profiles));
    QJsonObject object{{u"profiles"_s, list}};
    if (!loaded.own.profiles.empty())
        object.insert(u"own"_s, ownList(loaded.own));
    return Json::print(object);
}

/// What is wrong with one file, a line each, as compilers say it.
QString problemsOf(const QString& name, const std::vector<ProfileCheck::Problem>& problems)
{
    if (problems.empty())
        return name + u": no problems\n"_s;
    return Text::joined(problems, QString(), [&](const ProfileCheck::Problem& problem) {
        const bool isError = problem.kind == ProfileCheck::Problem::Kind::error;
        const QString place = problem.path.isEmpty() ? QString() : problem.path + u": "_s;
        return u"%1:%2: %3: %4%5\n"_s.arg(name, QString::number(problem.line),
                                          isError ? u"error"_s : u"warning"_s,
                                          Text::printable(place), Text::printable(problem.problem));
    });
}

ExitStatus check(const std::vector<std::string>& files)
{
    ExitStatus status = ExitStatus::passed;
    for (const std::string& file : files) {
        const QString name = Text::printable(QString::fromStdString(file));
        const auto text = Files::read(file, Json::maxBytes);
        if (!text) {
            Output::complain(name + u": "_s + text.error().description);
            status = ExitStatus::trouble;
            continue;
        }
        const auto problems = ProfileCheck::problems(*text);
        if (!problems.empty())
            status = worse(status, ExitStatus::failed);
        if (const auto printed = Output::print(problemsOf(name, problems).toUtf8()); !printed) {
            Output::complain(printed.error().description);
            return ExitStatus::trouble;
        }
    }
    return status;
}

Result<void> print(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (format != "text" && format != "json")
        return failure(
            u"unknown format \"%1\": one of text, json"_s.arg(QString::fromStdString(format)));
    if (arguments.has("check"))
        return failure(u"no file given"_s);
    if (!arguments.files().empty())
        return failure(u"profiles takes files with --check only"_s);
    const auto profiles = TRY(loadProfiles(arguments));
    return Output::print(TRY(document(profiles, arguments.has("freshness"), format == "json")));
}

} // namespace

ExitStatus profiles(const Arguments& arguments)
{
    if (arguments.has("check") && !arguments.files().empty())
        return check(arguments.files());
    const auto printed = print(arguments);
    if (printed)
        return ExitStatus::passed;
    Output::complain(printed.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque
