#pragma once

#include <QPoint>
#include <QStringList>

#include <vector>

class QWidget;

namespace vantroque {

/// A text, and where it begins on the widget that was asked, on its base line.
struct PaintedText {
    QString text;
    QPoint place;
};

/// The texts that a widget paints with all that is in it.
std::vector<PaintedText> paintedTexts(QWidget& widget);

/// The words that a widget paints with all that is in it, by whatever means, and as they are
/// shortened: what a person could read.
QStringList paintedWords(QWidget& widget);

} // namespace vantroque
