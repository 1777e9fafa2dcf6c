#include "VantroqueApp/Views/Compare/PairPicture.h"

#include "Framing/GuideBuilder.h"
#include "VantroqueApp/Views/Compare/PairNames.h"
#include "VantroqueApp/Views/Compare/PicturePaint.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr double grabWidth = 24; ///< Width in which the edge is taken hold of.
constexpr double handle = 40;    ///< The disc on it.
constexpr double inset = 12;     ///< Of the labels, in the picture.
constexpr double chipHeight = 26;
constexpr double clear = 80; ///< Labels so near to the edge give way.

QImage pictureOf(const CompareTile& tile)
{
    const auto& shown = tile.pictures().shown();
    return shown ? shown->picture : QImage();
}

/// Where B lies, in A's picture.
QRectF placed(const NormalizedRect& place, const QRectF& in)
{
    return {in.left() + place.x * in.width(), in.top() + place.y * in.height(),
            place.width * in.width(), place.height * in.height()};
}

QFont chipFont()
{
    return Type::text(Type::caption, QFont::Medium);
}

/// Words on a dark ground, beginning or ending at `x`, after a letter or an icon.
QRectF chipRect(const QRectF& picture, const QString& words, bool atRight)
{
    constexpr double sign = 18;
    constexpr double padding = 4;
    const double width =
        padding + sign + 8 + QFontMetricsF(chipFont()).horizontalAdvance(words) + 2 * padding + 2;
    const double left = atRight ? picture.right() - inset - width : picture.left() + inset;
    return {left, picture.top() + inset, width, chipHeight};
}

QRectF drawChip(QPainter& painter, const QRectF& chip, const QString& words)
{
    constexpr double radius = 6;
    constexpr double side = 18;
    constexpr double padding = 4;
    const Theme& theme = Theme::dark();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.ground);
    painter.drawRoundedRect(chip, radius, radius);
    const QRectF sign(chip.left() + padding, chip.top() + padding, side, side);
    Type::draw(painter, chip.adjusted(padding + side + 8, 0, 0, 0).toRect(), words, chipFont(),
               theme.text1);
    return sign;
}

void drawLetter(QPainter& painter, const QRectF& sign, const QString& letter)
{
    constexpr double radius = 4;
    const Theme& theme = Theme::dark();
    painter.setBrush(theme.text1);
    painter.drawRoundedRect(sign, radius, radius);
    painter.setPen(theme.ground);
    painter.setFont(Type::text(Type::badge, QFont::Bold));
    painter.drawText(sign, Qt::AlignCenter, letter);
}

} // namespace

PairPicture::PairPicture(CompareController& compare, ComparePair& pair, QWidget* parent)
    : QWidget(parent), m_compare(compare), m_pair(pair), m_laid([this] { update(); })
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    const auto redraw = qOverload<>(&QWidget::update);
    for (const auto& tile : compare.tiles())
        connect(tile.get(), &CompareTile::pictureChanged, this, redraw);
    connect(&compare, &CompareController::moved, this, &PairPicture::showWords);
    connect(&compare, &CompareController::modeChanged, this, &PairPicture::showWords);
    connect(&compare, &CompareController::guidesChanged, this, &PairPicture::showGuides);
    connect(&compare, &CompareController::tilesChanged, this, [this] {
        const auto& newest = m_compare.tiles().back();
        connect(newest.get(), &CompareTile::pictureChanged, this, qOverload<>(&QWidget::update));
    });
    connect(&pair, &ComparePair::pairChanged, this, &PairPicture::showGuides);
    connect(&pair, &ComparePair::modeChanged, this, &PairPicture::showWords);
    connect(&pair, &ComparePair::gainChanged, this, &PairPicture::showWords);
    connect(&pair, &ComparePair::wipeEdgeChanged, this, redraw);
    connect(&pair, &ComparePair::differenceChanged, this, &PairPicture::showWords);
    showGuides();
}

QRectF PairPicture::pictureRect() const
{
    if (!m_pair.isPair())
        return {};
    const FrameShape shape = m_pair.a()->file().shape();
    const QSizeF size = QSizeF(shape.squareWidth(), std::max(shape.height, 1))
                            .scaled(QSizeF(this->size()), Qt::KeepAspectRatio);
    // On whole pixels, so that an edge of the picture is sharp.
    QRectF rect({}, QSizeF(std::round(size.width()), std::round(size.height())));
    rect.moveLeft(std::round((width() - rect.width()) / 2));
    rect.moveTop(std::round((height() - rect.height()) / 2));
    return rect;
}

QString PairPicture::label() const
{
    return m_pair.mode() == CompareMode::difference ? u"A − B, gain %1"_s.arg(m_pair.gain())
                                                    : QString();
}

std::optional<QString> PairPicture::message() const
{
    for (const CompareTile* tile : {m_pair.a(), m_pair.b()})
        if (tile != nullptr && tile->pictures().source().isWithoutPicture()
            && !tile->pictures().shown())
            return u"No picture can be read from %1"_s.arg(tile->name());
    if (m_pair.mode() != CompareMode::difference)
        return std::nullopt;
    if (const CompareTile* tile = m_pair.withoutSamples())
        return u"%1 is shown as stills, which cannot be compared sample by sample"_s.arg(
            tile->name());
    if (m_pair.isCurrent() && m_pair.difference()->picture.isEqual)
        return u"No difference on this frame"_s;
    return std::nullopt;
}

void PairPicture::showWords()
{
    const bool wipe = m_pair.mode() == CompareMode::wipe;
    setAccessibleName(wipe ? u"A and B, one picture"_s : label());
    setAccessibleDescription(message().value_or(QString()));
    setToolTip(wipe ? u"Is this the master that was approved, but for the end card? Drag the edge, "
                      "or move it with Alt and the arrow keys"_s
                    : QString());
    update();
}

void PairPicture::showGuides()
{
    m_overlay = {};
    if (m_pair.isPair())
        m_overlay.guides =
            GuideBuilder::guides(m_compare.guideOptions(), m_pair.a()->file().shape(),
                                 m_pair.a()->file().video.activePicture);
    showWords();
}

void PairPicture::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    update();
}

void PairPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF picture = pictureRect();
    if (picture.isEmpty())
        return;
    const bool wipe = m_pair.mode() == CompareMode::wipe;
    if (wipe) {
        paintWipe(painter, picture);
    } else {
        const auto& difference = m_pair.difference();
        PicturePaint::draw(painter, picture, difference ? difference->picture.image : QImage());
    }
    if (!m_overlay.isEmpty()) {
        const auto place = PicturePaint::overlayPlace(picture, devicePixelRatioF());
        painter.setRenderHint(QPainter::Antialiasing);
        m_laid.paint(painter, m_overlay, place);
        m_laid.drawRest(m_overlay, place);
    }
    PicturePaint::roundCorners(painter, picture);
    if (wipe) {
        paintEdge(painter, picture);
        paintLetters(painter, picture);
    } else {
        const QRectF sign = drawChip(painter, chipRect(picture, label(), false), label());
        Icons::draw(painter, sign.adjusted(1, 1, -1, -1), u"difference"_s, Theme::dark().text1);
    }
    if (const auto words = message())
        PicturePaint::drawMessage(painter, picture, *words);
}

void PairPicture::paintWipe(QPainter& painter, const QRectF& picture) const
{
    const double edge = edgeAt();
    painter.fillRect(picture, Qt::black);
    painter.save();
    painter.setClipRect(
        QRectF(picture.left(), picture.top(), edge - picture.left(), picture.height()));
    PicturePaint::draw(painter, picture, pictureOf(*m_pair.a()));
    painter.setClipRect(QRectF(edge, picture.top(), picture.right() - edge, picture.height()));
    PicturePaint::draw(painter, placed(m_pair.match().place, picture), pictureOf(*m_pair.b()));
    painter.restore();
}

void PairPicture::paintEdge(QPainter& painter, const QRectF& picture) const
{
    constexpr double line = 2;
    const Theme& theme = Theme::dark();
    const double edge = edgeAt();
    const QColor halo(0, 0, 0, 120);
    painter.fillRect(QRectF(edge - line / 2 - 1, picture.top(), line + 2, picture.height()), halo);
    painter.fillRect(QRectF(edge - line / 2, picture.top(), line, picture.height()), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, line));
    painter.setBrush(theme.card);
    const QPointF middle(edge, picture.center().y());
    painter.drawEllipse(middle, (handle - line) / 2, (handle - line) / 2);
    constexpr double sign = 16;
    QRectF icon(0, 0, sign, sign);
    icon.moveCenter(middle);
    Icons::draw(painter, icon, u"edge"_s, theme.text1);
}

void PairPicture::paintLetters(QPainter& painter, const QRectF& picture) const
{
    const auto [nameA, nameB] = PairNames::apart(m_pair.a()->name(), m_pair.b()->name());
    const double edge = edgeAt();
    const auto draw = [&](const CompareTile& tile, const QString& letter, const QString& name,
                          bool atRight) {
        const auto starts = m_compare.startsIn(tile);
        const QString said = starts ? u"%1 · %2"_s.arg(name, *starts) : name;
        const double room = std::max(picture.width() / 2 - clear, 0.0);
        const QString words = QFontMetricsF(chipFont()).elidedText(said, Qt::ElideMiddle, room);
        const QRectF chip = chipRect(picture, words, atRight);
        const double distance = atRight ? chip.left() - edge : edge - chip.right();
        if (distance >= clear - inset)
            drawLetter(painter, drawChip(painter, chip, words), letter);
    };
    draw(*m_pair.a(), u"A"_s, nameA, false);
    draw(*m_pair.b(), u"B"_s, nameB, true);
}

double PairPicture::edgeAt() const
{
    const QRectF picture = pictureRect();
    return std::round(picture.left() + m_pair.wipeEdge() * picture.width());
}

bool PairPicture::isNearEdge(QPointF at) const
{
    return m_pair.mode() == CompareMode::wipe && std::abs(at.x() - edgeAt()) <= grabWidth / 2
           && at.y() >= pictureRect().top() && at.y() <= pictureRect().bottom();
}

void PairPicture::dragTo(double x)
{
    const QRectF picture = pictureRect();
    if (!picture.isEmpty())
        m_pair.setWipeEdge((x - picture.left()) / picture.width());
}

void PairPicture::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isNearEdge(event->position()))
        return event->ignore();
    m_dragging = true;
}

void PairPicture::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging)
        dragTo(event->position().x());
    setCursor(m_dragging || isNearEdge(event->position()) ? Qt::SplitHCursor : Qt::ArrowCursor);
}

void PairPicture::mouseReleaseEvent(QMouseEvent*)
{
    m_dragging = false;
}

void PairPicture::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_pair.mode() == CompareMode::wipe && event->button() == Qt::LeftButton)
        m_pair.setWipeEdge(0.5);
}

} // namespace vantroque
