#include "VantroqueApp/Views/Player/PlayerMenus.h"

#include "VantroqueApp/Views/Controls/MenuHeading.h"

#include <QActionGroup>

#include <cmath>

namespace vantroque {

using namespace Qt::StringLiterals;

ZoomMenu::ZoomMenu(PictureZoom& zoom, QWidget* parent)
    : QMenu(parent), m_zoom(zoom), m_stops(new QActionGroup(this))
{
    setAccessibleName(u"Zoom"_s);
    setProperty("checklist", true);
    connect(this, &QMenu::aboutToShow, this, &ZoomMenu::refresh);
    refresh();
}

QString ZoomMenu::current(const PictureZoom& zoom)
{
    if (!zoom.zoom().isZoomed())
        return u"Fit"_s;
    return u"%1%"_s.arg(std::llround(zoom.zoom().percent(zoom.videoWidth())));
}

/// The stops depend on how large the picture is.
void ZoomMenu::refresh()
{
    constexpr double same = 0.001;
    clear();
    for (const ZoomState::Stop& stop : m_zoom.stops()) {
        QAction* action = addAction(stop.label);
        action->setCheckable(true);
        action->setChecked(std::abs(m_zoom.zoom().scale - stop.scale) < same * stop.scale);
        m_stops->addAction(action);
        connect(action, &QAction::triggered, &m_zoom,
                [this, scale = stop.scale] { m_zoom.setZoom(scale); });
    }
    addSeparator();
    MenuHeading::add(*this, u"Double-click the picture to zoom to a spot. Drag to move around."_s);
}

GuidesMenu::GuidesMenu(const PlayedFile& file, PictureGuides& guides, QWidget* parent)
    : StayingMenu(parent), m_guides(guides)
{
    setAccessibleName(u"Guides"_s);
    setProperty("checklist", true);
    addSwitch(u"Safe areas (90% / 93%)"_s, &GuideOptions::safeAreas);
    addSwitch(u"Thirds and center"_s, &GuideOptions::thirds);
    if (file.video.activePicture)
        addSwitch(u"Detected picture area"_s, &GuideOptions::detectedPicture);
    if (const auto zones = guides.zones(); !zones.empty()) {
        addSeparator();
        MenuHeading::add(*this, u"Platform UI"_s);
        for (const PlatformZone& zone : zones)
            addZone(zone);
    }
    if (file.shape().family() == AspectFamily::vertical9x16)
        addSwitch(u"4:5 feed crop"_s, &GuideOptions::feedCrop);
    connect(&guides, &PictureGuides::changed, this, &GuidesMenu::refresh);
    refresh();
}

void GuidesMenu::addSwitch(const QString& text, bool GuideOptions::*option)
{
    QAction* action = addAction(text);
    action->setCheckable(true);
    connect(action, &QAction::triggered, &m_guides, [this, option](bool on) {
        GuideOptions options = m_guides.guideOptions();
        options.*option = on;
        m_guides.setGuideOptions(options);
    });
    m_refreshes.emplace_back(
        [this, action, option] { action->setChecked(m_guides.guideOptions().*option); });
}

void GuidesMenu::addZone(const PlatformZone& zone)
{
    QAction* action = addAction(u"%1 safe zone"_s.arg(zone.name));
    action->setCheckable(true);
    connect(action, &QAction::triggered, &m_guides, [this, id = zone.id](bool on) {
        GuideOptions options = m_guides.guideOptions();
        if (on)
            options.platformZoneIDs.insert(id);
        else
            options.platformZoneIDs.erase(id);
        m_guides.setGuideOptions(options);
    });
    m_refreshes.emplace_back([this, action, id = zone.id] {
        action->setChecked(m_guides.guideOptions().platformZoneIDs.contains(id));
    });
}

void GuidesMenu::refresh()
{
    for (const auto& refresh : m_refreshes)
        refresh();
}

ScopesMenu::ScopesMenu(ScopeFeed& scopes, QWidget* parent) : StayingMenu(parent)
{
    setAccessibleName(u"Scopes"_s);
    setProperty("checklist", true);
    const auto addSwitch = [&](const QString& text, bool ScopeOptions::*option) {
        QAction* action = addAction(text);
        action->setCheckable(true);
        const auto show = [&scopes, action, option] {
            action->setChecked(scopes.scopeOptions().*option);
        };
        connect(action, &QAction::triggered, &scopes, [&scopes, option](bool on) {
            ScopeOptions options = scopes.scopeOptions();
            options.*option = on;
            scopes.setScopeOptions(options);
        });
        connect(&scopes, &ScopeFeed::optionsChanged, action, show);
        show();
    };
    addSwitch(u"Waveform"_s, &ScopeOptions::waveform);
    addSwitch(u"RGB parade"_s, &ScopeOptions::parade);
    addSwitch(u"Vectorscope"_s, &ScopeOptions::vectorscope);
    addSwitch(u"Highlight out-of-range picture"_s, &ScopeOptions::outOfRange);
}

} // namespace vantroque
