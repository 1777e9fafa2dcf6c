#include "Tools/FFmpegCall.h"

#include "Base/Numbers.h"

namespace vantroque {

FFmpegCall::FFmpegCall(Log log) : m_words{"-hide_banner"}
{
    add(log == Log::complaints ? Words{"-loglevel", "error"} : Words{"-nostats"});
}

FFmpegCall& FFmpegCall::add(const Words& words)
{
    m_words.insert(m_words.end(), words.begin(), words.end());
    return *this;
}

FFmpegCall& FFmpegCall::asStored(const VideoStreamInfo& video)
{
    return video.rotation.value_or(0) != 0 ? add({"-noautorotate"}) : *this;
}

FFmpegCall& FFmpegCall::from(double seconds, int decimals)
{
    return add({"-ss", Numbers::fixed(seconds, decimals).toStdString()});
}

FFmpegCall& FFmpegCall::lasting(double seconds, int decimals)
{
    return add({"-t", Numbers::fixed(seconds, decimals).toStdString()});
}

FFmpegCall& FFmpegCall::input(const FileUrl& media)
{
    return add({"-i", media.path().native()});
}

FFmpegCall& FFmpegCall::filtered(const std::string& filters)
{
    return filters.empty() ? *this : add({"-vf", filters});
}

FFmpegCall& FFmpegCall::files(const std::filesystem::path& pattern)
{
    return add({"-f", "image2", pattern.native()});
}

} // namespace vantroque
