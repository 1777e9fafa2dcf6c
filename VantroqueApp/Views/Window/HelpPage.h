#pragma once

#include <QString>
#include <QUrl>

#include <vector>

namespace vantroque {

/// A page for the operator, among the resources.
struct HelpPage {
    QString title;
    QUrl file;

    /// Those that are installed.
    static std::vector<HelpPage> all();
};

} // namespace vantroque
