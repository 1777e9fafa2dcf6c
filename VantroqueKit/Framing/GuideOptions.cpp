#include "Framing/GuideOptions.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr auto safeAreasKey = "guides.safeAreas"_L1;
constexpr auto thirdsKey = "guides.thirds"_L1;
constexpr auto detectedPictureKey = "guides.detectedPicture"_L1;
constexpr auto platformZonesKey = "guides.platformZones"_L1;
constexpr auto feedCropKey = "guides.feedCrop"_L1;

} // namespace

GuideOptions GuideOptions::load(const UserDefaults& defaults)
{
    const QStringList zones = defaults.textList(platformZonesKey).value_or(QStringList());
    return {.safeAreas = defaults.isOn(safeAreasKey),
            .thirds = defaults.isOn(thirdsKey),
            .detectedPicture = defaults.isOn(detectedPictureKey),
            .platformZoneIDs = {zones.begin(), zones.end()},
            .feedCrop = defaults.isOn(feedCropKey)};
}

void GuideOptions::save(UserDefaults& defaults) const
{
    defaults.setOn(safeAreasKey, safeAreas);
    defaults.setOn(thirdsKey, thirds);
    defaults.setOn(detectedPictureKey, detectedPicture);
    defaults.setTextList(platformZonesKey, {platformZoneIDs.begin(), platformZoneIDs.end()});
    defaults.setOn(feedCropKey, feedCrop);
}

} // namespace vantroque
