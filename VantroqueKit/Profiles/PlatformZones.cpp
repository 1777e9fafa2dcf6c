#include "Profiles/PlatformZones.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// TikTok publishes its margins in pixels of a 1080x1920 picture.
PlatformZone makeTiktok()
{
    return {
        .id = u"tiktok"_s,
        .name = u"TikTok"_s,
        .aspect = AspectFamily::vertical9x16,
        .sourceURL = u"https://ads.tiktok.com/help/article/tiktok-auction-in-feed-ads"_s,
        .verifiedDate = u"2026-09-01"_s,
        .regions =
            {
                {{0, 0, 1, 0.125}},                                  // top band
                {{0, 0.65625, 1, 0.34375}},                          // bottom band
                {{0, 0.125, 120.0 / 1080.0, 0.53125}},               // left column
                {{960.0 / 1080.0, 0.125, 120.0 / 1080.0, 0.3125}},   // right column
                {{780.0 / 1080.0, 0.4375, 300.0 / 1080.0, 0.21875}}, // buttons at the right
            },
    };
}

PlatformZone makeMetaReelsStories()
{
    return {
        .id = u"meta-reels-stories"_s,
        .name = u"Reels / Stories"_s,
        .aspect = AspectFamily::vertical9x16,
        .sourceURL = u"https://www.facebook.com/business/ads-guide/update/video/instagram-reels"_s,
        .verifiedDate = u"2026-09-01"_s,
        .regions =
            {
                {{0, 0, 1, 0.14}},
                {{0, 0.65, 1, 0.35}},
                {{0, 0.14, 0.06, 0.51}},
                {{0.94, 0.14, 0.06, 0.51}},
            },
    };
}

} // namespace

AspectFamily classify(int width, int height, double tolerance)
{
    static constexpr std::array<std::pair<double, AspectFamily>, 4> references{{
        {16.0 / 9.0, AspectFamily::wide16x9},
        {0.5625, AspectFamily::vertical9x16},
        {1.0, AspectFamily::square1x1},
        {0.8, AspectFamily::tall4x5},
    }};
    if (width < 1 || height < 1)
        return AspectFamily::other;
    const double ratio = static_cast<double>(width) / height;
    for (const auto& [reference, family] : references)
        if (std::abs((ratio - reference) / reference) <= tolerance)
            return family;
    return AspectFamily::other;
}

namespace PlatformZoneCatalog {

const std::vector<PlatformZone>& all()
{
    static const std::vector<PlatformZone> catalog{makeTiktok(), makeMetaReelsStories()};
    return catalog;
}

std::vector<PlatformZone> zones(AspectFamily aspect)
{
    std::vector<PlatformZone> matching;
    std::ranges::copy_if(all(), std::back_inserter(matching),
                         [&](const PlatformZone& zone) { return zone.aspect == aspect; });
    return matching;
}

const PlatformZone& tiktok()
{
    return all()[0];
}

const PlatformZone& metaReelsStories()
{
    return all()[1];
}

} // namespace PlatformZoneCatalog
} // namespace vantroque
