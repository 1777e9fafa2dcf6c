#include "Check/SignalReport.h"

#include "Check/SignalChecks.h"

#include <QStringList>

namespace vantroque::SignalReport {

using namespace Qt::StringLiterals;

std::optional<ProfileReport> section(const MediaInfo& media, double leaderEnd)
{
    using namespace SignalChecks;

    if (!media.signal)
        return std::nullopt;
    const SignalInfo& signal = *media.signal;
    if (!signal.levels && !signal.cadence && !signal.phase && !signal.channelLevels)
        return std::nullopt;

    const auto levels = levelsRow(media, {}, false, leaderEnd);
    const auto duplicates = duplicatesRow(media, {}, false);
    const auto phase = phaseRow(media);
    ProfileReport report;
    for (const auto& row :
         {levels, colorTagsRow(media), hdrRow(media), blackFramesRow(media, leaderEnd),
          flashFramesRow(media), duplicates, phase, channelLevelsRow(media), bitsRow(media),
          audioTracksRow(media), syncRow(media), decodingRow(media)})
        if (row)
            report.checks.push_back(*row);
    if (report.checks.empty())
        return std::nullopt;

    // Shown only when nothing is wrong, so that the verdicts need no look.
    QStringList praise;
    if (levels && signal.levels)
        praise << u"levels legal"_s;
    if (duplicates && signal.cadence)
        praise << u"cadence clean"_s;
    if (phase && signal.phase)
        praise << u"stereo coherent"_s;
    QString summary = praise.isEmpty() ? u"Nothing to flag"_s : praise.join(u", "_s);
    summary[0] = summary[0].toUpper();

    report.profileID = profileID;
    report.profileName = u"Picture and sound"_s;
    report.profileShortName = report.profileName;
    report.advisory = true;
    report.tag = u"measured"_s;
    report.passedSummary = summary;
    return report;
}

} // namespace vantroque::SignalReport
