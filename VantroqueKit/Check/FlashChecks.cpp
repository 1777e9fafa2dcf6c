#include "Check/FlashChecks.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/Checker.h"
#include "Check/SignalChecks.h"
#include "Signal/FlashBranch.h"
#include "Signal/Leader.h"

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;
using Kind = FlashFinding::Kind;

namespace {

QString percent(double share)
{
    return Numbers::fixed(share * 100, 0) + u'%';
}

/// What a profile's rule finds in a file.
class Flashes {
public:
    Flashes(const MediaInfo& media, const FlashRule& rule, double leaderEnd)
        : m_media(media), m_leaderEnd(leaderEnd)
    {
        const auto& all = media.signal->flashes;
        const FlashLight light =
            FlashBranch::lightOf(*media.video, rule.luminance.value_or(FlashLight::bt1886));
        if (!all)
            return;
        const auto found = std::ranges::find(*all, light, &FlashInfo::light);
        m_info = found == all->end() ? nullptr : &*found;
    }

    bool areMeasured() const { return m_info != nullptr; }

    /// The passages of a kind, without those in the leader.
    std::vector<FlashFinding> of(Kind kind) const
    {
        std::vector<FlashFinding> found;
        for (const FlashFinding& finding : m_info->findings)
            if (finding.kind == kind && !Numbers::below(finding.end, m_leaderEnd))
                found.push_back(finding);
        return found;
    }

    /// How near the rest of the film comes to the limit, 0 to 1.
    double highestRisk() const
    {
        const auto& [rate, risk] = m_info->curve;
        double highest = 0;
        for (std::size_t i = 0; i < risk.size(); ++i)
            if (rate > 0 && static_cast<double>(i + 1) / rate > m_leaderEnd)
                highest = std::max(highest, risk[i]);
        return highest;
    }

    /// What is seen and how it is worse than allowed.
    QString words(const FlashFinding& finding) const
    {
        const QString area = u" on %1 of the screen"_s.arg(percent(finding.area));
        switch (finding.kind) {
        case Kind::extended:
            return u"flashing for %1%2"_s.arg(SignalChecks::seconds(finding.end - finding.start),
                                              area);
        case Kind::pattern:
            return u"%1stripes for %2%3"_s.arg(isMoving(finding) ? u"moving "_s : QString(),
                                               SignalChecks::seconds(finding.end - finding.start),
                                               area);
        case Kind::luminance:
        case Kind::red: break;
        }
        const QString step = finding.kind == Kind::red || !finding.step
                                 ? QString()
                                 : u", by %1 cd/m²"_s.arg(Numbers::fixed(*finding.step, 0));
        return u"%1 changes (%2 flashes) in a second%3%4"_s.arg(
            QString::number(finding.changes), QString::number(finding.flashes), area, step);
    }

    /// On which screen that is.
    QString screen() const
    {
        switch (m_info->light) {
        case FlashLight::legacy: return u", by the older curve of a screen"_s;
        case FlashLight::hlg: return u", on a screen of 1,000 cd/m²"_s;
        case FlashLight::pq: return u", on a screen that shows all of PQ"_s;
        case FlashLight::bt1886: break;
        }
        return {};
    }

    QString at(double time) const
    {
        return Timecode::fromSeconds(time, SignalChecks::countingRate(m_media)).text();
    }

    CheckMoment momentOf(const FlashFinding& finding) const
    {
        return {frameAt(finding.start), frameAt(finding.end), boxOf(finding)};
    }

    static bool isMoving(const FlashFinding& finding) { return finding.moves.value_or(false); }

private:
    std::int64_t frameAt(double time) const
    {
        const std::int64_t frame = SignalChecks::countingRate(m_media).frameAt(time);
        const auto last = SignalChecks::lastFrame(m_media);
        return last ? std::min(frame, *last) : frame;
    }

    /// In the picture as it is shown.
    NormalizedRect boxOf(const FlashFinding& finding) const
    {
        const VideoStreamInfo& video = *m_media.video;
        const auto pixels = [](double part, int side) {
            return static_cast<int>(Numbers::roundedToInt(part * side));
        };
        const auto& box = finding.box;
        const CropRect shown =
            video.shown({pixels(box.width, video.width), pixels(box.height, video.height),
                         pixels(box.x, video.width), pixels(box.y, video.height)});
        const double width = std::max(video.shownWidth(), 1);
        const double height = std::max(video.shownHeight(), 1);
        return {shown.x / width, shown.y / height, shown.width / width, shown.height / height};
    }

    const MediaInfo& m_media;
    double m_leaderEnd;
    const FlashInfo* m_info = nullptr;
};

/// A row and the findings that it speaks of.
struct Subject {
    Kind kind;
    SignalEvent::Kind event;
    QString row;
    QString title;
    QString expected;
    QString none;
    QString fix;
};

const std::array<Subject, 4>& subjects()
{
    static const std::array<Subject, 4> all{{
        {Kind::luminance, SignalEvent::Kind::psyFlash, u"psy-flash"_s, u"PSE flashes"_s,
         u"at most three flashes in a second on more than a quarter of the screen"_s, u"none"_s,
         u"Flash less often, on less of the screen or with less contrast there."_s},
        {Kind::red, SignalEvent::Kind::psyRed, u"psy-red"_s, u"PSE red"_s,
         u"at most three changes to saturated red and back in a second on more than a quarter of "
         u"the screen"_s,
         u"none"_s, u"Take colour out of the red there, or change less often."_s},
        {Kind::extended, SignalEvent::Kind::psyExtended, u"psy-extended"_s, u"PSE long flashing"_s,
         u"no flashing for longer than 5 s"_s, u"none for longer than 5 s"_s,
         u"Shorten it: long flashing is a risk though each second is inside the limits."_s},
        {Kind::pattern, SignalEvent::Kind::psyPattern, u"psy-pattern"_s, u"PSE stripes"_s,
         u"no regular light and dark stripes, more than five pairs, on more than 40% of the screen "
         u"or 25% where they move"_s,
         u"none"_s, u"Look at it: the limits of stripes are known at second hand."_s},
    }};
    return all;
}

/// Of flashes that are no camera's motion a test would not be passed; of the rest nobody can be
/// sure.
Verdict verdictOn(const FlashFinding& finding)
{
    const bool isSure = finding.kind == Kind::luminance || finding.kind == Kind::red;
    return isSure && !Flashes::isMoving(finding) ? Verdict::fail : Verdict::warn;
}

/// Those that fail before those that warn, then the one with most of it.
const FlashFinding& worstOf(const std::vector<FlashFinding>& findings)
{
    return *std::ranges::max_element(findings, {}, [](const FlashFinding& finding) {
        return std::pair(verdictOn(finding) == Verdict::fail, finding.area * finding.changes);
    });
}

CheckResult rowOf(const Subject& subject, const Flashes& flashes, const RuleSource& source)
{
    const CheckRow row{subject.row, subject.title,
                       u"%1 (%2)"_s.arg(subject.expected, source.words())};
    if (!flashes.areMeasured())
        return row.warn(u"could not be measured"_s);
    const auto findings = flashes.of(subject.kind);
    if (findings.empty())
        return row.pass(subject.kind == Kind::luminance
                            ? u"none over the limit; %1 of it at most"_s.arg(
                                percent(std::min(flashes.highestRisk(), 0.99)))
                            : subject.none);
    const FlashFinding& worst = worstOf(findings);
    QString measured =
        u"%1%2, at %3"_s.arg(flashes.words(worst), flashes.screen(), flashes.at(worst.start));
    if (const auto more = std::ssize(findings) - 1; more > 0)
        measured += u" and %1 more place%2"_s.arg(QString::number(more), Text::plural(more));
    const Verdict verdict = verdictOn(worst);
    if (verdict == Verdict::fail)
        measured = u"would not pass a flash test: "_s + measured;
    else if (Flashes::isMoving(worst) && worst.kind != Kind::pattern)
        measured += u"; it is mostly a picture that moves, so look"_s;
    CheckResult result = row.outcome(verdict, measured, subject.fix);
    result.moment = flashes.momentOf(worst);
    return result;
}

QString sentence(QString words)
{
    if (!words.isEmpty())
        words[0] = words[0].toUpper();
    return words;
}

} // namespace

namespace FlashChecks {

std::vector<SignalEvent> events(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    if (!media.video || !media.signal)
        return {};
    std::vector<SignalEvent> list;
    for (const Profile& profile : profiles) {
        if (!profile.video || !profile.video->flashes)
            continue;
        const Flashes flashes(media, *profile.video->flashes, Leader::end(media, {profile}));
        if (!flashes.areMeasured())
            continue;
        for (const Subject& subject : subjects())
            for (const FlashFinding& finding : flashes.of(subject.kind)) {
                const CheckMoment moment = flashes.momentOf(finding);
                const SignalEvent event{{},
                                        subject.event,
                                        moment.frame,
                                        moment.endFrame,
                                        verdictOn(finding),
                                        sentence(flashes.words(finding)) + flashes.screen(),
                                        moment.box};
                if (std::ranges::count(list, event) == 0)
                    list.push_back(event);
            }
    }
    return list;
}

} // namespace FlashChecks

namespace Checker {

void checkFlashes(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.video || !profile.video->flashes || !media.video)
        return;
    const FlashRule& rule = *profile.video->flashes;
    for (const Subject& subject : subjects())
        if (!media.signal)
            rows.push_back(CheckRow{subject.row, subject.title,
                                    u"%1 (%2)"_s.arg(subject.expected, rule.source.words())}
                               .info(u"signal pass skipped"_s));
        else
            rows.push_back(
                rowOf(subject, Flashes(media, rule, Leader::end(media, {profile})), rule.source));
}

} // namespace Checker

} // namespace vantroque
