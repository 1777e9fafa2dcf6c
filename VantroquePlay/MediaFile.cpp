#include "VantroquePlay/MediaFile.h"

#include <array>

namespace vantroque {

namespace {

// Files that hold media themselves. Left out are lists of other files, devices and the network.
constexpr const char* formats =
    "mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,mxf,mpegts,mpeg,mpegvideo,avi,flv,ogg,asf,gxf,dv,m4v,"
    "h264,hevc,av1,obu,ivf,vc1,dirac,dnxhd,mjpeg,nut,rm,lxf,wtv,yuv4mpegpipe,gif,wav,w64,aiff,mp3,"
    "flac,aac,ac3,eac3,caf";

constexpr std::int64_t mostPixels = std::int64_t{16384} * 16384;

} // namespace

Error libavError(int error)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> words{};
    av_strerror(error, words.data(), words.size());
    return {QString::fromUtf8(words.data())};
}

Result<MediaFile> MediaFile::open(const std::string& path, const AVIOInterruptCB& interrupt)
{
    AVFormatContext* file = avformat_alloc_context();
    if (file == nullptr)
        return tl::unexpected(libavError(AVERROR(ENOMEM)));
    file->interrupt_callback = interrupt;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    av_dict_set(&options, "format_whitelist", formats, 0);
    // Releases the context when it fails. With the protocol, no name is taken for another one.
    int error = avformat_open_input(&file, ("file:" + path).c_str(), nullptr, &options);
    av_dict_free(&options);
    if (error < 0)
        return tl::unexpected(libavError(error));
    MediaFile opened{Libav<AVFormatContext>(file)};
    error = avformat_find_stream_info(file, nullptr);
    if (error < 0)
        return tl::unexpected(libavError(error));
    return opened;
}

int MediaFile::picture(int number) const
{
    for (int i = 0; i < streams(); ++i)
        if (stream(i)->codecpar->codec_type == AVMEDIA_TYPE_VIDEO && number-- == 0)
            return i;
    return -1;
}

void MediaFile::readOnly(int stream, int andStream) const
{
    for (int i = 0; i < streams(); ++i)
        m_file->streams[i]->discard =
            i == stream || i == andStream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
}

Result<Libav<AVCodecContext>> MediaFile::decoderOf(int stream) const
{
    if (stream < 0 || stream >= streams())
        return failure(QStringLiteral("there is no such picture"));
    const AVStream* const chosen = m_file->streams[stream];
    const AVCodec* const codec = avcodec_find_decoder(chosen->codecpar->codec_id);
    if (codec == nullptr)
        return tl::unexpected(libavError(AVERROR_DECODER_NOT_FOUND));
    Libav<AVCodecContext> decoder(avcodec_alloc_context3(codec));
    if (!decoder)
        return tl::unexpected(libavError(AVERROR(ENOMEM)));
    if (const int error = avcodec_parameters_to_context(decoder.get(), chosen->codecpar); error < 0)
        return tl::unexpected(libavError(error));
    decoder->pkt_timebase = chosen->time_base;
    decoder->max_pixels = mostPixels;
    return decoder;
}

} // namespace vantroque
