#include "Base/JsonPlaces.h"

#include "Base/RecordCoding.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace vantroque {

namespace {

/// What is open around a value.
struct Level {
    QString path;
    bool isList = false;
    qsizetype index = 0; ///< Of a list's next element.
};

/// The bytes of a string with both quotes.
QByteArray stringAt(const QByteArray& text, qsizetype start)
{
    qsizetype end = start + 1;
    while (end < text.size() && text[end] != '"')
        end += text[end] == '\\' ? 2 : 1;
    return text.sliced(start, std::min(end + 1, text.size()) - start);
}

QString meaningOf(const QByteArray& quoted)
{
    return QJsonDocument::fromJson("[" + quoted + "]").array().at(0).toString();
}

} // namespace

JsonPlaces::JsonPlaces(const QByteArray& text)
{
    std::vector<Level> levels;
    QString path;    // of the value that comes next
    QByteArray name; // the string that stands last, in quotes
    int line = 1;
    const auto note = [&] {
        if (!levels.empty() && levels.back().isList)
            path = levels.back().path + RecordCoding::indexPath(levels.back().index);
        if (!m_lines.try_emplace(path, line).second)
            m_repeated.push_back(path);
    };
    bool isValueNext = true;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '\n')
            ++line;
        else if (c == '"')
            name = stringAt(text, at);
        if (levels.empty() && c != '{' && c != '[')
            continue; // a byte order mark
        if (c == ':') {
            path = levels.back().path + QLatin1Char('.') + meaningOf(name);
            isValueNext = true;
        } else if (c == ',') {
            ++levels.back().index;
            isValueNext = levels.back().isList;
        } else if (c == ']' || c == '}') {
            levels.pop_back();
            isValueNext = false;
        } else if (isValueNext && c > ' ') {
            note();
            isValueNext = c == '[';
            if (c == '[' || c == '{')
                levels.push_back({path, c == '['});
        }
        if (c == '"')
            at += name.size() - 1;
    }
}

int JsonPlaces::line(QString path) const
{
    for (;;) {
        if (const auto found = m_lines.find(path); found != m_lines.end())
            return found->second;
        const qsizetype cut =
            std::max(path.lastIndexOf(QLatin1Char('.')), path.lastIndexOf(QLatin1Char('[')));
        if (cut < 0)
            return 1;
        path.truncate(cut);
    }
}

int JsonPlaces::lineOf(const QByteArray& text, qsizetype byte)
{
    return static_cast<int>(text.first(std::clamp<qsizetype>(byte, 0, text.size())).count('\n'))
           + 1;
}

} // namespace vantroque
