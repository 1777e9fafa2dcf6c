#pragma once

#include <QString>
#include <QStringList>

/// What people write and read without a thought, and dictionaries leave out. Words have straight
/// apostrophes, languages are bare codes. Pure.
namespace vantroque::SpellingHabits {

/// Other forms of a word, one of which a dictionary may have: "cafe" for "café".
QStringList otherForms(const QString& word, const QString& language);

/// What a word may be whole that ends at an apostrophe: "going" for "goin'".
QStringList withEnd(const QString& word, const QString& language);
/// What a word may be whole that begins after an apostrophe, or the rest of it: "eine" for "'ne",
/// "is" for "'tis".
QStringList withBeginning(const QString& word, const QString& language);

/// Letters that stand after the last apostrophe of a word and belong to no dictionary: "'s".
bool isEnding(const QString& letters, const QString& language);
/// Letters that stand before an apostrophe and are a word of their own: "l'".
bool isArticle(const QString& letters, const QString& language);

/// A sound without a vowel, however long it is drawn out: "psst", "Brrr".
bool isSound(const QString& word);
/// What is a word when a point follows: "Dr", in German "bzw", and any single letter.
bool isAbbreviation(const QString& word, const QString& language);

} // namespace vantroque::SpellingHabits
