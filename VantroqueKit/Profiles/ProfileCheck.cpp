#include "Profiles/ProfileCheck.h"

#include "Base/Json.h"
#include "Base/JsonPlaces.h"
#include "Profiles/ProfileDoubts.h"
#include "Profiles/ProfileStore.h"

#include <QJsonDocument>

#include <algorithm>

namespace vantroque::ProfileCheck {

using namespace Qt::StringLiterals;

namespace {

/// The path that an error begins with, such as ".video.codecs: ".
QString pathIn(const QString& error)
{
    const qsizetype end = error.indexOf(u": ");
    return error.startsWith(u'.') && end > 0 ? error.first(end) : QString();
}

Problem errorOf(const QByteArray& text, const QString& error)
{
    Problem problem{
        .kind = Problem::Kind::error, .line = 1, .path = pathIn(error), .problem = error};
    QJsonParseError mistake;
    QJsonDocument::fromJson(text, &mistake);
    if (mistake.error != QJsonParseError::NoError) {
        problem.line = JsonPlaces::lineOf(text, mistake.offset);
    } else if (!problem.path.isEmpty()) {
        problem.problem = error.sliced(problem.path.size() + 2);
        problem.line = JsonPlaces(text).line(problem.path);
    }
    return problem;
}

} // namespace

std::vector<Problem> problems(const QByteArray& text)
{
    const auto profile = ProfileStore::parse(text);
    if (!profile)
        return {errorOf(text, profile.error().description)};
    const JsonPlaces places(text);
    std::vector<Problem> problems;
    const auto doubt = [&](const QString& path, const QString& words) {
        problems.push_back({.kind = Problem::Kind::doubt,
                            .line = places.line(path),
                            .path = path,
                            .problem = words});
    };
    for (const QString& path : places.repeated())
        doubt(path, u"stands twice; only the last one counts"_s);
    ProfileDoubts::tellUnknownFields(text, *profile, doubt);
    ProfileDoubts::tellDoubtfulValues(*profile, doubt);
    std::ranges::stable_sort(problems, {}, &Problem::line);
    return problems;
}

} // namespace vantroque::ProfileCheck
