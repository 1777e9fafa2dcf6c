#include "VantroqueApp/Views/Style/Icons.h"

#include <QAbstractButton>
#include <QFile>
#include <QHash>
#include <QIconEngine>
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

/// Drawn when it is asked for, since the look may be another one by then. What is wider than high
/// has its room at the right.
class ToolIcon : public QIconEngine {
public:
    ToolIcon(QString name, QColor Theme::*ink) : m_name(std::move(name)), m_ink(ink) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        painter->drawPixmap(
            rect, pixmap(rect.size() * painter->device()->devicePixelRatio(), mode, state));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        const Theme& theme = Theme::current();
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter(&pixmap).drawPixmap(
            0, 0,
            tinted(m_name, mode == QIcon::Disabled ? theme.text3 : theme.*m_ink, size.height(), 1));
        return pixmap;
    }
    QIconEngine* clone() const override { return new ToolIcon(*this); }

private:
    const QString m_name;
    QColor Theme::*m_ink;
};

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

QIcon tool(const QString& name, QColor Theme::*ink)
{
    return QIcon(new ToolIcon(name, ink));
}

void give(QAbstractButton& button, const QString& name, int size, QColor Theme::*ink)
{
    constexpr int gap = 4; // as much again as the style leaves
    button.setIcon(tool(name, ink));
    button.setIconSize({button.text().isEmpty() ? size : size + gap, size});
}

QIcon application()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 128})
        icon.addPixmap(rendered(source(u"vantroque"_s), size, 1));
    return icon;
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
    for (const Verdict verdict : {Verdict::fail, Verdict::warn})
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
