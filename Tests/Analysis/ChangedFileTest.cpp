#include "Analysis/Analyzer.h"
#include "Base/FileDescriptor.h"
#include "Check/Builders.h"
#include "Probe/Prober.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

#include <fcntl.h>
#include <future>
#include <sys/stat.h>
#include <utility>

// A film that becomes another one while it is analysed: no report may be of both.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
namespace fs = std::filesystem;

const QString wasChanged = u"The file was changed while it was analysed. Analyze it again."_s;

fs::path clip(const std::string& size, const std::string& seconds)
{
    return Media::make({size + ".mov", Clips::picture(size, "25", seconds) + Clips::tone(seconds)
                                           + std::vector<std::string>{"-c:v", "prores_ks", "-c:a",
                                                                      "pcm_s16le", "-ac", "2"}});
}

Profile loud()
{
    Profile profile = bareProfile();
    profile.loudness = LoudnessRule();
    return profile;
}

Result<Analyzer::Analysis> analysed(const fs::path& file)
{
    return Analyzer::analyze(FileUrl::fromPath(file), {loud()});
}

class ChangedFile : public testing::Test {
protected:
    void SetUp() override
    {
        fs::copy_file(clip("64x36", "1"), m_film);
        fs::copy_file(clip("96x54", "2"), m_next);
    }
    /// The decode does this before it begins.
    void beforeDecode(const std::string& deed) const
    {
        m_tools.put("ffmpeg", "case \"$*\" in *ebur128*) echo >> '" + bytes(m_decodes) + "'\n"
                                  + QByteArray::fromStdString(deed)
                                  + ";; esac\nexec ffmpeg \"$@\"");
    }
    static QByteArray bytes(const fs::path& path)
    {
        return QByteArray::fromStdString(path.native());
    }
    /// All of it is of the film that came in place of the first.
    void expectNext(const Result<Analyzer::Analysis>& analysis) const
    {
        ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
        MediaInfo media = analysis->media;
        media.url = FileUrl::fromPath(clip("96x54", "2"));
        MediaInfo next = analysed(media.url.path())->media;
        EXPECT_NE(std::exchange(media.stamp, {}), std::exchange(next.stamp, {}));
        EXPECT_EQ(media, next);
    }

    const FakeTools m_tools;
    const TestFolder m_folder;
    const fs::path m_film = m_folder / "film.mov";
    const fs::path m_next = m_folder / "next.mov";
    const fs::path m_decodes = m_folder / "decodes"; ///< A line for each.
};

TEST_F(ChangedFile, ThatIsReplacedUnderAToolInItsCageIsAnalysedFromTheStart)
{
    const ScopedVariable closed("VANTROQUE_CAGE");
    for (const auto& [tool, call] :
         {std::pair("ffprobe", "show_streams"), std::pair("ffmpeg", "ebur128")}) {
        SCOPED_TRACE(tool);
        const fs::path gate = m_tools.folder() / (std::string(tool) + "-waits-here");
        fs::copy_file(clip("64x36", "1"), m_film, fs::copy_options::overwrite_existing);
        fs::copy_file(clip("96x54", "2"), m_next, fs::copy_options::overwrite_existing);
        ASSERT_EQ(::mkfifo(gate.c_str(), 0600), 0);
        m_tools.put(tool, QByteArray("case \"$*\" in *") + call + "*) [ -p '" + bytes(gate)
                              + "' ] && read x < '" + bytes(gate) + "';; esac\nexec " + tool
                              + " \"$@\"");
        auto analysis = std::async(std::launch::async, [&] { return analysed(m_film); });
        {
            const FileDescriptor met(::open(gate.c_str(), O_WRONLY | O_CLOEXEC)); // The tool waits.
            fs::rename(m_next, m_film);
            fs::remove(gate);
        }
        expectNext(analysis.get());
    }
}

TEST_F(ChangedFile, ThatIsReplacedAfterItsProbeIsProbedAgain)
{
    const auto probed = Prober::probe(FileUrl::fromPath(m_film), Prober::Captions::leftOut);
    fs::rename(m_next, m_film);
    expectNext(Analyzer::analyze(probed.value(), {loud()}));
}

TEST_F(ChangedFile, ThatIsWrittenToOrReplacedOverAndOverHasNoReport)
{
    beforeDecode("echo >> '" + m_film.native() + "'");
    EXPECT_EQ(analysed(m_film).error().description, wasChanged);
    EXPECT_EQ(contents(m_decodes), "\n");
    beforeDecode("cp '" + m_next.native() + "' '" + m_film.native() + ".new'; mv '"
                 + m_film.native() + ".new' '" + m_film.native() + "'");
    EXPECT_EQ(analysed(m_film).error().description, wasChanged);
    EXPECT_EQ(contents(m_decodes), "\n\n\n") << "it is begun again once";
}

TEST_F(ChangedFile, ThatARecordIsNotOfIsNotMeasuredForIt)
{
    MediaInfo media = Prober::probe(FileUrl::fromPath(m_film)).value();
    const MediaInfo before = media;
    beforeDecode("echo >> '" + m_film.native() + "'");
    EXPECT_EQ(Analyzer::rescore(media, {loud()}).error().description, wasChanged);
    EXPECT_EQ(Analyzer::rescore(media, {loud()}).error().description,
              u"The file was changed after it was analysed. Analyze it again."_s);
    EXPECT_EQ(media, before);
    EXPECT_EQ(contents(m_decodes), "\n");
}

} // namespace
} // namespace vantroque
