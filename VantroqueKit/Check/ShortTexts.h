#pragma once

#include <QString>

/// The texts of a row where title, limit and place stand beside them anyway. Pure.
namespace vantroque::ShortTexts {

/// Without an explanation in brackets at its end, and without what a text in the picture is past.
QString ofMeasured(const QString& measured);
/// Limits in words: "192 kbps or more".
QString ofExpected(const QString& expected);

/// What an operator takes from a fix to use it: the arguments of the tool where it names any, else
/// the sentence.
QString toCopy(const QString& fix);

} // namespace vantroque::ShortTexts
