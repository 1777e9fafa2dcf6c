#pragma once

#include <QByteArray>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Small clips of many containers, and ways to damage them.
namespace vantroque::DamagedClips {

/// Four seconds of a moving picture of 320x180 at 25 frames a second in groups of 12, and a tone.
struct Clip {
    std::string name;                   ///< As the page lists it.
    std::string file;                   ///< With the extension of its container.
    std::vector<std::string> arguments; ///< Of ffmpeg, after its two inputs.
};

const std::vector<Clip>& clips();
/// The intact clip, made once.
std::filesystem::path intact(const Clip& clip);

/// A stretch of the file and what becomes of it.
struct Fault {
    enum class Kind { zeroed, noise, removed };
    Kind kind = Kind::zeroed;
    qsizetype start = 0;
    qsizetype length = 0;
};

/// One packet of picture or sound.
struct PacketPlace {
    double time = 0; ///< Seconds, of presentation.
    qsizetype position = 0;
    qsizetype size = 0;
    bool isPicture = false;
};

/// The packets of a clip in the order of the file.
std::vector<PacketPlace> packets(const std::filesystem::path& clip);

/// The faults that are planted, each under the name that the page has for it.
struct Planted {
    std::string name;
    Fault fault;
};
std::vector<Planted> faults(const QByteArray& whole, const std::vector<PacketPlace>& packets);

/// The bytes with the fault in them.
QByteArray damaged(QByteArray whole, const Fault& fault);

/// The time of the first frame or sample that the fault touches, in seconds from the first frame,
/// or of a file without picture from the first sample; nothing when it touches none.
std::optional<double> firstTouched(const std::vector<PacketPlace>& packets, const Fault& fault);

} // namespace vantroque::DamagedClips
