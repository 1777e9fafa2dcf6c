#include "PhotographClips.h"

#include "Support/SceneChance.h"
#include "Support/SceneWords.h"

#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <memory>

namespace vantroque::TextQuality {

using namespace Qt::StringLiterals;
using TextScenes::between;
using TextScenes::pick;
using TextScenes::Random;

namespace {

/// A photograph is half as large again as the picture, so that a camera can move over it.
constexpr QSize photographSize(1920, 1080);

/// Of the package lomiri-wallpapers-16.04: a clock, a flight of steps, leaves, a fence, a fruit,
/// brushes, a drum, hills, a wall with dogs, a brook, rocks, dandelions, a sunset, a mast.
QImage photograph(int number)
{
    static const QStringList names{u"friends_by_Aitzol_Berasategi"_s,
                                   u"life_by_Aitzol_Berasategi"_s,
                                   u"Wine_by_Jakkub_Mede"_s,
                                   u"Picture_1A_by_freespace"_s,
                                   u"picosdeeuropa_by_Aitzol_Berasategi"_s,
                                   u"Dragonfly_by_Bolly"_s,
                                   u"greentock_by_Peter_Nerlich"_s,
                                   u"aitzgorri_by_Aitzol_Berasategi"_s,
                                   u"seeding_by_Clements_Engelhardt"_s,
                                   u"Picture_0B_by_freespace"_s,
                                   u"sunset_by_Aitzol_Berasategi"_s,
                                   u"Bridge_by_Sander_Klootwijk"_s};
    const QString path =
        u"/usr/share/backgrounds/%1.jpg"_s.arg(names[number % static_cast<int>(names.size())]);
    const QImage image(path);
    if (image.isNull())
        qFatal("%s is not there: scripts/install-packages bench", qPrintable(path));
    const QImage covering =
        image.scaled(photographSize, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QRect middle((covering.width() - photographSize.width()) / 2,
                       (covering.height() - photographSize.height()) / 2, photographSize.width(),
                       photographSize.height());
    return covering.copy(middle).convertToFormat(QImage::Format_RGB32);
}

/// What a camera sees of a photograph, from its first frame to its last.
struct Camera {
    QRectF from;
    QRectF to;

    QRectF at(int frame) const
    {
        const double part = double(frame) / (clipFrames - 1);
        const auto between = [part](double a, double b) { return a + part * (b - a); };
        return {between(from.x(), to.x()), between(from.y(), to.y()),
                between(from.width(), to.width()), between(from.height(), to.height())};
    }
    QImage picture(const QImage& photograph, int frame) const
    {
        QImage picture(clipSize, QImage::Format_RGB32);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(picture.rect()), photograph, at(frame));
        return picture;
    }
    /// Where a part of the photograph is in the picture, in fractions.
    QRectF place(const QRectF& part, int frame) const
    {
        const QRectF seen = at(frame);
        return {(part.x() - seen.x()) / seen.width(), (part.y() - seen.y()) / seen.height(),
                part.width() / seen.width(), part.height() / seen.height()};
    }
};

const QRectF standing(320, 180, 1280, 720);
/// 5 % of the width a second: twice what a text that is held may move.
const Camera pan{QRectF(40, 200, 1280, 720), QRectF(440, 180, 1280, 720)};
const Camera zoom{QRectF(0, 0, 1920, 1080), QRectF(320, 180, 1280, 720)};
const Camera still{standing, standing};

/// The front of a building, with rows of bricks and windows, lit as the photograph is.
void drawFacade(QImage& photograph, Random& random)
{
    QPainter painter(&photograph);
    const QRect front(300, 120, 1300, photographSize.height() - 120);
    const QColor brick = QColor::fromHsv(between(random, 5, 30), between(random, 60, 150), 150);
    painter.fillRect(front, brick);
    for (int y = front.top(); y < front.bottom(); y += 14)
        for (int x = front.left() - (y / 14 % 2) * 20; x < front.right(); x += 40)
            painter.fillRect(x + 1, y + 1, 38, 12, brick.lighter(between(random, 80, 118)));
    for (int y = front.top() + 50; y + 150 < front.bottom(); y += 210)
        for (int x = front.left() + 50; x + 100 < front.right(); x += 160) {
            painter.fillRect(x - 6, y - 6, 112, 162, QColor(230, 226, 214));
            painter.fillRect(x, y, 100, 150, QColor(40, 52, 66).lighter(between(random, 80, 190)));
            painter.fillRect(x + 47, y, 6, 150, QColor(230, 226, 214));
            painter.fillRect(x, y + 60, 100, 6, QColor(230, 226, 214));
        }
}

struct Drawn {
    QString text;
    QRectF place; ///< In the photograph.
};

/// A board with a name on it, seen a little from the side.
Drawn drawSign(QImage& photograph, Random& random)
{
    const QString text =
        pick(u"BAKERY|Harbour Books|PHARMACY|Corner Cafe|FLOWERS"_s.split(u'|'), random);
    const QColor board = QColor::fromHsv(between(random, 0, 359), 170, 90);
    const QPointF corner(between(random, 620.0, 760.0), 420);
    QTransform seen;
    seen.translate(corner.x(), corner.y());
    seen.shear(0, between(random, -0.06, 0.06));
    QFont font(pick(faces(TextScenes::Set::heldOut), random).family);
    font.setPixelSize(between(random, 54, 72));
    font.setWeight(QFont::Bold);
    QPainterPath words;
    words.addText(0, 0, font, text);
    QPainter painter(&photograph);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(seen);
    painter.fillRect(words.boundingRect().adjusted(-40, -24, 40, 24), board);
    painter.fillPath(words, QColor(245, 238, 220));
    return {text, seen.mapRect(words.boundingRect())};
}

/// A carton on a table, with a name and a line of small print.
std::vector<Drawn> drawCarton(QImage& photograph, Random& random)
{
    const QRectF front(1000, 300, 360, 470);
    const QColor color = QColor::fromHsv(between(random, 0, 359), 150, 190);
    QPainter painter(&photograph);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(front, color);
    painter.fillRect(QRectF(front.right(), front.top() + 20, 70, front.height() - 20),
                     color.darker(150));
    std::vector<Drawn> drawn;
    const auto print = [&](const QString& text, int size, double y) {
        QFont font(u"Lato"_s);
        font.setPixelSize(size);
        font.setWeight(QFont::Bold);
        QPainterPath words;
        words.addText(0, 0, font, text);
        words.translate(front.center().x() - words.boundingRect().center().x(), y);
        painter.fillPath(words, Qt::white);
        drawn.push_back({text, words.boundingRect()});
    };
    print(pick(u"OATLY HILLS|Sunmill|GOLDEN RICE|Morning Mix"_s.split(u'|'), random), 48,
          front.top() + 130);
    print(u"Whole grain cereal"_s, 30, front.top() + 200);
    return drawn;
}

struct Scene {
    std::vector<QImage> photographs; ///< One after the other, each as long as the others.
    Camera camera;
    std::vector<int> flashes; ///< Frames that are white.

    QImage frame(int index) const
    {
        if (std::ranges::find(flashes, index) != flashes.end()) {
            QImage white(clipSize, QImage::Format_RGB32);
            white.fill(QColor(235, 235, 235));
            return white;
        }
        const auto count = static_cast<int>(photographs.size());
        return camera.picture(photographs[static_cast<std::size_t>(index * count / clipFrames)],
                              index);
    }
};

/// A text and when it is there.
struct Title {
    TextScenes::Overlay overlay;
    int first = 0;
    int last = 0;
};

/// Supers, and legal lines whose type has 8 to 12 pixels of the pictures that are read.
Title title(const Scene& scene, const TextScenes::Wanted& wanted, int first, int last,
            Random& random)
{
    TextScenes::Background behind;
    behind.texture = scene.frame((first + last) / 2);
    return {TextScenes::overlay(TextScenes::Set::heldOut, wanted, behind, clipSize, random), first,
            last};
}

struct Plan {
    Scene scene;
    std::vector<Title> titles;
    std::vector<PhotographClip::Sign> signs;
    QString kind;
};

TextScenes::Wanted small(bool super, int legalLines)
{
    constexpr double readHeight = 540;
    return {.super = super,
            .legalLines = legalLines,
            .smallestLegal = 8 / readHeight,
            .largestLegal = 12 / readHeight};
}

Plan make(int kind, int number, Random& random)
{
    QImage image = photograph(number);
    const auto signsOf = [](const std::vector<Drawn>& drawn, const Camera& camera) {
        std::vector<PhotographClip::Sign> signs;
        for (const Drawn& each : drawn)
            signs.push_back({each.text, [place = each.place, camera](int frame) {
                                 return camera.place(place, frame);
                             }});
        return signs;
    };
    const int first = 24 + number % 11;
    const int last = 118 + number % 7;
    Plan plan;
    switch (kind) {
    case 0:
        plan = {{{image}, pan, {}}, {}, {}, u"panned"_s};
        plan.titles = {title(plan.scene, small(true, 1), first, last, random)};
        break;
    case 1:
        drawFacade(image, random);
        plan = {{{image}, zoom, {}}, {}, {}, u"front of a building, zoomed"_s};
        plan.titles = {title(plan.scene, small(true, 2), first, last, random)};
        break;
    case 2: {
        const auto sign = drawSign(image, random);
        plan = {{{image}, pan, {}}, {}, signsOf({sign}, pan), u"shop sign, panned"_s};
        plan.titles = {title(plan.scene, small(false, 1), first, last, random)};
        break;
    }
    case 3: {
        const auto labels = drawCarton(image, random);
        plan = {{{image}, still, {}}, {}, signsOf(labels, still), u"packaging, held still"_s};
        plan.titles = {title(plan.scene, small(false, 2), first, last, random)};
        break;
    }
    case 4:
        plan = {{{image, photograph(number + 5), photograph(number + 3)}, pan, {60, 61, 98}},
                {},
                {},
                u"cuts and flashes"_s};
        plan.titles = {title(plan.scene, small(true, 1), first, last, random)};
        break;
    default:
        plan = {{{image}, pan, {}}, {}, {}, u"credits, one after the other"_s};
        // Four samples, so that each surely counts as text that is held for a second.
        for (int card = 0; card < 2; ++card)
            plan.titles.push_back(title(plan.scene, {.super = true, .shortSuper = true},
                                        6 + 70 * card, 69 + 70 * card, random));
    }
    return plan;
}

} // namespace

PhotographClip photographClip(int kind, int number, bool withText)
{
    Random random(990'000 + 100 * kind + number);
    auto plan = std::make_shared<Plan>(make(kind, number, random));
    if (!withText)
        plan->titles.clear();
    PhotographClip clip{.kind = plan->kind, .frame = {}, .lines = {}, .signs = plan->signs};
    for (const Title& title : plan->titles)
        for (const auto& line : title.overlay.lines)
            clip.lines.push_back({line, title.first, title.last});
    clip.frame = [plan](int index) {
        QImage picture = plan->scene.frame(index);
        QPainter painter(&picture);
        for (const Title& title : plan->titles)
            if (index >= title.first && index <= title.last)
                painter.drawImage(0, 0, title.overlay.image);
        return picture;
    };
    return clip;
}

} // namespace vantroque::TextQuality
