#include "Check/EventWords.h"

#include "Check/CheckTexts.h"
#include "Text/TextPlacement.h"

#include <QRegularExpression>

namespace vantroque::EventWords {

using namespace Qt::StringLiterals;
using Kind = SignalEvent::Kind;

namespace {

/// What a pattern takes out of an event's sentence; empty where that says something else.
QString taken(const SignalEvent& event, const QRegularExpression& pattern)
{
    return pattern.match(event.text).captured(1);
}

QString level(const SignalEvent& event)
{
    static const QRegularExpression share(u" on ([\\d.]+%) of the picture"_s);
    const QString percent = taken(event, share);
    const QString what = event.text.startsWith(u"RGB"_s) ? u"RGB"_s : u"luma"_s;
    return percent.isEmpty() ? what : what + u' ' + percent;
}

QString black(const SignalEvent& event)
{
    static const QRegularExpression frames(u"^(\\d+ black frames?) "_s);
    const QString count = taken(event, frames);
    return count.isEmpty() ? u"dip to black"_s : count;
}

QString pastArea(const SignalEvent& event)
{
    static const QRegularExpression limit(u" reaches past the ([\\d.]+%) "_s);
    const QString percent = taken(event, limit);
    return percent.isEmpty() ? u"past the safe area"_s : u"past "_s + percent;
}

QString flashing(const SignalEvent& event)
{
    static const QRegularExpression share(u" on ([\\d.]+%) of the screen"_s);
    const QString percent = taken(event, share);
    return percent.isEmpty() ? u"flashing"_s : u"flashing "_s + percent;
}

QString word(const SignalEvent& event)
{
    static const QRegularExpression quoted(u"^(\".+?\")[ :]"_s);
    return taken(event, quoted);
}

} // namespace

QString title(Kind kind)
{
    switch (kind) {
    case Kind::levels: return u"Video levels"_s;
    case Kind::blackFrame: return u"Black frames"_s;
    case Kind::flashFrame: return u"Flash frames"_s;
    case Kind::duplicateFrame: return u"Duplicate frames"_s;
    case Kind::phase: return u"Stereo phase"_s;
    case Kind::deadChannel: return u"Channel levels"_s;
    case Kind::safeArea: return u"Safe area"_s;
    case Kind::safeZone: return u"Safe zones"_s;
    case Kind::captionSpelling: return u"Spelling"_s;
    case Kind::captionDoubled: return u"Doubled words"_s;
    case Kind::psyFlash: return u"PSE flashes"_s;
    case Kind::psyRed: return u"PSE red"_s;
    case Kind::psyExtended: return u"PSE long flashing"_s;
    case Kind::psyPattern: return u"PSE stripes"_s;
    case Kind::alertTone: return u"Alert tones"_s;
    case Kind::clipping: return u"Clipping"_s;
    case Kind::decoding: break;
    }
    return u"Decoding"_s;
}

QString brief(const SignalEvent& event)
{
    switch (event.kind) {
    case Kind::levels: return level(event);
    case Kind::blackFrame: return black(event);
    case Kind::flashFrame: return u"flash"_s;
    case Kind::duplicateFrame: return u"repeats"_s;
    case Kind::phase: return u"L/R inverted"_s;
    case Kind::deadChannel: return u"silent channel"_s;
    case Kind::safeArea: return pastArea(event);
    case Kind::safeZone: return u"under controls"_s;
    case Kind::captionSpelling:
    case Kind::captionDoubled: return word(event);
    case Kind::psyFlash:
    case Kind::psyRed:
    case Kind::psyExtended: return flashing(event);
    case Kind::psyPattern: return u"stripes"_s;
    case Kind::alertTone: return u"alert tones"_s;
    case Kind::clipping: return u"clipped"_s;
    case Kind::decoding: break;
    }
    return u"damaged"_s;
}

QString atPlace(const SignalEvent& event)
{
    if (event.kind != Kind::safeArea || !event.box)
        return brief(event);
    return u"reaches %1, %2"_s.arg(Checker::pct(TextPlacement::reach(*event.box)), brief(event));
}

} // namespace vantroque::EventWords
