#include "Base/Numbers.h"
#include "Check/Problems.h"
#include "Profiles/LoudnessTarget.h"
#include "VantroqueApp/Views/Report/MeasurementCards.h"

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Why there is nothing to compare with: no platform was chosen that has a rule on sound at all, or
/// those that have one give no number.
QString withoutRule(const std::vector<Profile>& profiles)
{
    const bool someRule = std::ranges::any_of(
        profiles, [](const Profile& profile) { return profile.loudness.has_value(); });
    return someRule ? u"no published rule"_s : u"no rule for the selected platforms"_s;
}

MeasurementCard loudness(double value, const std::vector<Profile>& profiles)
{
    const LoudnessTarget target = LoudnessTarget::across(profiles);
    MeasurementCard card{.title = u"Loudness"_s,
                         .value = Numbers::fixed(value, 1),
                         .unit = u"LKFS"_s,
                         .caption =
                             target.marks().empty() ? withoutRule(profiles) : target.caption()};
    return card;
}

MeasurementCard truePeak(double value, const std::vector<Profile>& profiles)
{
    const auto rule = TruePeakRule::across(profiles);
    MeasurementCard card{.title = u"True peak"_s,
                         .value = Numbers::fixed(value, 1),
                         .unit = u"dBTP"_s,
                         .caption = rule ? rule->caption() : withoutRule(profiles)};
    if (rule)
        card.verdict = rule->allows(value) ? Verdict::pass : Verdict::fail;
    return card;
}

MeasurementCard luma(const Measurements& found)
{
    const bool beyond = found.levelsRejectSeconds.value_or(0) > 0;
    const Verdict wrong = found.levelsGated.value_or(false) ? Verdict::fail : Verdict::warn;
    return {.title = u"Luma"_s,
            .value = u"%1–%2"_s.arg(Numbers::fixed(*found.levelsYMinPercent, 0),
                                    Numbers::fixed(*found.levelsYMaxPercent, 0)),
            .unit = u"%"_s,
            .caption = beyond ? u"beyond EBU R 103"_s : u"within EBU R 103"_s,
            .verdict = beyond ? wrong : Verdict::pass};
}

QString matrixName(ColorMatrix matrix)
{
    switch (matrix) {
    case ColorMatrix::bt601: return u"Rec.601"_s;
    case ColorMatrix::bt2020: return u"Rec.2020"_s;
    case ColorMatrix::bt709: break;
    }
    return u"Rec.709"_s;
}

MeasurementCard range(const VideoSummary& video, const MediaInfo* media)
{
    const bool full = video.fullRange.value_or(false);
    MeasurementCard card{.title = u"Range"_s,
                         .value = full ? u"0 to 255"_s : u"16 to 235"_s,
                         .unit = {},
                         .caption = full ? u"Full"_s : u"Video"_s,
                         .verdict = {}};
    if (!video.matrix)
        return card;
    card.caption += u", "_s + matrixName(*video.matrix);
    if (media != nullptr && media->video
        && resolveColorMatrix(media->video->colorSpace, video.height).assumed)
        card.caption += u", assumed"_s;
    return card;
}

/// Where the check points that scores a figure.
std::optional<CheckMoment> worst(const FileReport& report, const QString& check)
{
    std::optional<CheckMoment> found;
    bool fails = false;
    for (const ProfileReport& part : report.allRows())
        for (const CheckResult& row : part.checks)
            if (row.id == check && row.moment
                && (!found || (!fails && row.verdict == Verdict::fail))) {
                found = row.moment;
                fails = row.verdict == Verdict::fail;
            }
    return found;
}

} // namespace

std::vector<MeasurementCard> MeasurementCard::of(const FileReport& report, const MediaInfo* media,
                                                 const std::vector<Profile>& profiles)
{
    std::vector<MeasurementCard> cards;
    const auto add = [&](MeasurementCard card, const QString& scoring) {
        if (scoring == u"loudness"_s)
            card.verdict = Problems::verdictOf(report, scoring);
        card.moment = worst(report, scoring);
        card.check = scoring;
        cards.push_back(std::move(card));
    };
    const Measurements found = report.measurements.value_or(Measurements());
    if (found.integratedLKFS)
        add(loudness(*found.integratedLKFS, profiles), u"loudness"_s);
    if (found.truePeakDb)
        add(truePeak(*found.truePeakDb, profiles), u"true-peak"_s);
    if (found.levelsYMinPercent && found.levelsYMaxPercent)
        add(luma(found), u"video-levels"_s);
    if (report.video)
        cards.push_back(range(*report.video, media));
    return cards;
}

} // namespace vantroque
