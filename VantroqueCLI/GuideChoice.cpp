#include "VantroqueCLI/GuideChoice.h"

#include "Profiles/PlatformZones.h"

#include <QStringList>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

std::set<QString> zoneIDs()
{
    std::set<QString> ids;
    for (const PlatformZone& zone : PlatformZoneCatalog::all())
        ids.insert(zone.id);
    return ids;
}

QString names()
{
    QStringList all{u"safe"_s, u"thirds"_s, u"picture"_s, u"feed"_s};
    for (const PlatformZone& zone : PlatformZoneCatalog::all())
        all << zone.id;
    return (all << u"all"_s).join(u", "_s);
}

} // namespace

Result<GuideOptions> chooseGuides(const std::string& list)
{
    GuideOptions options;
    for (const QString& name : QString::fromStdString(list).split(u',')) {
        if (name == u"all"_s)
            options = {.safeAreas = true,
                       .thirds = true,
                       .detectedPicture = true,
                       .platformZoneIDs = zoneIDs(),
                       .feedCrop = true};
        else if (name == u"safe"_s)
            options.safeAreas = true;
        else if (name == u"thirds"_s)
            options.thirds = true;
        else if (name == u"picture"_s)
            options.detectedPicture = true;
        else if (name == u"feed"_s)
            options.feedCrop = true;
        else if (zoneIDs().contains(name))
            options.platformZoneIDs.insert(name);
        else
            return failure(u"unknown guide \"%1\": one of %2"_s.arg(name, names()));
    }
    return options;
}

} // namespace vantroque
