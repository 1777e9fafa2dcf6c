#include "Tools/StreamSeek.h"

#include "Base/Numbers.h"
#include "Tools/FFmpegCall.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <limits>
#include <string_view>

namespace vantroque::StreamSeek {

namespace {

namespace fs = std::filesystem;

/// Where decoding began, by what ffmpeg prints of each frame that it decodes.
class Landing {
public:
    void read(std::string_view line)
    {
        constexpr std::string_view key = " pts_time:";
        const std::size_t at = line.find(key);
        if (m_keyFrame || at == line.npos || line.find(" iskey:1") == line.npos)
            return;
        const std::string_view rest = line.substr(at + key.size());
        m_keyFrame = Numbers::toDouble(rest.substr(0, rest.find(' ')));
    }
    /// All from `time` on was decoded from a key frame on.
    bool isAheadOf(double time) const { return m_keyFrame && !Numbers::above(*m_keyFrame, time); }

private:
    std::optional<double> m_keyFrame; ///< The first, in seconds from where the seek should lead.
};

std::string seconds(double value)
{
    return Numbers::fixed(value, 6).toStdString();
}

std::vector<std::string> arguments(const Request& request, double seek)
{
    // Times are rounded on their way through the file, by much less than a frame.
    constexpr double rounding = 0.002;
    FFmpegCall call(FFmpegCall::Log::filters);
    call.add({"-loglevel", "level+info"}).add(request.before).add({"-noaccurate_seek"});
    call.from(seek, 6).input(request.media);
    call.filtered("showinfo=checksum=0,trim=start=" + seconds(request.time - seek - rounding)
                  + (request.span ? ":duration=" + seconds(*request.span) : "")
                  + ",setpts=PTS-STARTPTS"
                  + (request.filters.empty() ? "" : "," + request.filters));
    if (!request.span)
        call.add({"-frames:v", "1"});
    return call.add(request.output).words();
}

/// Complaints only, as ffmpeg prints them when it is asked for nothing else.
void keepComplaint(std::string_view line, QByteArray& kept)
{
    for (const std::string_view level : {"[error] ", "[fatal] ", "[panic] "})
        if (const std::size_t at = line.find(level); at != line.npos) {
            std::string text(line);
            text.erase(at, level.size());
            kept.append(text.data(), static_cast<qsizetype>(text.size())).append('\n');
            return;
        }
}

} // namespace

bool isNeeded(const FileUrl& media)
{
    std::error_code error;
    if (!fs::is_regular_file(media.path(), error))
        return false;
    std::array<char, 1024> head{};
    std::ifstream(media.path(), std::ios::binary).read(head.data(), std::ssize(head));
    const std::string_view bytes(head.data(), head.size());
    using namespace std::string_view_literals;
    if (bytes.starts_with("\0\0\1\xBA"sv)) // a pack header, ISO/IEC 13818-1
        return true;
    // Packets of 188 bytes, also after a time stamp or before error correction.
    struct Packets {
        std::size_t offset;
        std::size_t size;
    };
    static constexpr std::array<Packets, 3> kinds{{{0, 188}, {4, 192}, {0, 204}}};
    return std::ranges::any_of(kinds, [&](const Packets& kind) {
        constexpr char sync = 0x47;
        for (std::size_t at = kind.offset; at < bytes.size(); at += kind.size)
            if (bytes[at] != sync)
                return false;
        return true;
    });
}

Result<FFTool::ToolOutput, FFToolError> run(const fs::path& ffmpeg, const Request& request)
{
    constexpr double whole = std::numeric_limits<double>::infinity();
    // Without any seek, ffmpeg would count from the first frame in place of the file's start.
    constexpr double head = 0.000001;
    const double time = std::max(request.time, 0.0);
    for (const double earlier : {3.0, 12.0, 48.0, whole}) {
        const double seek = std::max(time - earlier, head);
        Landing landing;
        QByteArray complaints;
        FFTool::Observer observer;
        observer.keepWords = false;
        observer.wordsLine = [&](std::string_view line) {
            landing.read(line);
            keepComplaint(line, complaints);
        };
        auto output = TRY(FFTool::run(ffmpeg, arguments(request, seek),
                                      {.reads = {request.media.path()},
                                       .writes = request.writes,
                                       .allowFailure = true,
                                       .observer = observer}));
        if (output.status != 0) {
            FFToolError error;
            error.tool = QStringLiteral("ffmpeg");
            error.status = output.status;
            error.words = QString::fromUtf8(complaints);
            return tl::unexpected(error);
        }
        if (seek == head || landing.isAheadOf(time - seek))
            return output;
    }
    return FFTool::ToolOutput();
}

} // namespace vantroque::StreamSeek
