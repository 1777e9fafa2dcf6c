#pragma once

#include "Base/Result.h"
#include "VantroquePlay/Libav.h"

#include <string>

namespace vantroque {

/// What libav says of an error.
Error libavError(int error);

/// A file of this machine, opened for reading packets. What names other files is not opened.
class MediaFile {
public:
    /// `interrupt` is asked now and then while it reads.
    static Result<MediaFile> open(const std::string& path, const AVIOInterruptCB& interrupt);

    AVFormatContext* get() const { return m_file.get(); }
    int streams() const { return static_cast<int>(m_file->nb_streams); }
    AVStream* stream(int index) const { return m_file->streams[index]; }
    /// The stream of that picture, counted from 0, cover art among them; below 0 without it.
    int picture(int number) const;
    /// Only the packets of these will be read from now on.
    void readOnly(int stream, int andStream = -1) const;
    /// A decoder for that stream, with its parameters, still to be opened.
    Result<Libav<AVCodecContext>> decoderOf(int stream) const;

private:
    explicit MediaFile(Libav<AVFormatContext> file) : m_file(std::move(file)) {}

    Libav<AVFormatContext> m_file;
};

} // namespace vantroque
