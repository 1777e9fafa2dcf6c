#include "Base/Json.h"
#include "CLI/Cli.h"
#include "Records/MediaInfo.h"
#include "Support/Clips.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;

TEST(ProbeCommand, PrintsTheRecord)
{
    const auto run = Cli::run({"probe", Clips::hdr10P3().native()});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.err.isEmpty());
    const auto media = Json::read<MediaInfo>(run.out);
    ASSERT_TRUE(media) << media.error().description.toStdString();
    EXPECT_EQ(media->url, FileUrl::fromPath(Clips::hdr10P3()));
    EXPECT_EQ(media->video->hdr->maxCLL, 1000);
    EXPECT_EQ(media->analysisVersion, 5);
}

TEST(ProbeCommand, GoesOnBehindAFileThatFails)
{
    const auto run = Cli::run({"probe", "/nowhere.mp4", Clips::wav().native()});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.err.toStdString(),
                HasSubstr("vantroque-cli: /nowhere.mp4: ffprobe exited with status 1: "));
    EXPECT_TRUE(Json::read<MediaInfo>(run.out));
}

TEST(ProbeCommand, PrintsOneRecordAFile)
{
    const auto run = Cli::run({"probe", Clips::wav().native(), Clips::m4a().native()});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out.count("\"analysisVersion\": 5"), 2);
}

} // namespace
} // namespace vantroque
