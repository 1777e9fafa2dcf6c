#include "Check/ReportWords.h"

#include "Base/Numbers.h"

#include <QStringList>

namespace vantroque::ReportWords {

using namespace Qt::StringLiterals;

Word of(const ProfileReport& report)
{
    if (report.profileID == u"signal"_s)
        return ofSection(report);
    const Verdict verdict = report.verdict();
    if (report.isAdvisory())
        return verdict == Verdict::pass ? Word{u"MEETS"_s, Verdict::pass}
                                        : Word{u"BELOW"_s, Verdict::warn};
    switch (verdict) {
    case Verdict::pass: return {u"PASS"_s, verdict};
    case Verdict::warn: return {u"PASS*"_s, verdict};
    case Verdict::fail: return {u"FAIL"_s, verdict};
    case Verdict::info: break;
    }
    return {u"··"_s, verdict};
}

Word ofSection(const ProfileReport& report)
{
    return report.verdict() == Verdict::pass ? Word{u"OK"_s, Verdict::pass}
                                             : Word{u"REVIEW"_s, Verdict::warn};
}

QString measurements(const Measurements& measurements)
{
    QStringList parts;
    if (measurements.integratedLKFS)
        parts << u"loudness %1 LKFS"_s.arg(Numbers::fixed(*measurements.integratedLKFS, 1));
    if (measurements.truePeakDb)
        parts << u"true peak %1 dBTP"_s.arg(Numbers::fixed(*measurements.truePeakDb, 1));
    if (measurements.loudnessRangeLU)
        parts << u"LRA %1 LU"_s.arg(Numbers::fixed(*measurements.loudnessRangeLU, 1));
    if (measurements.phaseMean)
        parts << u"correlation "_s + Numbers::signedFixed(*measurements.phaseMean, 2);
    if (measurements.levelsYMinPercent && measurements.levelsYMaxPercent)
        parts << u"luma %1–%2%"_s.arg(Numbers::fixed(*measurements.levelsYMinPercent, 0),
                                      Numbers::fixed(*measurements.levelsYMaxPercent, 0));
    return parts.join(u" · "_s);
}

} // namespace vantroque::ReportWords
