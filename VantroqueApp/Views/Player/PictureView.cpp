#include "VantroqueApp/Views/Player/PictureView.h"

#include "Captions/CaptionLoader.h"
#include "Draw/AnnotationRenderer.h"
#include "Draw/FramePainter.h"
#include "VantroqueApp/Views/Player/DrawnStroke.h"
#include "VantroqueApp/Views/Style/Theme.h"

#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTabletEvent>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// The one caption file among what is dragged; nothing when there is anything else.
std::optional<FileUrl> captionFile(const QMimeData& dragged)
{
    const QList<QUrl> urls = dragged.urls();
    if (urls.size() != 1)
        return std::nullopt;
    const auto file = FileUrl::fromString(QString::fromLatin1(urls.front().toEncoded()));
    return file && CaptionLoader::isSidecar(*file) ? file : std::nullopt;
}

} // namespace

PictureView::PictureView(PlayerController& player, QWidget* parent)
    : QWidget(parent), m_player(player), m_laid([this] { update(); })
{
    setAccessibleName(u"Picture"_s);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    const auto redraw = qOverload<>(&QWidget::update);
    connect(&player, &PlayerController::pictureChanged, this, redraw);
    connect(&player.playhead(), &Playhead::moved, this, redraw);
    connect(&player.zoom(), &PictureZoom::changed, this, redraw);
    connect(&player.guides(), &PictureGuides::changed, this, redraw);
    connect(&player.scopes(), &ScopeFeed::imagesChanged, this, redraw);
    connect(&player.captions(), &PlayerCaptions::changed, this, redraw);
    connect(&player.focus(), &FindingFocus::changed, this, redraw);
    connect(&player.notebook(), &Notebook::reviewChanged, this, redraw);
    connect(&player.notebook(), &Notebook::draftChanged, this, [this] {
        showCursor();
        update();
    });
    showCursor();
}

void PictureView::setResting(bool resting)
{
    m_resting = resting;
    takeRoom();
    update();
}

void PictureView::takeRoom()
{
    if (!m_resting)
        m_player.zoom().setContainerSize(size());
}

void PictureView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    takeRoom();
}

QRectF PictureView::pictureRect() const
{
    const ZoomState& zoom = m_player.zoom().zoom();
    const QSizeF shown = zoom.pictureSize * zoom.scale;
    QRectF rect({}, shown);
    rect.moveCenter(QRectF(this->rect()).center() + zoom.pan);
    return rect;
}

void PictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::current().stage);
    if (m_resting)
        return;
    const QRectF picture = pictureRect();
    if (const auto& shown = m_player.shown()) {
        // Who looks closely wants to see pixels.
        painter.setRenderHint(QPainter::SmoothPixmapTransform,
                              !m_player.zoom().showsActualPixels());
        painter.drawImage(picture, shown->picture);
    }
    paintOverlay(painter);
}

Overlay PictureView::overlay() const
{
    Overlay overlay = m_player.overlay();
    const auto& draft = m_player.notebook().draftStrokes();
    overlay.strokes.insert(overlay.strokes.end(), draft.begin(), draft.end());
    return overlay;
}

/// Lines and labels keep their width on the screen, however close one looks.
OverlayPlace PictureView::overlayPlace() const
{
    const QRectF picture = pictureRect();
    return {.picture = picture,
            .visible = picture.toAlignedRect() & rect(),
            .scale = m_player.zoom().zoom().pictureSize.height() / FramePainter::referenceRows,
            .pixelRatio = devicePixelRatioF()};
}

bool PictureView::isOverlayWhole() const
{
    return m_laid.isWhole(overlay(), overlayPlace());
}

void PictureView::paintOverlay(QPainter& painter)
{
    const OverlayPlace place = overlayPlace();
    if (place.visible.isEmpty())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    const Overlay overlay = this->overlay();
    m_laid.paint(painter, overlay, place);
    if (m_stroke)
        AnnotationRenderer::draw(painter, {*m_stroke}, place.picture, place.scale);
    m_laid.drawRest(overlay, place);
}

void PictureView::showCursor()
{
    const bool draws = m_player.notebook().tool() != AnnotationTool::pointer;
    setCursor(draws ? Qt::CrossCursor : m_drag ? Qt::ClosedHandCursor : Qt::ArrowCursor);
}

QPointF PictureView::placeIn(QPointF viewport) const
{
    return m_player.zoom().zoom().normalizedPoint(viewport);
}

void PictureView::mousePressEvent(QMouseEvent* event)
{
    const bool left = event->button() == Qt::LeftButton;
    if (left && m_player.notebook().tool() != AnnotationTool::pointer)
        return beginStroke(event->position());
    if (!left && event->button() != Qt::MiddleButton)
        return event->ignore();
    if (!m_player.zoom().zoom().isZoomed())
        return;
    m_drag = Drag{.begin = event->position(), .pan = m_player.zoom().zoom().pan};
    showCursor();
}

void PictureView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_stroke)
        extendStroke(event->position());
    else if (m_drag)
        m_player.zoom().pan(event->position() - m_drag->begin, m_drag->pan);
}

void PictureView::mouseReleaseEvent(QMouseEvent*)
{
    endStroke();
    m_drag.reset();
    showCursor();
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_player.notebook().tool() != AnnotationTool::pointer)
        return mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        m_player.zoom().toggleZoom(placeIn(event->position()));
}

/// As the mouse, but that a pen draws more finely than a pixel. A pen over the pointer tool is a
/// mouse, which Qt makes of what is not taken here.
void PictureView::tabletEvent(QTabletEvent* event)
{
    if (m_player.notebook().tool() == AnnotationTool::pointer)
        return event->ignore();
    event->accept();
    switch (event->type()) {
    case QEvent::TabletPress: return beginStroke(event->position());
    case QEvent::TabletMove: return m_stroke ? extendStroke(event->position()) : void();
    case QEvent::TabletRelease: return endStroke();
    default: return;
    }
}

void PictureView::beginStroke(QPointF at)
{
    m_player.shuttle().stop();
    const QPointF place = placeIn(at);
    const Notebook& notebook = m_player.notebook();
    m_stroke =
        DrawnStroke::begun(notebook.tool(), notebook.ink(), {.x = place.x(), .y = place.y()});
    update();
}

void PictureView::extendStroke(QPointF to)
{
    const QPointF place = placeIn(to);
    DrawnStroke::extend(*m_stroke, {.x = place.x(), .y = place.y()});
    update();
}

void PictureView::endStroke()
{
    const auto stroke = std::exchange(m_stroke, std::nullopt);
    if (stroke && DrawnStroke::isVisible(*stroke))
        m_player.notebook().addDraftStroke(*stroke);
    update();
}

/// With Ctrl the picture grows around the pointer; without, a picture that is larger than its place
/// moves.
void PictureView::wheelEvent(QWheelEvent* event)
{
    constexpr double notch = 120;
    PictureZoom& zoom = m_player.zoom();
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        if (!zoom.zoom().isZoomed())
            return event->ignore();
        const QPointF by = event->pixelDelta().isNull() ? QPointF(event->angleDelta()) / 2
                                                        : QPointF(event->pixelDelta());
        return zoom.pan(by, zoom.zoom().pan);
    }
    const QPointF place = placeIn(event->position());
    zoom.setZoom(zoom.zoom().scale * std::exp2(event->angleDelta().y() / notch / 2));
    const QRectF picture({}, zoom.zoom().pictureSize * zoom.zoom().scale);
    const QPointF underPointer((place.x() - 0.5) * picture.width(),
                               (place.y() - 0.5) * picture.height());
    zoom.pan(event->position() - QRectF(rect()).center() - underPointer, {});
}

void PictureView::dragEnterEvent(QDragEnterEvent* event)
{
    if (captionFile(*event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore(); // Media are for the window.
}

void PictureView::dropEvent(QDropEvent* event)
{
    if (const auto captions = captionFile(*event->mimeData())) {
        event->acceptProposedAction();
        m_player.captions().loadCaptions(*captions);
    }
}

void PictureView::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    Q_EMIT focusChanged(true);
}

void PictureView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    Q_EMIT focusChanged(false);
}

} // namespace vantroque
