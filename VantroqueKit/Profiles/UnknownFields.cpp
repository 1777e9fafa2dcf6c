#include "Base/Json.h"
#include "Profiles/ProfileDoubts.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <numeric>
#include <set>

namespace vantroque::ProfileDoubts {

using namespace Qt::StringLiterals;

namespace {

template<typename T>
void collectNames(std::set<QString>& names)
{
    if constexpr (RecordCoding::isOptional<T> || RecordCoding::isList<T>)
        collectNames<typename T::value_type>(names);
    else if constexpr (RecordType<T>)
        std::apply(
            [&]<typename... Value>(const Member<T, Value>&... member) {
                (names.insert(RecordCoding::key(member.name)), ...);
                (collectNames<Value>(names), ...);
            },
            T::members());
}

/// How many letters must be put in, taken out or changed to make one word of the other
/// (Levenshtein's distance).
std::size_t distance(const QString& a, const QString& b)
{
    std::vector<std::size_t> row(static_cast<std::size_t>(b.size()) + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const QChar letter : a) {
        std::size_t diagonal = row.front()++;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const std::size_t change =
                diagonal + (b[static_cast<qsizetype>(i) - 1] == letter ? 0 : 1);
            diagonal = row[i];
            row[i] = std::min({change, row[i] + 1, row[i - 1] + 1});
        }
    }
    return row.back();
}

/// What was meant by a name that no field has.
QString meant(const QString& name)
{
    static const std::set<QString> names = [] {
        std::set<QString> all;
        collectNames<Profile>(all);
        return all;
    }();
    if (names.contains(name))
        return u"no such field here, only elsewhere in a profile"_s;
    constexpr qsizetype longest = 64;
    constexpr std::size_t near = 3;
    const auto nearest = std::ranges::min_element(names, {}, [&](const QString& known) {
        return distance(name.first(std::min(name.size(), longest)).toLower(), known.toLower());
    });
    if (distance(name.first(std::min(name.size(), longest)).toLower(), nearest->toLower()) <= near)
        return u"no such field; \"%1\" is meant?"_s.arg(*nearest);
    return u"no such field; it is ignored"_s;
}

void tellUnknown(const QJsonValue& written, const QJsonValue& read, const QString& path,
                 const Tell& tell)
{
    const QJsonObject object = read.toObject();
    const QJsonObject source = written.toObject();
    for (auto field = source.begin(); field != source.end(); ++field) {
        const QString place = path + u'.' + field.key();
        if (object.contains(field.key()))
            tellUnknown(field.value(), object.value(field.key()), place, tell);
        else if (!field.value().isNull())
            tell(place, meant(field.key()));
    }
    const QJsonArray list = read.toArray();
    for (qsizetype i = 0; i < list.size(); ++i)
        tellUnknown(written.toArray().at(i), list.at(i), path + RecordCoding::indexPath(i), tell);
}

} // namespace

void tellUnknownFields(const QByteArray& text, const Profile& profile, const Tell& tell)
{
    const auto written = Json::parse(text);
    const auto read = RecordCoding::encode(profile);
    if (written && read)
        tellUnknown(*written, *read, {}, tell);
}

} // namespace vantroque::ProfileDoubts
