#include "Framing/GuideBuilder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vantroque::GuideBuilder {

using namespace Qt::StringLiterals;

namespace {

using Kind = Guide::Kind;
using Tint = Guide::Tint;
using LabelCorner = Guide::LabelCorner;

void addSafeAreas(std::vector<Guide>& guides)
{
    guides.push_back({.id = u"safe-93"_s,
                      .rect = {0.035, 0.035, 0.93, 0.93},
                      .tint = Tint::safe,
                      .label = u"93% content safe"_s});
    // At the other end, because the labels of two lines this close would meet.
    guides.push_back({.id = u"safe-90"_s,
                      .rect = {0.05, 0.05, 0.9, 0.9},
                      .tint = Tint::safe,
                      .label = u"90% title safe"_s,
                      .labelCorner = LabelCorner::bottomLeft});
}

void addThirds(std::vector<Guide>& guides)
{
    const auto add = [&](const QString& id, Kind kind, const NormalizedRect& rect) {
        guides.push_back({.id = id, .kind = kind, .rect = rect});
    };
    add(u"third-v1"_s, Kind::verticalLine, {1.0 / 3, 0, 0, 1});
    add(u"third-v2"_s, Kind::verticalLine, {2.0 / 3, 0, 0, 1});
    add(u"third-h1"_s, Kind::horizontalLine, {0, 1.0 / 3, 1, 0});
    add(u"third-h2"_s, Kind::horizontalLine, {0, 2.0 / 3, 1, 0});
    add(u"center"_s, Kind::centerCross, {0.5, 0.5, 0, 0});
}

/// What a feed shows of a vertical picture: 4:5 at its centre.
Guide feedCrop()
{
    constexpr double height = PlatformZoneCatalog::feedCropHeightFraction;
    return {.id = u"feed-crop"_s,
            .rect = {0, (1 - height) / 2, 1, height},
            .tint = Tint::social,
            .label = u"4:5 feed crop"_s,
            .dashed = true};
}

Guide detectedPicture(const FrameShape& frame, const CropRect& crop)
{
    // Detection is a few pixels coarse.
    constexpr int slack = 8;
    const bool isSmaller = crop.width < frame.width - slack || crop.height < frame.height - slack;
    const double width = frame.width;
    const double height = frame.height;
    return {.id = u"active-picture"_s,
            .rect = {crop.x / width, crop.y / height, crop.width / width, crop.height / height},
            .tint = isSmaller ? Tint::alert : Tint::ok,
            .label = isSmaller ? u"detected picture %1x%2"_s.arg(crop.width).arg(crop.height)
                               : u"picture fills the frame"_s,
            .labelCorner = LabelCorner::topRight,
            .dashed = true};
}

} // namespace

std::vector<Guide> guidesOf(const PlatformZone& zone)
{
    std::vector<Guide> guides;
    const auto largest = std::ranges::max_element(
        zone.regions, {}, [](const PlatformZone::Region& region) { return region.rect.area(); });
    for (auto region = zone.regions.begin(); region != zone.regions.end(); ++region) {
        Guide guide{.id = u"zone-%1-%2"_s.arg(zone.id).arg(region - zone.regions.begin()),
                    .kind = Kind::exclusion,
                    .rect = region->rect};
        if (region == largest)
            guide.label = zone.name + u" UI"_s;
        guides.push_back(std::move(guide));
    }
    return guides;
}

std::vector<Guide> guides(const GuideOptions& options, const FrameShape& frame,
                          const std::optional<CropRect>& activePicture)
{
    std::vector<Guide> guides;
    if (frame.isEmpty())
        return guides;
    if (options.safeAreas)
        addSafeAreas(guides);
    if (options.thirds)
        addThirds(guides);
    const AspectFamily family = frame.family();
    for (const PlatformZone& zone : PlatformZoneCatalog::zones(family))
        if (options.platformZoneIDs.contains(zone.id))
            std::ranges::move(guidesOf(zone), std::back_inserter(guides));
    if (options.feedCrop && family == AspectFamily::vertical9x16)
        guides.push_back(feedCrop());
    if (options.detectedPicture && activePicture)
        guides.push_back(detectedPicture(frame, *activePicture));
    return guides;
}

} // namespace vantroque::GuideBuilder
