#include "VantroqueCLI/CaptionSource.h"

#include "Base/Files.h"
#include "Captions/CaptionLoader.h"
#include "Captions/EmbeddedCaptions.h"
#include "Probe/Prober.h"

#include <cerrno>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

tl::unexpected<Error> problem(const FileUrl& url, const QString& what)
{
    return failure(url.displayPath() + u": "_s + what);
}

Result<LoadedCaptions> ofSidecar(const FileUrl& url)
{
    if (::access(url.path().c_str(), R_OK) != 0)
        return problem(url, Files::systemMessage(errno));
    const auto track = CaptionLoader::load(url);
    if (track)
        return LoadedCaptions{*track, url.fileName(), {}};
    return problem(url, track.error() == CaptionLoader::Problem::noCues
                            ? u"there are no captions in it"_s
                            : u"cannot be read as captions"_s);
}

} // namespace

Result<LoadedCaptions> loadCaptions(const FileUrl& url)
{
    return CaptionLoader::isSidecar(url) ? ofSidecar(url) : loadCaptions(TRY(Prober::probe(url)));
}

Result<LoadedCaptions> loadCaptions(const MediaInfo& media)
{
    const auto sources = EmbeddedCaptions::sources(media);
    if (sources.empty())
        return problem(media.url, u"there are no captions in it"_s);
    const auto track = EmbeddedCaptions::extract(sources.front(), media.url);
    if (!track)
        return problem(media.url, u"the captions in it cannot be read"_s);
    return LoadedCaptions{*track, EmbeddedCaptions::title(sources.front()),
                          EmbeddedCaptions::language(sources.front())};
}

} // namespace vantroque
