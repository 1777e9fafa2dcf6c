#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/Checker.h"
#include "Check/Matching.h"
#include "Check/SignalChecks.h"
#include "Signal/Leader.h"

#include <cmath>
#include <numeric>

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

/// A floor on the bit rate allows this much below it, a ceiling nothing above.
constexpr double floorAllowance = 0.98;

QString fps(double rate)
{
    return trimRate(rate) + u" fps"_s;
}

/// The rate to export at. One next to the file's own keeps its motion: 30 becomes 29.97 and not
/// 23.98, whatever comes first in the list.
double targetRate(const FrameRateRule& rule, double rate)
{
    constexpr double neighbour = 0.01;
    const auto distance = [rate](double allowed) { return std::abs(allowed - rate); };
    const double nearest = std::ranges::min(rule.allowed, {}, distance);
    if (!Numbers::above(distance(nearest), neighbour * rate))
        return nearest;
    const bool hasPreferred = rule.preferred && !rule.preferred->empty();
    return hasPreferred ? rule.preferred->front() : rule.allowed.front();
}

CheckResult frameRateRow(const FrameRateRule& rule, double rate)
{
    const CheckRow row{u"frame-rate"_s, u"Frame rate"_s,
                       Text::joined(rule.allowed, u", "_s, trimRate) + u" fps"_s};
    const auto match = matchingRate(rule.allowed, rate);
    if (!match) {
        return row.fail(Numbers::fixed(rate, 3) + u" fps"_s,
                        u"Re-export at %1 from the original master. Convert the frame rate in "
                        u"the NLE, never in the delivery file."_s.arg(fps(targetRate(rule, rate))));
    }
    if (rule.preferred && !matchingRate(*rule.preferred, *match))
        return row.pass(fps(*match) + u" (accepted)"_s);
    return row.pass(fps(*match));
}

CheckResult constantRateRow(const VideoStreamInfo& video)
{
    const CheckRow row{u"cfr"_s, u"Constant frame rate"_s, u"constant frame rate"_s};
    if (!video.isVFR)
        return row.pass(u"constant"_s);
    return row.fail(video.vfrDetail.value_or(u"variable frame rate detected"_s),
                    u"Re-encode with a forced constant rate (in ffmpeg: -fps_mode cfr -r <rate>). "
                    u"Screen recordings and phone footage are the usual culprits."_s);
}

CheckResult bitrateRow(int min, const std::optional<int>& max, double actual)
{
    const QString range =
        max ? u"%1–%2"_s.arg(fmtMbps(min), fmtMbps(*max)) : u"≥ "_s + fmtMbps(min);
    const CheckRow row{u"bitrate"_s, u"Video bitrate"_s, range};
    const QString measured = fmtMbps(Numbers::truncatedToInt(actual));
    if (Numbers::above(min * floorAllowance, actual))
        return row.fail(measured,
                        u"Re-export at %1 or higher (in ffmpeg: -b:v %2k -minrate %2k -maxrate "
                        u"%2k -bufsize %3k)."_s.arg(fmtMbps(min), QString::number(min),
                                                    QString::number(min / 2)));
    if (max && Numbers::above(actual, *max))
        return row.fail(measured, u"Re-export at or below %1."_s.arg(fmtMbps(*max)));
    return row.pass(measured);
}

const auto cbrFix =
    u"Export with CBR rate control. In ffmpeg: -b:v N -minrate N -maxrate N -bufsize N "
    u"-x264-params nal-hrd=cbr. In Adobe Media Encoder, set Bitrate Encoding to CBR."_s;
const auto cbrClaimFix =
    cbrFix
    + u" Without HRD parameters the file carries no CBR claim for a QC tool to read, even when "
      u"the rate is steady."_s;

CheckResult declaredCBRRow(const CheckRow& row, const HRDInfo& hrd)
{
    if (!*hrd.cbrFlag)
        return row.fail(u"the bitstream declares VBR (HRD cbr_flag = 0)"_s, cbrFix);
    const auto& kbps = hrd.declaredBitrateKbps;
    return row.pass(u"CBR declared in the bitstream"_s
                    + (kbps ? u" at %1 Mbps"_s.arg(Numbers::fixed(*kbps / 1000, 1)) : QString()));
}

/// The claim itself is missing, so that steadiness can neither pass nor fail the row.
CheckResult undeclaredCBRRow(const CheckRow& row, const std::vector<double>& kbpsOfSeconds)
{
    if (kbpsOfSeconds.size() < 4)
        return row.warn(u"not declared in the bitstream; clip is too short to measure"_s, cbrFix);
    // The first second carries the encoder's start.
    const std::vector<double> series(kbpsOfSeconds.begin() + 1, kbpsOfSeconds.end());
    const auto count = static_cast<double>(series.size());
    const double mean = std::accumulate(series.begin(), series.end(), 0.0) / count;
    const double squares =
        std::accumulate(series.begin(), series.end(), 0.0, [&](double sum, double value) {
            return sum + (value - mean) * (value - mean);
        });
    const bool steady = mean <= 0 || Numbers::below(std::sqrt(squares / count) / mean, 0.2);

    const auto mbps = [](double kbps) { return Numbers::fixed(kbps / 1000, 1); };
    const auto [lowest, highest] = std::ranges::minmax(series);
    const QString measured =
        u"not declared in the bitstream; measures %1 (%2–%3 Mbps per second, mean %4)"_s.arg(
            steady ? u"steady"_s : u"as VBR"_s, mbps(lowest), mbps(highest), mbps(mean));
    return row.warn(measured, cbrClaimFix);
}

CheckResult ladderRow(const BitrateLadderRule& rule, const VideoStreamInfo& video)
{
    CheckRow row{u"recommended-bitrate"_s, u"Bitrate for resolution"_s, {}};
    const bool hdr = video.isHDR();
    const auto recommendation =
        rule.recommendedMbps(video.shownWidth(), video.shownHeight(), video.nominalFrameRate, hdr);
    if (!recommendation) {
        const auto lowest = std::ranges::min_element(rule.steps, {}, &BitrateLadderStep::minLines);
        const int lines = lowest == rule.steps.end() ? 0 : lowest->minLines;
        return row
            .expecting(u"no published recommendation below %1 lines"_s.arg(QString::number(lines)))
            .info(frameSize(video.shownWidth(), video.shownHeight()));
    }
    const auto& [step, rate] = *recommendation;
    const bool high = video.nominalFrameRate > BitrateLadderRule::highFrameRateAbove;
    row.expected =
        u"≥ %1 Mbps for %2%3%4"_s.arg(trimRate(rate), step.name, hdr ? u" HDR"_s : QString(),
                                      high ? u", high frame rate"_s : QString());
    if (!video.bitrateKbps)
        return row.warn(u"could not be measured"_s);

    const double actual = *video.bitrateKbps / 1000.0;
    const QString measured = Numbers::fixed(actual, 1) + u" Mbps"_s;
    const QString advice = u"Re-export at %1 Mbps or higher"_s.arg(trimRate(rate));
    if (!Numbers::above(rate * floorAllowance, actual))
        return row.pass(measured);
    if (!Numbers::above(rate * 0.5 * floorAllowance, actual))
        return row.warn(measured, advice
                                      + u". The platform re-encodes every upload and can only "
                                        u"keep the detail it is given."_s);
    return row.fail(measured + u" (under half the recommendation)"_s,
                    advice + u" from the master. At this rate the re-encode will look soft."_s);
}

} // namespace

void checkFrameRate(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.frameRate || !media.video)
        return;
    const FrameRateRule& rule = *profile.frameRate;
    if (!rule.allowed.empty())
        rows.push_back(frameRateRow(rule, media.video->nominalFrameRate));
    if (rule.constantRequired.value_or(false))
        rows.push_back(constantRateRow(*media.video));
}

void checkCadence(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    const auto& rule = profile.frameRate;
    if (!rule
        || !(rule->duplicateFramesForbidden.value_or(false)
             || rule->telecineForbidden.value_or(false)))
        return;
    if (const auto row = SignalChecks::duplicatesRow(media, rule, true))
        rows.push_back(*row);
}

void checkLevels(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.video || !profile.video->levels)
        return;
    const double leaderEnd = Leader::end(media, {profile});
    if (const auto row = SignalChecks::levelsRow(media, profile.video->levels, true, leaderEnd))
        rows.push_back(*row);
}

void checkBitrate(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    const auto option = profile.video ? matchingCodec(*profile.video, media.video) : std::nullopt;
    if (!option)
        return;
    if (const auto& min = option->minBitrateKbps) {
        const auto& actual = media.video->bitrateKbps;
        if (!actual) {
            const CheckRow row{u"bitrate"_s, u"Video bitrate"_s, u"≥ "_s + fmtMbps(*min)};
            rows.push_back(row.warn(u"could not be measured"_s));
            return;
        }
        rows.push_back(bitrateRow(*min, option->maxBitrateKbps, *actual));
    }
    if (option->cbrRequired.value_or(false))
        checkCBR(*media.video, rows);
}

void checkCBR(const VideoStreamInfo& video, Rows& rows)
{
    const CheckRow row{u"cbr"_s, u"Constant bitrate"_s, u"CBR encoding"_s};
    const bool declared = video.hrd && video.hrd->present && video.hrd->cbrFlag;
    rows.push_back(declared ? declaredCBRRow(row, *video.hrd)
                            : undeclaredCBRRow(row, video.bitratePerSecondKbps));
}

void checkRecommendedBitrate(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (profile.recommendedBitrate && media.video)
        rows.push_back(ladderRow(*profile.recommendedBitrate, *media.video));
}

} // namespace vantroque::Checker
