#pragma once

#include "Base/Record.h"
#include "Base/Result.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantroque {

/// A text that ffprobe may print as a string or as a number. Anything else reads as empty.
struct FFString {
    QString text;

    static FFString fromJson(const QJsonValue& json);
    /// The whole text as a finite decimal number or as an integer.
    std::optional<double> asDouble() const;
    std::optional<std::int64_t> asInt() const;

    bool operator==(const FFString&) const = default;
};

using FFTags = std::map<QString, QString>;

/// What is used of the output of `ffprobe -show_format -show_streams`. Only a stream's index is
/// always there.
struct FFProbeOutput {
    struct Disposition {
        std::optional<int> attached_pic;
        VANTROQUE_RECORD(Disposition, attached_pic)
    };

    struct SideData {
        std::optional<int> rotation; ///< Of the display matrix.
        VANTROQUE_RECORD(SideData, rotation)
    };

    struct Stream {
        int index = 0;
        std::optional<QString> codec_type;
        std::optional<QString> codec_name;
        std::optional<QString> codec_tag_string;
        std::optional<QString> profile;
        std::optional<Disposition> disposition;
        std::optional<int> width;
        std::optional<int> height;
        std::optional<QString> pix_fmt;
        std::optional<QString> sample_aspect_ratio;
        std::optional<QString> field_order;
        std::optional<int> level;
        std::optional<QString> avg_frame_rate;
        std::optional<QString> r_frame_rate;
        std::optional<FFString> nb_frames;
        std::optional<FFString> start_time;
        std::optional<FFString> duration;
        std::optional<FFString> bit_rate;
        std::optional<FFString> sample_rate;
        std::optional<int> channels;
        std::optional<QString> channel_layout;
        std::optional<FFString> bits_per_raw_sample;
        std::optional<QString> color_transfer;
        std::optional<QString> color_range;
        std::optional<QString> color_space;
        std::optional<QString> color_primaries;
        std::optional<int> closed_captions;
        std::optional<FFTags> tags;
        std::optional<std::vector<SideData>> side_data_list;

        bool isType(const QString& type) const { return codec_type == type; }
        bool isCoverArt() const
        {
            return disposition && disposition->attached_pic.value_or(0) != 0;
        }

        VANTROQUE_RECORD(Stream, index, codec_type, codec_name, codec_tag_string, profile,
                         disposition, width, height, pix_fmt, sample_aspect_ratio, field_order,
                         level, avg_frame_rate, r_frame_rate, nb_frames, start_time, duration,
                         bit_rate, sample_rate, channels, channel_layout, bits_per_raw_sample,
                         color_transfer, color_range, color_space, color_primaries, closed_captions,
                         tags, side_data_list)
    };

    struct Format {
        std::optional<QString> format_name;
        std::optional<FFString> duration;
        std::optional<FFString> size;
        std::optional<FFString> bit_rate;
        std::optional<FFTags> tags;
        VANTROQUE_RECORD(Format, format_name, duration, size, bit_rate, tags)
    };

    std::optional<Format> format;
    std::optional<std::vector<Stream>> streams;

    /// Fails on malformed JSON and on a value of the wrong type, never on an absent one.
    static Result<FFProbeOutput> decode(const QByteArray& json);

    VANTROQUE_RECORD(FFProbeOutput, format, streams)
};

/// The arguments that print it, without the file.
std::vector<std::string> ffprobeArguments();

} // namespace vantroque
