#include "VantroqueApp/Model/Playback/PictureGuides.h"

namespace vantroque {

PictureGuides::PictureGuides(const PlayedFile& file, UserDefaults& defaults)
    : m_shape(file.shape()),
      m_activePicture(file.video.activePicture),
      m_defaults(defaults),
      m_options(GuideOptions::load(defaults)),
      m_guides(GuideBuilder::guides(m_options, m_shape, m_activePicture))
{
}

void PictureGuides::setGuideOptions(const GuideOptions& options)
{
    if (m_options == options)
        return;
    m_options = options;
    m_options.save(m_defaults);
    m_guides = GuideBuilder::guides(m_options, m_shape, m_activePicture);
    Q_EMIT changed();
}

std::vector<PlatformZone> PictureGuides::zones() const
{
    return PlatformZoneCatalog::zones(m_shape.family());
}

void PictureGuides::showZones()
{
    GuideOptions options = m_options;
    for (const PlatformZone& zone : zones())
        options.platformZoneIDs.insert(zone.id);
    setGuideOptions(options);
}

void PictureGuides::showSafeAreas()
{
    GuideOptions options = m_options;
    options.safeAreas = true;
    setGuideOptions(options);
}

} // namespace vantroque
