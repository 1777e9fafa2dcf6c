#include "VantroqueApp/Views/Player/ScopesPanel.h"

#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>
#include <QPainterPath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 12;
constexpr int gap = 8;
constexpr int scopeWidth = 160;
constexpr int titleHeight = 20;
constexpr QSize waveformSize(scopeWidth, 80);
constexpr QSize paradeSize(scopeWidth, 53);
constexpr QSize vectorscopeSize(scopeWidth, scopeWidth);
constexpr int rowHeight = 80; ///< Of the scopes in a row.

void paintScope(QPainter& painter, const QRect& place, const QImage& image)
{
    constexpr double radius = 4;
    painter.save();
    QPainterPath card;
    card.addRoundedRect(place, radius, radius);
    painter.setClipPath(card);
    painter.fillRect(place, Theme::dark().readout);
    const double scale =
        place.width() * painter.device()->devicePixelRatio() / std::max(image.width(), 1);
    const bool isWhole = scale >= 1 && scale == std::floor(scale);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isWhole);
    if (!image.isNull())
        painter.drawImage(place, image);
    painter.restore();
    painter.setPen(Theme::current().hairline);
    painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
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

void ScopesPanel::setOrientation(Qt::Orientation orientation)
{
    m_orientation = orientation;
    fit();
}

bool ScopesPanel::hasScopes() const
{
    return !scopes().empty();
}

/// In a row all are of one height.
std::vector<ScopesPanel::Scope> ScopesPanel::scopes() const
{
    std::vector<Scope> all;
    QPoint at(padding, gap);
    const auto add = [&](bool isOn, const QString& title, const QImage& image, QSize size) {
        if (!isOn)
            return;
        const bool row = m_orientation == Qt::Horizontal;
        if (row)
            size.scale(scopeWidth, rowHeight, Qt::KeepAspectRatio);
        all.push_back({title, image, QRect(at + QPoint(0, titleHeight), size)});
        at +=
            row ? QPoint(size.width() + padding, 0) : QPoint(0, titleHeight + size.height() + gap);
    };
    const ScopeOptions& options = m_scopes.scopeOptions();
    const ScopeFeed::ScopeImages& images = m_scopes.scopeImages();
    add(options.waveform, u"Waveform"_s, images.waveform, waveformSize);
    add(options.parade, u"RGB parade"_s, images.parade, paradeSize);
    add(options.vectorscope, u"Vectorscope"_s, images.vectorscope, vectorscopeSize);
    return all;
}

void ScopesPanel::fit()
{
    QRect all;
    for (const Scope& scope : scopes())
        all |= scope.place;
    const bool row = m_orientation == Qt::Horizontal;
    setMinimumSize(row ? QSize(0, all.bottom() + 1 + gap)
                       : QSize(scopeWidth + 2 * padding, all.bottom() + 1 + gap));
    setMaximumHeight(row ? minimumHeight() : QWIDGETSIZE_MAX);
    setMaximumWidth(row ? QWIDGETSIZE_MAX : minimumWidth());
    update();
}

void ScopesPanel::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::current();
    const bool row = m_orientation == Qt::Horizontal;
    QPainter painter(this);
    painter.fillRect(rect(), theme.sidebar);
    painter.fillRect(row ? QRect(0, height() - 1, width(), 1) : QRect(0, 0, 1, height()),
                     theme.hairline);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Scope& scope : scopes()) {
        const QRect title(scope.place.left(), scope.place.top() - titleHeight, scope.place.width(),
                          titleHeight);
        Type::draw(painter, title, scope.title, Type::text(Type::badge, QFont::Medium),
                   theme.text2);
        paintScope(painter, scope.place, scope.image);
    }
}

} // namespace vantroque
