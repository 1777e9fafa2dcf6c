#pragma once

#include "Support/TextScenes.h"

#include <QFont>

#include <vector>

/// The typefaces and words of each set.
namespace vantroque::TextScenes {

struct Face {
    QString family;
    int weight = QFont::Normal;
};

const std::vector<Face>& faces(Set set);
/// A few words in a row.
QString phrase(Set set, Random& random);

} // namespace vantroque::TextScenes
