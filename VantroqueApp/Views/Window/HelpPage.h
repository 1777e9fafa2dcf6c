#pragma once

#include <QString>
#include <QUrl>

#include <vector>

namespace vantroque {

/// A page of the guide for the operator, among the resources.
struct HelpPage {
    QString title;
    QUrl file;

    /// Those that are installed, in the order in which they are read.
    static std::vector<HelpPage> all();
};

} // namespace vantroque
