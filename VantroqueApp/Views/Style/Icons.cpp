#include "VantroqueApp/Views/Style/Icons.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <algorithm>

namespace vantroque::Icons {

using namespace Qt::StringLiterals;

namespace {

QByteArray source(const QString& name)
{
    QFile file(u":/vantroque/Icons/%1.svg"_s.arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Line icons have one stroke colour, whatever it is in the file.
QByteArray recolored(const QString& name, const QColor& color)
{
    static const QRegularExpression stroke(u"(stroke|fill)=\"#[0-9A-Fa-f]{6}\""_s);
    QString svg = QString::fromUtf8(source(name));
    return svg.replace(stroke, uR"(\1="%1")"_s.arg(color.name()))
        .replace(u"currentColor"_s, color.name())
        .toUtf8();
}

QPixmap rendered(const QByteArray& svg, int size, double ratio)
{
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(svg).render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

template<typename Svg>
QPixmap kept(const QString& name, const QString& variant, int size, double ratio, Svg svg)
{
    static QHash<QString, QPixmap> cache;
    const QString key = u"%1 %2 %3 %4"_s.arg(name, variant).arg(size).arg(ratio);
    auto found = cache.find(key);
    if (found == cache.end())
        found = cache.insert(key, rendered(svg(), size, ratio));
    return *found;
}

void drawPixmap(QPainter& painter, const QRectF& rect, const QPixmap& pixmap)
{
    painter.drawPixmap(rect.topLeft(), pixmap);
}

QString verdictName(Verdict verdict)
{
    switch (verdict) {
    case Verdict::pass: return u"checkmark.circle"_s;
    case Verdict::warn: return u"exclamationmark.triangle"_s;
    case Verdict::fail: return u"exclamationmark.octagon"_s;
    case Verdict::info: break;
    }
    return u"info.circle"_s;
}

/// On light ground the pale fills need an edge.
QByteArray outlined(QByteArray svg)
{
    if (Theme::current().isDark)
        return svg;
    const QColor edge = Theme::current().glyphOutline;
    static const QRegularExpression fill(u"fill=\"(#(?!17181C)[0-9A-Fa-f]{6})\""_s);
    return QString::fromUtf8(svg)
        .replace(fill,
                 uR"(fill="\1" stroke="%1" stroke-opacity="%2" stroke-width="1")"_s.arg(edge.name())
                     .arg(edge.alphaF()))
        .toUtf8();
}

} // namespace

QPixmap tinted(const QString& name, const QColor& color, int size, double deviceRatio)
{
    return kept(name, color.name(), size, deviceRatio, [&] { return recolored(name, color); });
}

QIcon tool(const QString& name, const QColor& color, int size)
{
    QIcon icon;
    for (const double ratio : {1.0, 2.0}) {
        icon.addPixmap(tinted(name, color, size, ratio));
        icon.addPixmap(tinted(name, Theme::current().text3, size, ratio), QIcon::Disabled);
    }
    return icon;
}

QIcon tool(const QString& name, int size)
{
    return tool(name, Theme::current().text1, size);
}

void draw(QPainter& painter, const QRectF& rect, const QString& name, const QColor& color)
{
    drawPixmap(
        painter, rect,
        tinted(name, color, static_cast<int>(rect.width()), painter.device()->devicePixelRatio()));
}

void drawVerdict(QPainter& painter, const QRectF& rect, Verdict verdict)
{
    const QString name = verdictName(verdict);
    if (verdict == Verdict::info)
        return draw(painter, rect, name, Theme::current().text2);
    const QString look = Theme::current().isDark ? u"dark"_s : u"light"_s;
    drawPixmap(painter, rect,
               kept(name + u".fill"_s, look, static_cast<int>(rect.width()),
                    painter.device()->devicePixelRatio(),
                    [&] { return outlined(source(name + u".fill"_s)); }));
}

void drawVerdictOutline(QPainter& painter, const QRectF& rect, Verdict verdict)
{
    draw(painter, rect, verdictName(verdict), Theme::dark().of(verdict));
}

Verdict signOf(const FileReport& report)
{
    if (!report.profiles.empty())
        return report.summaryVerdict();
    const auto anyIs = [&report](Verdict verdict) {
        return report.sections
               && std::ranges::any_of(*report.sections, [verdict](const ProfileReport& section) {
                      return section.displayVerdict() == verdict;
                  });
    };
    for (const Verdict verdict : {Verdict::fail, Verdict::warn, Verdict::pass})
        if (anyIs(verdict))
            return verdict;
    return Verdict::info;
}

QString word(Verdict verdict)
{
    switch (verdict) {
    case Verdict::pass: return u"Pass"_s;
    case Verdict::warn: return u"Warning"_s;
    case Verdict::fail: return u"Fail"_s;
    case Verdict::info: break;
    }
    return u"Information"_s;
}

} // namespace vantroque::Icons
