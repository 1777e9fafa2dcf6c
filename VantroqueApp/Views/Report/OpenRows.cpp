#include "VantroqueApp/Views/Report/OpenRows.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestText = 100'000; ///< Of a file; far more than anybody opens.

QString key()
{
    return u"window.openRows"_s;
}

/// How the text of a file begins; an address has no line feed.
QString beginning(const FileUrl& file)
{
    return file.toString() + u'\n';
}

template<typename Set>
QString joined(const Set& set)
{
    return QStringList(set.begin(), set.end()).join(u'\t');
}

template<typename Set>
Set parted(const QString& line)
{
    const QStringList parts = line.split(u'\t', Qt::SkipEmptyParts);
    return {parts.begin(), parts.end()};
}

} // namespace

OpenRows& OpenRowsMemory::of(const FileUrl& file)
{
    const auto [found, isNew] = m_files.try_emplace(file.toString());
    OpenRows& open = found->second;
    if (!isNew)
        return open;
    const QStringList stored = m_defaults.textList(key()).value_or(QStringList());
    const auto text = std::ranges::find_if(
        stored, [start = beginning(file)](const QString& each) { return each.startsWith(start); });
    if (text == stored.end())
        return open;
    const QStringList lines = text->split(u'\n');
    open.problems = parted<std::set<QString>>(lines.value(1));
    open.rows = parted<QSet<QString>>(lines.value(2));
    open.seen = parted<QSet<QString>>(lines.value(3));
    open.isChosen = true;
    return open;
}

void OpenRowsMemory::keep(const FileUrl& file)
{
    const OpenRows& open = of(file);
    const QString text =
        beginning(file)
        + QStringList{joined(open.problems), joined(open.rows), joined(open.seen)}.join(u'\n');
    if (!open.isChosen || text.size() > longestText)
        return;
    QStringList stored = m_defaults.textList(key()).value_or(QStringList());
    if (!stored.isEmpty() && stored.front() == text)
        return;
    stored.removeIf(
        [start = beginning(file)](const QString& each) { return each.startsWith(start); });
    stored.prepend(text);
    m_defaults.setTextList(key(), stored.first(std::min(stored.size(), most)));
}

} // namespace vantroque
