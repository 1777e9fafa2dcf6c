#include "Base/Text.h"
#include "Base/Timecode.h"
#include "Check/CheckRow.h"
#include "Check/Checker.h"
#include "Check/SignalChecks.h"

#include <QStringList>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

std::optional<CheckResult> decodingRow(const MediaInfo& media)
{
    if (!media.signal || !media.signal->decodeHealth || media.signal->decodeHealth->isWhole())
        return std::nullopt;
    const DecodeHealth& health = *media.signal->decodeHealth;
    const auto at = [&](double time) {
        return Timecode::fromSeconds(time, countingRate(media)).text();
    };

    QStringList parts;
    if (health.framesDecoded != health.framesPromised && health.framesDecoded)
        parts << u"%1 of %2 frames decode"_s.arg(
            QString::number(*health.framesDecoded),
            QString::number(health.framesPromised.value_or(0)));
    if (health.soundSeconds != health.soundSecondsPromised && health.soundSeconds)
        parts << u"%1 of %2 of sound decode"_s.arg(
            seconds(*health.soundSeconds), seconds(health.soundSecondsPromised.value_or(0)));
    if (!health.places.empty()) {
        QString place = u"damaged at "_s + at(health.places.front().start);
        if (const std::int64_t more = health.placeCount - 1; more > 0)
            place += u" and %1 more place%2"_s.arg(QString::number(more), Text::plural(more));
        parts << place;
    }
    if (health.endsAt)
        parts << u"the file ends at "_s + at(*health.endsAt);
    const CheckRow row{u"decoding"_s, u"Decoding"_s, u"every frame and sample decodes"_s};
    return row.fail(parts.join(u"; "_s),
                    u"Copy or export the file again: this one is cut off or damaged."_s);
}

} // namespace vantroque::SignalChecks

namespace vantroque::Checker {

void checkDecoding(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (profile.group == ProfileGroup::recommendation)
        return;
    if (auto row = SignalChecks::decodingRow(media))
        rows.push_back(*std::move(row));
}

} // namespace vantroque::Checker
