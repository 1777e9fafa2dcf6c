#include "VantroqueApp/Views/Files/NameFit.h"

#include <algorithm>

namespace vantroque::NameFit {

namespace {

constexpr QChar ellipsis(0x2026);

qsizetype commonStart(const QString& a, const QString& b)
{
    return std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
}

qsizetype commonEnd(const QString& a, const QString& b)
{
    return std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin();
}

/// Where a name differs from those that would look the same.
struct Difference {
    qsizetype first;
    qsizetype end;
};

Difference difference(const QString& name, const std::vector<QString>& others)
{
    qsizetype first = name.size();
    qsizetype end = 0;
    for (const QString& other : others) {
        const qsizetype start = commonStart(name, other);
        first = std::min(first, start);
        end = std::max(end, name.size() - commonEnd(name, other));
    }
    return {std::min(first, name.size()), std::max(end, first)};
}

/// Head, what is around a place, and tail, as much of each as fits.
QString around(const QString& name, const Difference& kept, const QFontMetrics& metrics, int width)
{
    const auto part = [&](qsizetype head, qsizetype air, qsizetype tail) {
        const qsizetype from = std::max(kept.first - air, head);
        const qsizetype to = std::min(kept.end + air, name.size() - tail);
        QString text = name.first(head);
        if (from > head)
            text += ellipsis;
        text += name.sliced(from, std::max<qsizetype>(to - from, 0));
        if (to < name.size() - tail)
            text += ellipsis;
        return text + name.last(tail);
    };
    const auto fits = [&](const QString& text) { return metrics.horizontalAdvance(text) <= width; };
    constexpr qsizetype air = 2;
    constexpr int narrowestLetter = 3;
    for (auto share = std::min<qsizetype>(name.size(), width / narrowestLetter); share >= 0;
         --share) {
        const qsizetype head = std::min(share, kept.first);
        const qsizetype tail = std::min(share, name.size() - kept.end);
        for (const qsizetype beside : {air, qsizetype{0}})
            if (const QString text = part(head, beside, tail); fits(text))
                return text;
    }
    return metrics.elidedText(name.sliced(kept.first), Qt::ElideRight, width);
}

} // namespace

QString shortened(const QString& name, const std::vector<QString>& beside,
                  const QFontMetrics& metrics, int width)
{
    const auto plain = [&](const QString& text) {
        return metrics.elidedText(text, Qt::ElideMiddle, width);
    };
    QString usual = plain(name);
    if (usual == name)
        return usual;
    const qsizetype head = commonStart(name, usual);
    const qsizetype tail = commonEnd(name, usual);
    std::vector<QString> alike; // but for what is left out
    for (const QString& other : beside)
        if (other != name && commonStart(name, other) >= head && commonEnd(name, other) >= tail)
            alike.push_back(other);
    return alike.empty() ? usual : around(name, difference(name, alike), metrics, width);
}

} // namespace vantroque::NameFit
