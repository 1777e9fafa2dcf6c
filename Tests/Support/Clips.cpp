#include "Support/Clips.h"

#include "Support/Media.h"
#include "Support/TestFolder.h"

#include <stdexcept>

namespace vantroque::Clips {

namespace fs = std::filesystem;
using Arguments = std::vector<std::string>;
using Media::operator+;

namespace {

Arguments lavfi(const std::string& graph)
{
    return {"-f", "lavfi", "-i", graph};
}

Arguments square(const std::string& seconds = "1")
{
    return picture("64x64", "25", seconds);
}

const Arguments aac{"-c:a", "aac", "-b:a", "128k", "-ar", "48000", "-ac", "2"};

Arguments hevc(const std::string& parameters)
{
    return {"-c:v",        "libx265", "-preset", "ultrafast",    "-pix_fmt",
            "yuv420p10le", "-tag:v",  "hvc1",    "-x265-params", "log-level=none:" + parameters};
}

Arguments files(std::initializer_list<fs::path> inputs)
{
    Arguments arguments;
    for (const fs::path& input : inputs)
        arguments = arguments + Arguments{"-i", input.native()};
    return arguments;
}

fs::path cover()
{
    return Media::make({"cover.png", picture("600x600", "1", "1") + Arguments{"-frames:v", "1"}});
}

/// A file made of others' streams. Their paths hold the hash of what they are made from.
fs::path remuxed(const std::string& name, std::initializer_list<fs::path> inputs,
                 const Arguments& arguments)
{
    return Media::make({name, files(inputs) + Arguments{"-c", "copy"} + arguments});
}

/// Big-endian.
QByteArray number(std::uint64_t value, int bytes)
{
    QByteArray text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xFFU);
    return text;
}

void write(const fs::path& target, const QByteArray& bytes)
{
    TestFolder folder;
    fs::copy_file(folder.write("bytes", bytes), target, fs::copy_options::overwrite_existing);
}

struct Atom {
    QByteArray type;
    QByteArray bytes;
};

/// The atoms in a row. Small files only: no 64-bit sizes.
std::vector<Atom> atoms(const QByteArray& bytes)
{
    std::vector<Atom> found;
    for (qsizetype at = 0; at + 8 <= bytes.size();) {
        const auto size = bytes.mid(at, 4).toHex().toLongLong(nullptr, 16);
        if (size < 8)
            throw std::runtime_error("unexpected atom");
        found.push_back({bytes.mid(at + 4, 4), bytes.mid(at, size)});
        at += size;
    }
    return found;
}

/// The index with its tags, and so the cover art, before the tracks. No offset changes.
QByteArray tagsAhead(const QByteArray& file)
{
    QByteArray result;
    for (const Atom& atom : atoms(file)) {
        if (atom.type != "moov") {
            result += atom.bytes;
            continue;
        }
        QByteArray tags;
        QByteArray others;
        for (const Atom& child : atoms(atom.bytes.mid(8)))
            (child.type == "udta" ? tags : others) += child.bytes;
        result += atom.bytes.left(8) + tags + others;
    }
    return result;
}

/// An empty screen of Blu-ray subtitles, followed by its end.
QByteArray emptySubtitle(std::uint64_t seconds)
{
    const auto segment = [&](char type, const QByteArray& content) {
        return "PG" + number(seconds * 90'000, 4) + number(0, 4) + type
               + number(static_cast<std::uint64_t>(content.size()), 2) + content;
    };
    const QByteArray composition =
        number(64, 2) + number(64, 2) + '\x10' + number(seconds, 2) + '\x80' + number(0, 3);
    return segment('\x16', composition) + segment('\x80', {});
}

} // namespace

Arguments picture(const std::string& size, const std::string& rate, const std::string& seconds)
{
    return lavfi("testsrc2=s=" + size + ":r=" + rate + ":d=" + seconds);
}

Arguments tone(const std::string& seconds)
{
    return lavfi("sine=f=1000:r=48000:d=" + seconds + ",volume=-2dB");
}

Arguments x264(const std::string& pixelFormat)
{
    return {"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", pixelFormat};
}

Path plain()
{
    return Media::make({"plain.mp4", picture("320x180", "25", "1") + tone("1") + x264() + aac
                                         + Arguments{"-movflags", "+faststart"}});
}

Path indexBehind()
{
    return remuxed("index-at-the-end.mp4", {plain()}, {});
}

Path largeMediaAtom()
{
    const fs::path original = indexBehind();
    return Media::make("large-atom.mp4", {original.native()}, [&](const fs::path& target) {
        // ffmpeg leaves an empty atom before "mdat" so that its size can grow to 64 bits.
        QByteArray bytes = contents(original);
        const qsizetype type = bytes.indexOf("mdat");
        const qsizetype start = type - 12;
        if (type < 0 || bytes.mid(start + 4, 4) != "free")
            throw std::runtime_error("no room for a 64-bit size in " + original.native());
        bool isNumber = false;
        const auto size = bytes.mid(type - 4, 4).toHex().toULongLong(&isNumber, 16);
        bytes.replace(start, 16, number(1, 4) + "mdat" + number(size + 8, 8));
        write(target, bytes);
    });
}

Path tenBit()
{
    return Media::make({"ten-bit.mp4", square() + x264("yuv420p10le")});
}

Path hdr10(const std::string& masterDisplay, const std::string& name)
{
    return Media::make(
        {name, square("0.4")
                   + hevc("hdr10=1:repeat-headers=1:colorprim=bt2020:transfer=smpte2084:"
                          "colormatrix=bt2020nc:max-cll=1000,400:master-display="
                          + masterDisplay)});
}

Path hdr10P3()
{
    return hdr10("G(13250,34500)B(7500,3000)R(34000,16000)WP(15635,16450)L(10000000,1)",
                 "hdr10-p3.mp4");
}

Path hdr10Bt2020()
{
    return hdr10("G(8500,39850)B(6550,2300)R(35400,14600)WP(15635,16450)L(40000000,50)",
                 "hdr10-bt2020.mp4");
}

Path hlg()
{
    return Media::make({"hlg.mp4", square("0.4")
                                       + hevc("repeat-headers=1:colorprim=bt2020:"
                                              "transfer=arib-std-b67:colormatrix=bt2020nc")});
}

Path prores(int profile, const std::string& pixelFormat)
{
    return Media::make({"prores-" + std::to_string(profile) + ".mov",
                        square("0.4")
                            + Arguments{"-c:v", "prores_ks", "-profile:v", std::to_string(profile),
                                        "-pix_fmt", pixelFormat}});
}

Path mpeg2InMxf()
{
    return Media::make(
        {"broadcast.mxf",
         picture("720x576", "25", "1") + tone("1")
             + Arguments{"-c:v",        "mpeg2video", "-pix_fmt", "yuv422p",   "-flags",
                         "+ildct+ilme", "-top",       "1",        "-b:v",      "10M",
                         "-c:a",        "pcm_s24le",  "-ac",      "2",         "-bf",
                         "2",           "-g",         "12",       "-timecode", "10:00:00:00"}});
}

Path vp9InWebm()
{
    return Media::make(
        {"vp9.webm", square() + tone("1")
                         + Arguments{"-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used",
                                     "8", "-pix_fmt", "yuv420p", "-c:a", "libopus"}});
}

Path vp8WithAlpha()
{
    return Media::make(
        {"alpha.webm", square()
                           + Arguments{"-c:v", "libvpx", "-deadline", "realtime", "-pix_fmt",
                                       "yuva420p", "-auto-alt-ref", "0"}});
}

Path transportStream()
{
    return Media::make({"stream.ts", square() + x264()});
}

Path fullRange()
{
    return Media::make({"full-range.mp4", square() + Arguments{"-vf", "scale=out_range=full"}
                                              + x264() + Arguments{"-color_range", "pc"}});
}

Path anamorphic()
{
    return Media::make({"anamorphic.mp4", square() + Arguments{"-vf", "setsar=4/3"} + x264()});
}

Path interlaced(bool topFirst)
{
    const std::string name = topFirst ? "top-first.mp4" : "bottom-first.mp4";
    const std::string order = topFirst ? "tff=1" : "bff=1";
    return Media::make({name, square() + x264() + Arguments{"-x264-params", order}});
}

Path variableRate()
{
    return Media::make(
        {"variable.mp4",
         square() + Arguments{"-vf", R"(select='lt(n\,10)+not(mod(n\,2))')", "-fps_mode", "vfr"}
             + x264()});
}

Path threeOfHundredOff()
{
    return Media::make(
        {"three-off.mp4",
         square("4.04")
             + Arguments{"-vf",
                         "settb=1/1000,setpts=40*N+8*gte(N\\,20)+8*gte(N\\,50)+8*gte(N\\,80)",
                         "-fps_mode", "passthrough", "-enc_time_base", "1:1000",
                         "-video_track_timescale", "1000", "-bf", "0"}
             + x264()});
}

Path withTimecode()
{
    return Media::make({"timecode.mov", square() + x264() + Arguments{"-timecode", "01:00:00:00"}});
}

Path withLatin1Title()
{
    return Media::make(
        {"latin1.avi", square() + Arguments{"-c:v", "mpeg4", "-metadata", "title=Caf\xE9"}});
}

Path coverAhead(const Path& clip)
{
    const fs::path after = remuxed("cover-" + clip.filename().native(), {clip, cover()},
                                   {"-map", "0", "-map", "1", "-disposition:v:1", "attached_pic"});
    return Media::make("first-" + after.filename().native(), {after.native()},
                       [&](const fs::path& target) { write(target, tagsAhead(contents(after))); });
}

Path hrd(Declared declared)
{
    const bool cbr = declared == Declared::constant;
    const Arguments control = declared == Declared::nothing
                                  ? Arguments{"-b:v", "500k"}
                                  : Arguments{"-b:v",         "500k",
                                              "-minrate",     cbr ? "500k" : "0",
                                              "-maxrate",     "500k",
                                              "-bufsize",     "500k",
                                              "-x264-params", cbr ? "nal-hrd=cbr" : "nal-hrd=vbr"};
    const std::string name = cbr                              ? "hrd-cbr.mp4"
                             : declared == Declared::variable ? "hrd-vbr.mp4"
                                                              : "hrd-none.mp4";
    return Media::make({name, square() + x264() + control});
}

Path hevcWithHrd()
{
    return Media::make(
        {"hrd-hevc.mp4", square() + hevc("hrd=1:vbv-maxrate=512:vbv-bufsize=512:bitrate=512")});
}

Path captioned(CaptionedCodec codec, CaptionsBegin begin)
{
    struct Form {
        std::string name;
        std::string rawExtension;
        std::string extension;
        Arguments encoder;
    };
    const Form form = [&]() -> Form {
        switch (codec) {
        case CaptionedCodec::h264: return {"h264", ".h264", ".mp4", x264()};
        case CaptionedCodec::hevc:
            return {"hevc", ".hevc", ".mp4",
                    hevc("bframes=0:keyint=25") + Arguments{"-pix_fmt", "yuv420p"}};
        case CaptionedCodec::mpeg2: break;
        }
        return {"mpeg2", ".m2v", ".mxf", {"-c:v", "mpeg2video", "-b:v", "2M"}};
    }();
    const bool late = begin == CaptionsBegin::late;
    constexpr int lateFrom = 150; // of 200 pictures
    const std::string raw = (late ? "late-" : "captions-") + form.name + form.rawExtension;
    const fs::path bare = Media::make(
        {raw, square(late ? "8" : "1") + form.encoder + Arguments{"-bf", "0", "-g", "25"}});
    // The last word stands for the form of the inserted data.
    const fs::path withData =
        Media::make(raw, {bare.native(), "captions 1"}, [&](const fs::path& target) {
            write(target, withCaptions(contents(bare), codec, [&](int picture) {
                      return picture >= (late ? lateFrom : 0);
                  }));
        });
    return Media::make({fs::path(raw).stem().native() + form.extension,
                        Arguments{"-framerate", "25", "-i", withData.native(), "-c", "copy"}});
}

Path matroska()
{
    return remuxed("plain.mkv", {plain()}, {});
}

Path wav()
{
    return Media::make({"sound.wav", tone("1") + Arguments{"-c:a", "pcm_s24le", "-ac", "2"}});
}

Path m4a()
{
    return Media::make({"sound.m4a", tone("1") + aac});
}

Path twoSounds()
{
    return Media::make({"two-sounds.mov", square() + tone("1") + tone("0.5") + x264()
                                              + Arguments{"-map", "0", "-map", "1", "-map", "2",
                                                          "-c:a:0", "pcm_s16le", "-ac:a:0", "2",
                                                          "-c:a:1", "pcm_s24le", "-ac:a:1", "1"}});
}

Path subtitled()
{
    const TestFolder folder;
    const QByteArray text = "1\n00:00:00,000 --> 00:00:00,500\nHello\n";
    const QByteArray images = emptySubtitle(0) + emptySubtitle(1);
    const auto arguments = [&](const fs::path& textFile, const fs::path& imageFile) {
        return files({plain(), textFile, textFile, imageFile})
               + Arguments{"-map",
                           "0",
                           "-map",
                           "1",
                           "-map",
                           "2",
                           "-map",
                           "3",
                           "-c",
                           "copy",
                           "-metadata:s:s:0",
                           "language=eng",
                           "-metadata:s:s:1",
                           "language=ger",
                           "-metadata:s:s:2",
                           "language=fre"};
    };
    return Media::make("subtitled.mkv",
                       arguments("text", "images")
                           + Arguments{text.toStdString(), images.toStdString()},
                       [&](const fs::path& target) {
                           Media::ffmpeg(arguments(folder.write("text.srt", text),
                                                   folder.write("images.sup", images))
                                         + Arguments{target.native()});
                       });
}

} // namespace vantroque::Clips
