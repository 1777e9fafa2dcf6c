#include "VantroqueApp/Views/Files/QueueLine.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <QStringList>

#include <algorithm>
#include <cstdint>

namespace vantroque::QueueLine {

using namespace Qt::StringLiterals;

namespace {

/// A line is broken between its parts alone.
QString joined(QStringList parts)
{
    for (QString& part : parts)
        part.replace(u' ', QChar::Nbsp);
    return parts.join(u"%1· "_s.arg(QChar(QChar::Nbsp)));
}

void addOutcomes(QStringList& parts, const QueueRun::Counts& counts)
{
    if (counts.failed > 0)
        parts << u"%1 fail"_s.arg(counts.failed);
    if (counts.notAnalyzed > 0)
        parts << u"%1 could not be analyzed"_s.arg(counts.notAnalyzed);
}

QString about(QueueRun::Seconds time)
{
    constexpr double mostSeconds = 90;
    constexpr double minute = 60;
    const double seconds = time.count();
    return seconds > mostSeconds
               ? u"about %1 min"_s.arg(Numbers::roundedToInt(seconds / minute))
               : u"about %1 s"_s.arg(std::max<std::int64_t>(Numbers::roundedToInt(seconds), 1));
}

} // namespace

QString running(const QueueRun::Counts& counts, std::optional<QueueRun::Seconds> left)
{
    QStringList parts{u"This run: %1 of %2"_s.arg(counts.done).arg(counts.all)};
    addOutcomes(parts, counts);
    if (left)
        parts << about(*left);
    return joined(parts);
}

QString ended(const QueueRun::Counts& counts)
{
    QStringList parts{u"%1 file%2 checked"_s.arg(QString::number(counts.all),
                                                 Text::plural(static_cast<qint64>(counts.all)))};
    addOutcomes(parts, counts);
    return joined(parts);
}

} // namespace vantroque::QueueLine
