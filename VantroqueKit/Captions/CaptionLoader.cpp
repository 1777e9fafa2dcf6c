#include "Captions/CaptionLoader.h"

#include "Base/Files.h"
#include "Captions/CaptionParser.h"
#include "Captions/EmbeddedCaptions.h"
#include "Tools/Playlists.h"

namespace vantroque::CaptionLoader {

using Format = CaptionTrack::Format;
using CaptionParser::PlacementTags;

namespace {

constexpr qint64 maxBytes = 100'000'000;

Result<CaptionTrack, Problem> cuesOf(std::optional<CaptionTrack> track)
{
    if (!track)
        return tl::unexpected(Problem::noCues);
    return *std::move(track);
}

Result<CaptionTrack, Problem> loadScenarist(const FileUrl& url)
{
    std::optional<QString> text;
    if (Playlists::refuse(url))
        text = EmbeddedCaptions::srtText(url, {"-i", url.path().native()});
    if (!text)
        return tl::unexpected(Problem::unreadable);
    // ffmpeg puts a placement into every cue, whatever the file says.
    return cuesOf(CaptionParser::parse(*text, Format::scc, PlacementTags::ignored));
}

} // namespace

bool isSidecar(const FileUrl& url)
{
    const QString extension = url.extension().toLower();
    return extension == u"srt" || extension == u"vtt" || extension == u"scc";
}

Result<CaptionTrack, Problem> load(const FileUrl& url)
{
    const QString extension = url.extension().toLower();
    if (extension == u"scc")
        return loadScenarist(url);
    const auto bytes = Files::read(url.path(), maxBytes);
    if (!bytes)
        return tl::unexpected(Problem::unreadable);
    const Format format = extension == u"vtt" ? Format::vtt : Format::srt;
    return cuesOf(
        CaptionParser::parse(CaptionParser::decode(*bytes), format, PlacementTags::honoured));
}

} // namespace vantroque::CaptionLoader
