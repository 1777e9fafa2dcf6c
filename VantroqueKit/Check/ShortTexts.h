#pragma once

#include <QString>

/// The texts of a row where title, limit and place stand beside them anyway. Pure.
namespace vantroque::ShortTexts {

/// Without an explanation in brackets at its end, and without what a text in the picture is past.
QString ofMeasured(const QString& measured);
/// Limits in words: "192 kbps or more".
QString ofExpected(const QString& expected);

/// The arguments of a tool that a fix gives, to be typed as they stand; empty where it gives none.
QString arguments(const QString& fix);
/// What an operator takes from a fix to use it: these arguments, else the sentence.
QString toCopy(const QString& fix);

} // namespace vantroque::ShortTexts
