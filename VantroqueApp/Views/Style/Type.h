#pragma once

#include <QFont>
#include <QString>

class QLabel;
class QPainter;
class QRect;
class QWidget;

/// The one scale of type, in pixels.
namespace vantroque::Type {

constexpr int headline = 20;
constexpr int ring = 15;
constexpr int heading = 14;
constexpr int body = 13;
constexpr int caption = 12;
constexpr int badge = 11;
constexpr int digits = 10;

QFont text(int pixels, QFont::Weight weight = QFont::Normal);
/// For what changes while one looks at it, and for what is typed elsewhere.
QFont mono(int pixels, QFont::Weight weight = QFont::Normal);
/// Small spaced capitals over an instrument.
QFont caps();

enum class Ink { text1, text2, text3 };

/// A label of running text in that role.
QLabel* label(const QString& text, int pixels, QFont::Weight weight, Ink ink,
              QWidget* parent = nullptr);

/// One line, shortened where it does not fit.
void draw(QPainter& painter, const QRect& rect, const QString& text, const QFont& font,
          const class QColor& color, Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter,
          Qt::TextElideMode elide = Qt::ElideRight);

} // namespace vantroque::Type
