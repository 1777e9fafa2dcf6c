#include "VantroqueApp/Views/Player/PlayerMenus.h"

#include "VantroqueApp/Views/Controls/MenuHeading.h"

#include <QActionGroup>

#include <algorithm>
#include <cmath>
#include <set>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

bool isVertical(const PlayedFile& file)
{
    return file.shape().family() == AspectFamily::vertical9x16;
}

std::vector<PlatformZone> zonesOf(const std::vector<PlayedFile>& files)
{
    std::vector<PlatformZone> zones;
    std::set<QString> known;
    for (const PlayedFile& file : files)
        for (PlatformZone& zone : PlatformZoneCatalog::zones(file.shape().family()))
            if (known.insert(zone.id).second)
                zones.push_back(std::move(zone));
    return zones;
}

} // namespace

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

GuidesMenu::GuidesMenu(const std::vector<PlayedFile>& files, QWidget* parent) : StayingMenu(parent)
{
    setAccessibleName(u"Guides"_s);
    setProperty("checklist", true);
    addSwitch(u"Safe areas (90% / 93%)"_s, &GuideOptions::safeAreas);
    addSwitch(u"Thirds and center"_s, &GuideOptions::thirds);
    if (std::ranges::any_of(files,
                            [](const auto& file) { return file.video.activePicture.has_value(); }))
        addSwitch(u"Detected picture area"_s, &GuideOptions::detectedPicture);
    if (const auto zones = zonesOf(files); !zones.empty()) {
        addSeparator();
        MenuHeading::add(*this, u"Platform UI"_s);
        for (const PlatformZone& zone : zones)
            addZone(zone);
    }
    if (std::ranges::any_of(files, isVertical))
        addSwitch(u"4:5 feed crop"_s, &GuideOptions::feedCrop);
}

void GuidesMenu::addSwitch(const QString& text, bool GuideOptions::*option)
{
    QAction* action = addAction(text);
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, option](bool on) {
        m_options.*option = on;
        Q_EMIT chosen(m_options);
    });
    m_refreshes.emplace_back([this, action, option] { action->setChecked(m_options.*option); });
}

void GuidesMenu::addZone(const PlatformZone& zone)
{
    QAction* action = addAction(u"%1 safe zone"_s.arg(zone.name));
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, id = zone.id](bool on) {
        if (on)
            m_options.platformZoneIDs.insert(id);
        else
            m_options.platformZoneIDs.erase(id);
        Q_EMIT chosen(m_options);
    });
    m_refreshes.emplace_back([this, action, id = zone.id] {
        action->setChecked(m_options.platformZoneIDs.contains(id));
    });
}

void GuidesMenu::mark(const GuideOptions& options)
{
    m_options = options;
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
