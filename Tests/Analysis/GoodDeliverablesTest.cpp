#include "Analysis/Analyzer.h"
#include "Probe/Prober.h"
#include "Profiles/ProfileStore.h"
#include "Support/Clips.h"
#include "Support/Media.h"
#include "Support/TestFolder.h"

#include <map>
#include <stdexcept>

// A file made for a platform passes that platform's profile, as far as a probe can tell.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

const std::vector<Profile>& shipped()
{
    static const auto profiles = ProfileStore::loadFrom(VANTROQUE_SHIPPED_PROFILES).value();
    return profiles;
}

const Profile& shippedProfile(const std::string& id)
{
    const auto found = std::ranges::find(shipped(), QString::fromStdString(id), &Profile::id);
    if (found == shipped().end())
        throw std::runtime_error("no profile " + id);
    return *found;
}

ProfileReport reportOn(const fs::path& file, const std::string& profile)
{
    const auto media = Prober::probe(FileUrl::fromPath(file));
    if (!media)
        throw std::runtime_error(media.error().description.toStdString());
    return Analyzer::report(*media, {shippedProfile(profile)}).profiles.at(0);
}

// A grey picture costs the encoder little; its rate comes from stuffing.

Words greyPicture(const std::string& size, const std::string& rate, const std::string& seconds)
{
    return {"-f", "lavfi", "-i", "color=gray:s=" + size + ":r=" + rate + ":d=" + seconds};
}

/// Stereo noise of -24 LKFS. AAC would spend next to nothing on silence or a tone, and the rate
/// that it does spend is what counts.
Words noise(const std::string& seconds)
{
    const std::string form = "anoisesrc=c=pink:a=0.25:r=48000:d=" + seconds + ":seed=";
    return {"-f", "lavfi", "-i", form + "1[l];" + form + "2[r];[l][r]amerge"};
}

const Words videoRange{"-color_range",     "tv",    "-colorspace", "bt709",
                       "-color_primaries", "bt709", "-color_trc",  "bt709"};

/// H.264 High at a constant rate, in an MP4 file of 10 seconds with its index ahead.
fs::path online(const std::string& name, const std::string& size, const std::string& mbps)
{
    const std::string rate = mbps + "M";
    return Media::make(
        {name,
         greyPicture(size, "24000/1001", "10.01") + noise("10.01")
             + Words{"-c:v",     "libx264", "-preset",      "ultrafast",
                     "-pix_fmt", "yuv420p", "-b:v",         rate,
                     "-minrate", rate,      "-maxrate",     rate,
                     "-bufsize", rate,      "-x264-params", "nal-hrd=cbr:filler=1:8x8dct=1:cabac=1",
                     "-c:a",     "aac",     "-b:a",         "320k",
                     "-ac",      "2",       "-movflags",    "+faststart"}
             + videoRange});
}

fs::path landscape()
{
    return online("VQAD0001H.mp4", "1920x1080", "21");
}

fs::path lighterLandscape()
{
    return online("lighter.mp4", "1920x1080", "8");
}

fs::path portrait()
{
    return online("portrait.mp4", "1080x1920", "8");
}

/// MPEG-2 4:2:2 at 50 Mbit/s, interlaced, with 24-bit sound.
fs::path broadcast(const std::string& name, const std::string& rate, const std::string& seconds)
{
    return Media::make(
        {name, greyPicture("1920x1080", rate, seconds) + noise(seconds)
                   + Words{"-c:v",      "mpeg2video", "-profile:v", "0",        "-level:v",
                           "2",         "-pix_fmt",   "yuv422p",    "-flags",   "+ildct+ilme",
                           "-top",      "1",          "-b:v",       "50M",      "-minrate",
                           "50M",       "-maxrate",   "50M",        "-bufsize", "17825792",
                           "-g",        "12",         "-bf",        "2",        "-c:a",
                           "pcm_s24le", "-ac",        "2"}
                   + videoRange});
}

fs::path europeanMxf()
{
    return broadcast("european.mxf", "25", "2");
}

fs::path americanMxf()
{
    return broadcast("american.mxf", "30000/1001", "2.002");
}

fs::path intraMxf()
{
    return Media::make(
        {"intra.mxf", greyPicture("1920x1080", "25", "1") + noise("1")
                          + Words{"-c:v", "libx264", "-pix_fmt", "yuv422p10le", "-avcintra-class",
                                  "100", "-flags", "+ildct+ilme", "-x264-params", "tff=1", "-c:a",
                                  "pcm_s24le", "-ac", "2"}
                          + videoRange});
}

fs::path proresHQ()
{
    return Media::make(
        {"VQAD0002H.mov", greyPicture("1920x1080", "24000/1001", "1.001") + noise("1.001")
                              + Words{"-c:v", "prores", "-profile:v", "3", "-pix_fmt",
                                      "yuv422p10le", "-c:a", "pcm_s24le", "-ac", "2"}
                              + videoRange});
}

struct Deliverable {
    fs::path (*make)();
    std::vector<std::string> profiles;
};

const std::vector<Deliverable>& deliverables()
{
    static const std::vector<Deliverable> all{
        {landscape,
         {"aes-streaming-loudness",
          "amazon-streaming-tv",
          "atsc-a85",
          "disney-hulu",
          "extreme-reach-digital",
          "extreme-reach-social",
          "google-dv360",
          "linkedin-ctv",
          "linkedin-video",
          "meta-feed",
          "nbcu-linear",
          "netflix-ads",
          "paramount-streaming",
          "peacock-nbcu",
          "pinterest-video",
          "reddit-video",
          "roku-ads",
          "samsung-ads",
          "smpte-title-safe",
          "spotify-video",
          "vimeo-upload",
          "x-video-ad",
          "youtube-upload",
          "youtube-video-ad"}},
        {lighterLandscape, {"twitch-premium-video"}},
        {portrait,
         {"instagram-reels-organic", "meta-reels-stories", "snapchat-single-video",
          "tiktok-in-feed", "twitch-vertical-video"}},
        {europeanMxf,
         {"ard-zdf-orf", "arte-programme", "australia-free-tv", "clearcast-library", "ebu-r128",
          "extreme-reach-uk-roi", "france-pad", "peach-germany", "rtl-germany", "zdf-commercial"}},
        {americanMxf, {"cbc-radio-canada"}},
        {intraMxf, {"uk-dpp-programme"}},
        {proresHQ, {"extreme-reach-broadcast"}},
    };
    return all;
}

struct Case {
    fs::path (*make)();
    std::string profile;
};

void PrintTo(const Case& each, std::ostream* out)
{
    *out << each.profile;
}

std::vector<Case> cases()
{
    std::vector<Case> all;
    for (const Deliverable& deliverable : deliverables())
        for (const std::string& profile : deliverable.profiles)
            all.push_back({deliverable.make, profile});
    return all;
}

std::string nameOf(const testing::TestParamInfo<Case>& info)
{
    std::string name = info.param.profile;
    std::ranges::replace(name, '-', '_');
    return name;
}

/// A warning for want of a measurement is not the file's fault.
bool wasNotMeasured(const CheckResult& row)
{
    return row.measured.contains("signal pass skipped"_L1)
           || row.measured.contains("text not scanned"_L1)
           || row.measured.contains("could not be measured"_L1);
}

std::string described(const CheckResult& row)
{
    return row.id.toStdString() + ": measured " + row.measured.toStdString() + ", expected "
           + row.expected.toStdString();
}

class GoodDeliverable : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Of, GoodDeliverable, testing::ValuesIn(cases()), nameOf);

TEST_P(GoodDeliverable, PassesItsPlatform)
{
    const auto report = reportOn(GetParam().make(), GetParam().profile);
    std::vector<std::string> problems;
    for (const CheckResult& row : report.checks)
        if (row.verdict == Verdict::fail || (row.verdict == Verdict::warn && !wasNotMeasured(row)))
            problems.push_back(described(row));
    EXPECT_THAT(problems, IsEmpty());
}

TEST(GoodDeliverables, CoverEveryShippedProfile)
{
    std::vector<QString> covered;
    for (const Case& each : cases())
        covered.push_back(QString::fromStdString(each.profile));
    std::vector<QString> all;
    for (const Profile& profile : shipped())
        all.push_back(profile.id);
    EXPECT_THAT(covered, testing::UnorderedElementsAreArray(all));
}

/// Wrong in nearly every way; the encoder's first frame lasts twice as long, too.
fs::path badDeliverable()
{
    return Media::make(
        {"holiday film.avi", Words{"-f", "lavfi", "-i", "testsrc2=s=360x288:r=15:d=2"} + noise("1")
                                 + Words{"-vf", "setsar=16/11", "-c:v", "mpeg4", "-c:a",
                                         "libmp3lame", "-ar", "22050", "-ac", "1", "-b:a", "32k"}});
}

std::vector<std::string> failedIds(const std::string& profile)
{
    std::vector<std::string> ids;
    for (const CheckResult& row : reportOn(badDeliverable(), profile).failedChecks())
        ids.push_back(row.id.toStdString());
    return ids;
}

TEST(BadDeliverable, FailsAnOnlinePlatformOnEveryCount)
{
    EXPECT_THAT(failedIds("netflix-ads"),
                UnorderedElementsAre("container", "video-codec", "resolution", "frame-rate", "cfr",
                                     "audio-codec", "sample-rate", "channels", "audio-bitrate",
                                     "audio-coverage", "duration"));
}

TEST(BadDeliverable, FailsABroadcasterOnEveryCount)
{
    EXPECT_THAT(failedIds("uk-dpp-programme"),
                UnorderedElementsAre("container", "video-codec", "resolution", "pixel-aspect",
                                     "chroma", "frame-rate", "cfr", "audio-codec", "sample-rate",
                                     "audio-coverage"));
}

} // namespace
} // namespace vantroque
