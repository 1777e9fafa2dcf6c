#include "Captions/EmbeddedCaptions.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Captions/CaptionParser.h"
#include "Captions/LanguageNames.h"
#include "Tools/FFmpegCall.h"
#include "Tools/Playlists.h"

#include <utility>

namespace vantroque::EmbeddedCaptions {

using namespace Qt::StringLiterals;
using Kind = EmbeddedCaptionSource::Kind;

namespace {

/// The tag of a stream whose language nobody has set.
constexpr QStringView undetermined = u"und";

/// In quotes that ffmpeg takes off again.
std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

/// ffmpeg's input arguments; nothing for a track without a stream.
std::optional<std::vector<std::string>> input(const EmbeddedCaptionSource& source,
                                              const FileUrl& media)
{
    const std::string path = media.path().native();
    if (source.kind == Kind::cea608) {
        // The filter graph is read first and the filter's options after that, each with quotes of
        // its own.
        return std::vector<std::string>{
            "-f", "lavfi", "-i", "movie=" + quoted(quoted(path)) + "[out0+subcc]", "-map", "0:s"};
    }
    if (!source.streamIndex)
        return std::nullopt;
    return std::vector<std::string>{"-i", path, "-map",
                                    "0:" + Numbers::wholeText(*source.streamIndex)};
}

/// Caption data of CEA-608 comes with a placement that ffmpeg has made up.
CaptionParser::PlacementTags placementTags(const EmbeddedCaptionSource& source)
{
    const bool honoured = source.kind == Kind::track && source.codec && source.codec != u"eia_608";
    return honoured ? CaptionParser::PlacementTags::honoured
                    : CaptionParser::PlacementTags::ignored;
}

} // namespace

std::vector<EmbeddedCaptionSource> sources(const MediaInfo& media)
{
    std::vector<EmbeddedCaptionSource> found;
    for (const auto& stream : media.subtitleStreams.value_or(std::vector<SubtitleStreamInfo>()))
        if (stream.isText())
            found.push_back({Kind::track, stream.index, stream.codec, stream.language});
    if (media.video && media.video->closedCaptions.value_or(false))
        found.push_back({Kind::cea608, {}, {}, {}});
    return found;
}

QString title(const EmbeddedCaptionSource& source)
{
    if (source.kind == Kind::cea608)
        return u"CEA-608 closed captions"_s;
    std::optional<QString> name;
    if (source.language && source.language != undetermined)
        name = LanguageNames::displayName(*source.language);
    return u"%1 track (%2)"_s.arg(name.value_or(u"Embedded"_s), source.codec.value_or(u"text"_s));
}

std::optional<QString> language(const EmbeddedCaptionSource& source)
{
    if (!source.language || source.language == undetermined)
        return std::nullopt;
    const QString code = LanguageNames::bareCode(*source.language);
    return code.isEmpty() ? std::nullopt : std::optional(code);
}

std::optional<CaptionTrack> extract(const EmbeddedCaptionSource& source, const FileUrl& media)
{
    const auto arguments = Playlists::refuse(media) ? input(source, media) : std::nullopt;
    const auto text = arguments ? srtText(media, *arguments) : std::nullopt;
    if (!text)
        return std::nullopt;
    return CaptionParser::parse(*text, CaptionTrack::Format::embedded, placementTags(source));
}

std::optional<QString> srtText(const FileUrl& media, const std::vector<std::string>& arguments,
                               double timeout)
{
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!ffmpeg)
        return std::nullopt;
    FFmpegCall call(FFmpegCall::Log::complaints);
    call.add({"-nostdin"}).add(arguments).add({"-f", "srt", "-"});
    const auto output = FFTool::run(
        *ffmpeg, call.words(), {.reads = {media.path()}, .allowFailure = true, .timeout = timeout});
    // It can end well with nothing or half to tell, and badly with all that there was.
    if (!output || !output->output.contains("-->"))
        return std::nullopt;
    return Text::utf8(Text::view(output->output));
}

} // namespace vantroque::EmbeddedCaptions
