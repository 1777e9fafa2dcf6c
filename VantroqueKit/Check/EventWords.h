#pragma once

#include "Records/Report.h"

/// What an event is called where there is little room. Pure.
namespace vantroque::EventWords {

/// The title of the check that raises such events.
QString title(SignalEvent::Kind kind);
/// A few words of what was found: "past 93%".
QString brief(const SignalEvent& event);
/// The same beside its place in the picture: "reaches 98%, past 93%".
QString atPlace(const SignalEvent& event);

} // namespace vantroque::EventWords
