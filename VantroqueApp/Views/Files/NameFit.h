#pragma once

#include <QFontMetrics>
#include <QString>

#include <vector>

/// Names of files where there is no room for them.
namespace vantroque::NameFit {

/// Without its middle, so that version and extension stay. Where that would make it look like one
/// of those beside it, what differs from them stays instead.
QString shortened(const QString& name, const std::vector<QString>& beside,
                  const QFontMetrics& metrics, int width);

} // namespace vantroque::NameFit
