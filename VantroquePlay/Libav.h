#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

/// What libav gives out, owned.
namespace vantroque {

struct LibavRelease {
    void operator()(AVFormatContext* file) const { avformat_close_input(&file); }
    void operator()(AVCodecContext* decoder) const { avcodec_free_context(&decoder); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
    void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};

template<typename Thing>
using Libav = std::unique_ptr<Thing, LibavRelease>;

} // namespace vantroque
