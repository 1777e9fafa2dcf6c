#include "Base/Json.h"
#include "Base/Text.h"
#include "Profiles/SpecFreshness.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/ProfileChoice.h"

#include <QDateTime>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Ids by group, each with its name: what --profile and --group take.
QString listing(const std::vector<Profile>& profiles)
{
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
        lines << u"  %1  %2  %3%4"_s.arg(
            Text::fitted(Text::printable(profile.id), width), Text::printable(profile.verifiedDate),
            Text::printable(profile.name),
            profile.inferred.value_or(false) ? u" (spec inferred)"_s : QString());
    }
    return lines.join(u'\n') + u'\n';
}

Result<QByteArray> document(const std::vector<Profile>& profiles, bool freshness, bool json)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    if (!json)
        return (freshness ? SpecFreshnessReport::summary(profiles, now) + u'\n' : listing(profiles))
            .toUtf8();
    const QJsonValue list =
        freshness ? TRY(RecordCoding::encode(SpecFreshnessReport::rows(profiles, now)))
                  : TRY(RecordCoding::encode(profiles));
    return Json::print(QJsonObject{{u"profiles"_s, list}});
}

Result<void> print(const Arguments& arguments)
{
    const std::string format = arguments.value("format", "text");
    if (format != "text" && format != "json")
        return failure(
            u"unknown format \"%1\": one of text, json"_s.arg(QString::fromStdString(format)));
    if (!arguments.files().empty())
        return failure(u"profiles takes no files"_s);
    const auto profiles = TRY(loadProfiles(arguments));
    return Output::print(TRY(document(profiles, arguments.has("freshness"), format == "json")));
}

} // namespace

ExitStatus profiles(const Arguments& arguments)
{
    const auto printed = print(arguments);
    if (printed)
        return ExitStatus::passed;
    Output::complain(printed.error().description);
    return ExitStatus::trouble;
}

} // namespace vantroque
