#pragma once

#include "Records/Report.h"

/// Words of a report that are the same in every form of it: text, paper, window. Pure.
namespace vantroque::ReportWords {

/// The verdict of a report in a word, and what it means for the eye.
struct Word {
    QString text;
    Verdict verdict = Verdict::info;
};

/// "PASS", "PASS*", "FAIL"; "MEETS" or "BELOW" for advice; that of picture and sound as below.
Word of(const ProfileReport& report);
/// "OK" or "REVIEW": what belongs to no platform refuses nothing.
Word ofSection(const ProfileReport& report);

/// What was measured, in one line; empty without any figure.
QString measurements(const Measurements& measurements);

} // namespace vantroque::ReportWords
