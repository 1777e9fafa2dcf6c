#pragma once

#include <QImage>
#include <QRectF>
#include <QString>

#include <random>
#include <vector>

/// Pictures with text whose words and places are known.
namespace vantroque::TextScenes {

using Random = std::mt19937;

/// Two sets that share no background, typeface or seed: thresholds are chosen on one, figures that
/// are to be believed come from the other.
enum class Set { tuning, heldOut };

enum class Kind { super, shortSuper, legal };

/// A line as it was drawn.
struct DrawnLine {
    Kind kind = Kind::super;
    QString text;
    double size = 0; ///< Of the type, as a fraction of the picture's height.
    QRectF ink;      ///< In fractions of the picture.
};

/// A picture of text to lay over others.
struct Overlay {
    QImage image; ///< Transparent where nothing is drawn.
    std::vector<DrawnLine> lines;
};

/// A background larger than the picture, so that it can be moved behind the text.
struct Background {
    QString name;
    QImage texture;
    QPointF step; ///< Movement from frame to frame, in pixels.

    QImage frame(QSize size, int index) const;
};

/// How many kinds of background a set has.
int backgroundCount(Set set);
Background background(Set set, int kind, QSize size, bool moves, Random& random);

struct Wanted {
    bool super = false;
    bool shortSuper = false;
    int legalLines = 0;
    // The type of legal lines, as a fraction of the picture's height.
    double smallestLegal = 0.0155;
    double largestLegal = 0.025;
};
/// Text that a person could read over that background.
Overlay overlay(Set set, const Wanted& wanted, const Background& background, QSize size,
                Random& random);

/// Pictures of a clip with one text, coded as for delivery and scaled as for the scan of a file.
struct Scene {
    QString background;
    std::vector<QImage> pictures;
    std::vector<DrawnLine> lines;
};
/// `frames` pictures drawn at `size` over a background of that kind.
Scene scene(Set set, int kind, QSize size, bool moves, const Wanted& wanted, int frames,
            Random& random);

/// A slate, and what it states.
struct Slate {
    QImage image;
    QString adID;
    int seconds = 0;
    QString length; ///< As it is written.
};
Slate slate(Set set, Random& random);

} // namespace vantroque::TextScenes
