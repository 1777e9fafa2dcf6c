#include "Views/PaintedWords.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QWidget>

namespace vantroque {

namespace {

/// Paints nothing, and notes the texts.
class Listener : public QPaintEngine {
public:
    Listener() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& changed) override
    {
        if (changed.state().testFlag(DirtyTransform))
            m_transform = changed.transform();
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF& place, const QTextItem& item) override
    {
        texts.push_back({item.text(), m_transform.map(place).toPoint()});
    }
    Type type() const override { return User; }

    std::vector<PaintedText> texts;

private:
    QTransform m_transform;
};

class Page : public QPaintDevice {
public:
    explicit Page(const QWidget& widget) : m_widget(widget) {}
    QPaintEngine* paintEngine() const override { return &m_listener; }
    const std::vector<PaintedText>& texts() const { return m_listener.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        constexpr int inch = 96;
        constexpr double perInch = 25.4;
        switch (metric) {
        case PdmWidth: return m_widget.width();
        case PdmHeight: return m_widget.height();
        case PdmWidthMM: return static_cast<int>(m_widget.width() * perInch / inch);
        case PdmHeightMM: return static_cast<int>(m_widget.height() * perInch / inch);
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY: return inch;
        case PdmDepth: return 32;
        case PdmNumColors: return 0;
        case PdmDevicePixelRatio: return 1;
        case PdmDevicePixelRatioScaled: return static_cast<int>(devicePixelRatioFScale());
        default: return 0;
        }
    }

private:
    const QWidget& m_widget;
    mutable Listener m_listener;
};

} // namespace

std::vector<PaintedText> paintedTexts(QWidget& widget)
{
    Page page(widget);
    widget.render(&page);
    return page.texts();
}

QStringList paintedWords(QWidget& widget)
{
    QStringList words;
    for (const PaintedText& painted : paintedTexts(widget))
        words << painted.text;
    return words;
}

} // namespace vantroque
