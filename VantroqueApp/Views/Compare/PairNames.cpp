#include "VantroqueApp/Views/Compare/PairNames.h"

#include <algorithm>

namespace vantroque::PairNames {

using namespace Qt::StringLiterals;

namespace {

bool isBetweenWords(QChar letter)
{
    return u"_-. "_s.contains(letter);
}

/// How many letters at the front both share, up to the end of a word.
qsizetype sharedWords(QStringView a, QStringView b)
{
    const auto differs = std::ranges::mismatch(a, b);
    qsizetype shared = differs.in1 - a.begin();
    while (shared > 0 && !isBetweenWords(a[shared - 1]))
        --shared;
    return shared;
}

} // namespace

std::pair<QString, QString> apart(const QString& a, const QString& b)
{
    const qsizetype shared = sharedWords(a, b);
    if (a == b || shared >= std::min(a.size(), b.size()))
        return {a, b};
    return {a.mid(shared), b.mid(shared)};
}

} // namespace vantroque::PairNames
