#include "VantroqueApp/Views/Compare/CompareTileView.h"

#include "Framing/GuideBuilder.h"
#include "VantroqueApp/Views/Compare/CompareCaption.h"
#include "VantroqueApp/Views/Compare/PicturePaint.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

CompareTileView::CompareTileView(CompareController& compare, ComparePair& pair, CompareTile& tile,
                                 QWidget* parent)
    : QWidget(parent),
      m_compare(compare),
      m_pair(pair),
      m_tile(tile),
      m_caption(new CompareCaption(compare, tile, this)),
      m_laid([this] { update(pictureRect()); })
{
    setAccessibleName(tile.name());
    setFocusPolicy(Qt::StrongFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(1);
    layout->addWidget(m_caption);
    connect(&tile, &CompareTile::pictureChanged, this, [this] { update(pictureRect()); });
    connect(&compare, &CompareController::moved, this, &CompareTileView::showMessage);
    connect(&compare, &CompareController::soloChanged, this, &CompareTileView::showMessage);
    connect(&compare, &CompareController::modeChanged, this, &CompareTileView::showMessage);
    connect(&compare, &CompareController::guidesChanged, this, &CompareTileView::showGuides);
    connect(&pair, &ComparePair::pairChanged, this, &CompareTileView::showLetter);
    connect(&compare, &CompareController::tilesChanged, this, &CompareTileView::showLetter);
    showLetter();
    showGuides();
    showMessage();
}

QRect CompareTileView::pictureRect() const
{
    return rect().adjusted(0, 0, 0, -CompareCaption::high);
}

/// Of two there is no choice to be shown.
void CompareTileView::showLetter()
{
    const bool several = m_compare.tiles().size() > 2;
    m_caption->setLetter(!several                ? QString()
                         : m_pair.a() == &m_tile ? u"A"_s
                         : m_pair.b() == &m_tile ? u"B"_s
                                                 : QString());
}

std::optional<QString> CompareTileView::message() const
{
    if (m_tile.pictures().source().isWithoutPicture() && !m_tile.pictures().shown())
        return u"No picture can be read from this file"_s;
    return m_compare.startsIn(m_tile);
}

void CompareTileView::showMessage()
{
    if (std::exchange(m_message, message()) != m_message)
        update(pictureRect());
    setAccessibleDescription(m_message.value_or(QString()));
}

void CompareTileView::showGuides()
{
    m_overlay.guides = GuideBuilder::guides(m_compare.guideOptions(), m_tile.file().shape(),
                                            m_tile.file().video.activePicture);
    update(pictureRect());
}

void CompareTileView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    update();
}

void CompareTileView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF picture = pictureRect();
    const auto& shown = m_tile.pictures().shown();
    PicturePaint::draw(painter, picture, shown ? shown->picture : QImage());
    if (!m_overlay.isEmpty() && !picture.isEmpty()) {
        const auto place = PicturePaint::overlayPlace(picture, devicePixelRatioF());
        painter.setRenderHint(QPainter::Antialiasing);
        m_laid.paint(painter, m_overlay, place);
        m_laid.drawRest(m_overlay, place);
    }
    PicturePaint::roundCorners(painter, picture);
    if (m_message)
        PicturePaint::drawMessage(painter, picture, *m_message);
}

void CompareTileView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !pictureRect().contains(event->position().toPoint()))
        return event->ignore();
    m_pair.choose(m_tile);
}

void CompareTileView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QWidget::keyPressEvent(event);
    m_pair.choose(m_tile);
}

} // namespace vantroque
