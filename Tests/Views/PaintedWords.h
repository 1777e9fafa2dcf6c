#pragma once

#include <QStringList>

class QWidget;

namespace vantroque {

/// The words that a widget paints with all that is in it, by whatever means, and as they are
/// shortened: what a person could read.
QStringList paintedWords(QWidget& widget);

} // namespace vantroque
