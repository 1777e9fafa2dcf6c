#pragma once

#include "Support/CaptionData.h"

#include <filesystem>
#include <string>
#include <vector>

/// Small media files of many kinds. Unless a name says otherwise the picture is H.264 with 8 bits,
/// 64x64 at 25 frames a second for one second, in an MP4 file, and there is no sound.
namespace vantroque::Clips {

using Path = std::filesystem::path;

/// ffmpeg's input arguments for a moving test picture and for a tone at -20 dBFS.
std::vector<std::string> picture(const std::string& size, const std::string& rate,
                                 const std::string& seconds);
std::vector<std::string> tone(const std::string& seconds);
/// Encoder arguments that cost little.
std::vector<std::string> x264(const std::string& pixelFormat = "yuv420p");

/// 320x180 with AAC stereo sound, the index before the media: what most tests need.
Path plain();
Path indexBehind(); ///< The same, the index after.
/// The same, the media in an atom with a 64-bit size.
Path largeMediaAtom();

// Pictures.

Path tenBit();
Path hdr10(const std::string& masterDisplay, const std::string& name); ///< HEVC, 1000 and 400 nits.
Path hdr10P3();                                                        ///< Of 1000 nits.
Path hdr10Bt2020();                                                    ///< Of 4000 nits.
Path hlg();                                                            ///< HEVC.
/// In a QuickTime file; `profile` counts from 0 (Proxy) to 4 (4444).
Path prores(int profile, const std::string& pixelFormat);
Path mpeg2InMxf(); ///< 4:2:2, interlaced, 24-bit sound, start timecode 10:00:00:00.
Path vp9InWebm();
Path vp8WithAlpha();    ///< WebM.
Path transportStream(); ///< MPEG-2 TS.
Path fullRange();
Path anamorphic(); ///< Pixels of 4:3.
Path interlaced(bool topFirst);
Path variableRate();      ///< MP4 whose frames come at 25 and at 12.5 a second.
Path threeOfHundredOff(); ///< Three of a hundred intervals are 20 % too long.
Path withTimecode();      ///< QuickTime that starts at 01:00:00:00.
Path withLatin1Title();   ///< AVI whose title is not UTF-8.
/// The same MP4 file with a cover as its first video stream.
Path coverAhead(const Path& clip);

// Bit rates that the stream declares.

enum class Declared { constant, variable, nothing };
Path hrd(Declared declared);
Path hevcWithHrd();

// Captions inside the picture.

enum class CaptionsBegin { atOnce, late };
Path captioned(CaptionedCodec codec, CaptionsBegin begin);

// Streams.

Path matroska(); ///< No stream has a bit rate.
Path wav();      ///< 24-bit stereo.
Path m4a();
Path twoSounds(); ///< QuickTime with 16-bit stereo and 24-bit mono.
/// Matroska with SubRip in English and German, and image subtitles in French.
Path subtitled();

} // namespace vantroque::Clips
