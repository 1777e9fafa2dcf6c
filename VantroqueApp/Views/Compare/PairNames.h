#pragma once

#include <QString>

#include <utility>

/// Names of two versions, told apart in few words.
namespace vantroque::PairNames {

/// What the names do not share, in whole words: "v07.mov" and "v08.mov" of two versions of a spot.
/// Both names whole where nothing or too little would be left of one.
std::pair<QString, QString> apart(const QString& a, const QString& b);

} // namespace vantroque::PairNames
