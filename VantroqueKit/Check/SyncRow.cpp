#include "Base/Numbers.h"
#include "Check/CheckRow.h"
#include "Check/SignalChecks.h"

#include <QStringList>

#include <cmath>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

/// "sound ends 2.00 s after the picture", where that is far enough off to be seen and heard.
void note(QStringList& found, const QString& what, double off)
{
    constexpr double allowed = 0.25; // seconds
    if (Numbers::above(std::abs(off), allowed))
        found << u"sound %1 %2 s %3 the picture"_s.arg(what, Numbers::fixed(std::abs(off), 2),
                                                       off > 0 ? u"after"_s : u"before"_s);
}

} // namespace

std::optional<CheckResult> syncRow(const MediaInfo& media)
{
    if (!media.video || !media.audio || !media.signal)
        return std::nullopt;
    const SignalInfo& signal = *media.signal;
    QStringList found;
    if (signal.soundStart)
        note(found, u"begins"_s, *signal.soundStart);
    if (signal.soundEnd && signal.pictureEnd)
        note(found, u"ends"_s, *signal.soundEnd - *signal.pictureEnd);
    if (found.isEmpty())
        return std::nullopt;
    return CheckRow{u"sync"_s, u"Sound and picture"_s,
                    u"sound and picture begin and end together"_s}
        .warn(found.join(u", "_s),
              u"Check that nothing has slipped, then trim or extend the sound to the picture's "
              u"first and last frame and export again."_s);
}

} // namespace vantroque::SignalChecks
