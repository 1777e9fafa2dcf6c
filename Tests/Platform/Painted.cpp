#include "Painted.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <random>

namespace vantroque {

namespace {

/// Fonts need an application, but no screen.
void startApplication()
{
    static int count = 1;
    static char name[] = "tests";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(count, arguments);
}

QPainterPath outline(const PaintedText& text)
{
    startApplication();
    QFont font(QString::fromLatin1(text.family));
    font.setPixelSize(text.size);
    QPainterPath path;
    path.addText(text.place, font, text.text);
    return path;
}

} // namespace

QImage plain(QSize size, QColor color)
{
    startApplication();
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(color);
    return picture;
}

QImage foliage(QSize size, unsigned seed)
{
    QImage picture = plain(size, QColor(20, 40, 15));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    std::mt19937 random(seed);
    const auto between = [&](int low, int high) {
        return std::uniform_int_distribution(low, high)(random);
    };
    for (int i = 0; i < size.width() * size.height() / 150; ++i) {
        painter.save();
        // One draw a statement: compilers differ in which argument of a call comes first.
        const int y = between(0, size.height());
        painter.translate(between(0, size.width()), y);
        painter.rotate(between(0, 359));
        const int value = between(30, 170);
        const int saturation = between(80, 200);
        painter.setBrush(QColor::fromHsv(between(60, 130), saturation, value));
        const int height = between(3, 10);
        painter.drawEllipse(0, 0, between(8, 30), height);
        painter.restore();
    }
    return picture;
}

QImage with(QImage picture, const PaintedText& text)
{
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(outline(text), text.color);
    return picture;
}

QRect inkOf(const PaintedText& text, QSize picture)
{
    return outline(text).boundingRect().toAlignedRect() & QRect({}, picture);
}

QStringList lowerCase(QStringList texts)
{
    for (QString& text : texts)
        text = text.toLower();
    return texts;
}

std::unique_ptr<TesseractRecognizer> recognizer()
{
    auto made = TesseractRecognizer::make({"eng"});
    EXPECT_TRUE(made) << made.error().description.toStdString();
    return std::unique_ptr<TesseractRecognizer>(
        dynamic_cast<TesseractRecognizer*>(made->release()));
}

std::vector<RecognizedLine> linesIn(const QImage& picture, TextRecognizer& engine,
                                    TextRecognizer::Subject subject)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    auto lines = engine.recognize(picture, subject, deadline);
    EXPECT_TRUE(lines) << lines.error().description.toStdString();
    return lines ? *std::move(lines) : std::vector<RecognizedLine>();
}

QStringList textsIn(const QImage& picture, TextRecognizer& engine, TextRecognizer::Subject subject)
{
    QStringList texts;
    for (const RecognizedLine& line : linesIn(picture, engine, subject))
        texts << line.text;
    return texts;
}

} // namespace vantroque
