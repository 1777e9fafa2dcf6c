#include "Support/SceneChance.h"
#include "Support/SceneWords.h"

#include <QPainter>
#include <QStringList>

#include <array>

namespace vantroque::TextScenes {

using namespace Qt::StringLiterals;

Slate slate(Set set, Random& random)
{
    static constexpr std::array sizes{QSize(1280, 720), QSize(1920, 1080), QSize(2560, 1440),
                                      QSize(3840, 2160)};
    static constexpr std::array lengths{6, 10, 15, 20, 30, 45, 60, 90, 120};
    const QSize size = pick(sizes, random);
    Slate slate{QImage(size, QImage::Format_RGB32), {}, pick(lengths, random), {}};
    for (int i = 0; i < 4; ++i)
        slate.adID += QChar(u'A' + between(random, 0, 25));
    for (int i = 0; i < 7; ++i)
        slate.adID += QChar(u'0' + between(random, 0, 9));
    slate.adID += u'H';

    const bool light = chance(random, 0.25);
    const int gray = light                 ? between(random, 170, 225)
                     : chance(random, 0.5) ? 0
                                           : between(random, 10, 60);
    slate.image.fill(QColor(gray, gray, gray));
    const Face face = pick(faces(set), random);
    const auto two = [](int number) { return u"%1"_s.arg(number, 2, 10, QChar(u'0')); };
    const QString minutes = QString::number(slate.seconds / 60);
    const QString clock =
        slate.seconds < 60
            ? pick(QStringList{u":"_s + two(slate.seconds), u":"_s + two(slate.seconds),
                               u"0:"_s + two(slate.seconds), u"00:"_s + two(slate.seconds),
                               QString::number(slate.seconds) + u" SEC"_s},
                   random)
            : pick(QStringList{minutes + u":"_s + two(slate.seconds % 60),
                               u"0"_s + minutes + u":"_s + two(slate.seconds % 60),
                               u":"_s + QString::number(slate.seconds)},
                   random);
    slate.length = clock;
    const int place = between(random, 0, 3);
    const QString label =
        pick(QStringList{u"LENGTH"_s, u"DURATION"_s, u"TRT"_s, u"Length"_s}, random);
    QList<std::pair<QString, QString>> fields{
        {pick(QStringList{u"AD-ID"_s, u"ISCI"_s, u"Ad-ID"_s}, random), slate.adID},
        {u"CLIENT"_s, phrase(set, random)},
        {u"TITLE"_s, phrase(set, random)},
        {u"AGENCY"_s, phrase(set, random)},
        {u"DATE"_s, u"03/14/2024"_s},
    };
    if (place <= 1)
        fields.insert(between(random, 1, 5), {label, clock});
    const double height = between(random, 0.022, 0.055) * size.height();
    QFont font(face.family);
    font.setWeight(static_cast<QFont::Weight>(face.weight));
    font.setPixelSize(static_cast<int>(height));
    QPainter painter(&slate.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(light ? Qt::black : QColor(235, 235, 235));
    double y = 0.2 * size.height();
    const bool columns = chance(random, 0.5);
    for (const auto& [name, value] : fields) {
        if (columns) {
            painter.drawText(QPointF(0.12 * size.width(), y), name + u':');
            painter.drawText(QPointF(0.35 * size.width(), y), value);
        } else {
            painter.drawText(QPointF(0.15 * size.width(), y), name + u": "_s + value);
        }
        y += 2.1 * height;
    }
    if (place == 2) // Alone in a corner, larger.
        font.setPixelSize(static_cast<int>(1.6 * height));
    painter.setFont(font);
    if (place == 2)
        painter.drawText(QPointF(0.78 * size.width(), 0.88 * size.height()), clock);
    if (place == 3) // Alone on a line of the list.
        painter.drawText(QPointF(0.15 * size.width(), y), clock);
    return slate;
}

} // namespace vantroque::TextScenes
