#pragma once

#include "Base/FileUrl.h"

#include <QStringList>

/// Which files are taken for films where nobody names them one by one: from a folder, dropped on
/// the window, or in its panel.
namespace vantroque::FilmTypes {

/// In small letters, without the dot.
const QStringList& extensions();
/// By the name alone, whatever its case.
bool isFilm(const FileUrl& url);

} // namespace vantroque::FilmTypes
