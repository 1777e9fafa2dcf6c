#include "VantroqueApp/Views/Player/ScopesPanel.h"

#include "Picture/ScopeRenderer.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 12;
constexpr int gap = 8;
constexpr int gutter = 28; ///< For the digits of a scale.
constexpr int titleHeight = 20;
constexpr int scopeWidth = 160;
constexpr int rowHeight = 80;   ///< Of those with a scale, and of all in a strip,
constexpr int stripWidth = 116; ///< where three of them fit into the narrowest pane.
constexpr int deskHeight = 128; ///< Of those on a desk, which show as they are drawn,
constexpr int deskWidth = 256;  ///< and of the vectorscope there,
constexpr int deskSquare = 136; ///< which lies in a larger card.
constexpr int deskBetween = 16;

QString titleOf(bool parade)
{
    return parade ? u"RGB parade"_s : u"Waveform"_s;
}

void paintImage(QPainter& painter, const QRect& card, const QImage& image, const QRect& place)
{
    constexpr double radius = 4;
    painter.save();
    QPainterPath path;
    path.addRoundedRect(card, radius, radius);
    painter.setClipPath(path);
    painter.fillRect(card, Theme::dark().readout);
    const double scale =
        place.width() * painter.device()->devicePixelRatio() / std::max(image.width(), 1);
    const bool isWhole = scale >= 1 && scale == std::floor(scale);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isWhole);
    painter.drawImage(place, image);
    painter.restore();
    painter.setPen(Theme::current().hairline);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

void paintDigits(QPainter& painter, const QRect& place)
{
    constexpr int height = 12;
    constexpr int air = 4;
    for (const int percent : {100, 50, 0}) {
        const int row = ScopeRenderer::row(static_cast<float>(percent), place.height());
        Type::draw(
            painter,
            QRect(place.left() - gutter, place.top() + row - height / 2, gutter - air, height),
            QString::number(percent), Type::mono(Type::digits), Theme::current().text2,
            Qt::AlignRight | Qt::AlignVCenter);
    }
}

} // namespace

ScopesPanel::ScopesPanel(ScopeFeed& scopes, QWidget* parent) : QWidget(parent), m_scopes(scopes)
{
    setAccessibleName(u"Scopes"_s);
    connect(&scopes, &ScopeFeed::imagesChanged, this, qOverload<>(&QWidget::update));
    connect(&scopes, &ScopeFeed::optionsChanged, this, [this] {
        fit();
        Q_EMIT scopesChanged();
    });
    fit();
}

void ScopesPanel::setForm(Form form)
{
    m_form = form;
    fit();
}

bool ScopesPanel::hasScopes() const
{
    return !scopes().empty();
}

/// In a row all are of one height.
QSize ScopesPanel::sizeOf(Kind kind) const
{
    const bool isSquare = kind == Kind::vectorscope;
    if (m_form == Form::desk)
        return isSquare ? QSize(deskHeight, deskHeight) : QSize(deskWidth, deskHeight);
    if (isSquare)
        return m_form == Form::strip ? QSize(rowHeight, rowHeight) : QSize(scopeWidth, scopeWidth);
    return {m_form == Form::strip ? stripWidth : scopeWidth - gutter, rowHeight};
}

/// Before the first frame the scale alone.
QImage ScopesPanel::imageOf(Kind kind) const
{
    const ScopeFeed::ScopeImages& images = m_scopes.scopeImages();
    switch (kind) {
    case Kind::waveform:
        return images.waveform.isNull() ? ScopeRenderer::emptyWaveform(256, 128) : images.waveform;
    case Kind::parade:
        return images.parade.isNull() ? ScopeRenderer::emptyParade(384, 128) : images.parade;
    case Kind::vectorscope: break;
    }
    return images.vectorscope.isNull() ? ScopeRenderer::emptyVectorscope(128, m_scopes.matrix())
                                       : images.vectorscope;
}

std::vector<ScopesPanel::Scope> ScopesPanel::scopes() const
{
    const ScopeOptions& options = m_scopes.scopeOptions();
    std::vector<Scope> all;
    QPoint at(padding, gap);
    for (const auto& [isOn, kind] :
         {std::pair(options.waveform, Kind::waveform), std::pair(options.parade, Kind::parade),
          std::pair(options.vectorscope, Kind::vectorscope)}) {
        if (!isOn)
            continue;
        const bool hasCard = m_form == Form::desk && kind == Kind::vectorscope;
        const int inset = hasCard ? (deskSquare - deskHeight) / 2 : 0;
        const bool hasGutter = kind != Kind::vectorscope;
        const QSize size = sizeOf(kind);
        const QPoint corner = at + QPoint((hasGutter ? gutter : 0) + inset, titleHeight + inset);
        all.push_back({kind, imageOf(kind), QRect(corner, size)});
        const int between = m_form == Form::desk ? deskBetween : padding;
        at += m_form == Form::column
                  ? QPoint(0, titleHeight + size.height() + gap)
                  : QPoint((hasGutter ? gutter : 0) + size.width() + 2 * inset + between, 0);
    }
    return all;
}

void ScopesPanel::fit()
{
    QRect all;
    for (const Scope& scope : scopes())
        all |= scope.place;
    const int least = all.bottom() + 1 + gap;
    switch (m_form) {
    case Form::column:
        setMinimumSize(scopeWidth + 2 * padding, least);
        setMaximumSize(minimumWidth(), QWIDGETSIZE_MAX);
        break;
    case Form::strip:
        setMinimumSize(0, least);
        setMaximumSize(QWIDGETSIZE_MAX, least);
        break;
    case Form::desk: {
        const bool isSquareLast = m_scopes.scopeOptions().vectorscope;
        const int inset = isSquareLast ? (deskSquare - deskHeight) / 2 : 0;
        setFixedSize(hasScopes() ? all.right() + 1 + inset : 0,
                     gap + titleHeight + deskSquare + gap);
        break;
    }
    }
    update();
}

void ScopesPanel::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::current();
    QPainter painter(this);
    if (m_form != Form::desk) {
        painter.fillRect(rect(), theme.sidebar);
        painter.fillRect(m_form == Form::strip ? QRect(0, height() - 1, width(), 1)
                                               : QRect(0, 0, 1, height()),
                         theme.hairline);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Scope& scope : scopes())
        paint(painter, scope);
}

void ScopesPanel::paint(QPainter& painter, const Scope& scope) const
{
    const bool isSquare = scope.kind == Kind::vectorscope;
    const int inset = isSquare && m_form == Form::desk ? (deskSquare - deskHeight) / 2 : 0;
    const QRect card = scope.place.adjusted(-inset, -inset, inset, inset);
    const QRect title(card.left(), card.top() - titleHeight, card.width(), titleHeight - 4);
    const QFont font = Type::text(Type::badge, QFont::Medium);
    Type::draw(painter, title, isSquare ? u"Vectorscope"_s : titleOf(scope.kind == Kind::parade),
               font, Theme::current().text2);
    paintImage(painter, card, scope.image, scope.place);
    if (isSquare)
        return paintLetters(painter, scope.place);
    Type::draw(painter, title, u"%"_s, font, Theme::current().text2,
               Qt::AlignRight | Qt::AlignVCenter);
    paintDigits(painter, scope.place);
}

/// Outside of the crosses, seen from the middle.
void ScopesPanel::paintLetters(QPainter& painter, const QRect& place) const
{
    constexpr QSize room(18, 12);
    constexpr double away = 12;
    const QPointF middle = QRectF(place).center();
    for (const auto& [letters, target] : ScopeRenderer::targets(m_scopes.matrix())) {
        const QPointF cross = place.topLeft() + target * place.width();
        const QPointF outward = cross - middle;
        const double length = std::hypot(outward.x(), outward.y());
        QRect box(QPoint(), room);
        box.moveCenter((cross + outward * away / std::max(length, 1.0)).toPoint());
        Type::draw(painter, box, letters, Type::text(Type::digits, QFont::Medium),
                   Theme::dark().text1, Qt::AlignCenter);
    }
}

} // namespace vantroque
