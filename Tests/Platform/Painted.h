#pragma once

#include "VantroquePlatform/Recognition/TesseractRecognizer.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QString>
#include <QStringList>

#include <memory>

namespace vantroque {

/// Text to paint, its base line beginning at a place.
struct PaintedText {
    QString text;
    int size = 40;
    QPoint place;
    QColor color = Qt::white;
    const char* family = "DejaVu Sans";
};

/// A picture of one color. Creates the application that fonts need.
QImage plain(QSize size, QColor color);
/// Leaves and the like: much detail and no text.
QImage foliage(QSize size, unsigned seed = 1);
/// The picture with the text on it.
QImage with(QImage picture, const PaintedText& text);
/// Where the text's ink is, in pixels.
QRect inkOf(const PaintedText& text, QSize picture);

/// The engine at times takes a letter for its capital; which one it is is not what tests are about.
QStringList lowerCase(QStringList texts);

/// A recognizer of English.
std::unique_ptr<TesseractRecognizer> recognizer();
std::vector<RecognizedLine>
linesIn(const QImage& picture, TextRecognizer& engine,
        TextRecognizer::Subject subject = TextRecognizer::Subject::frame);
QStringList textsIn(const QImage& picture, TextRecognizer& engine,
                    TextRecognizer::Subject subject = TextRecognizer::Subject::frame);

} // namespace vantroque
