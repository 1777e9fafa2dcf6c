// DecodingFlips [AFTER+]COUNT [CLIP...]: flips so many random bytes, one at a time, in each of the
// small clips of the damage tests, and tells how many of them are found. What is silent is decoded
// once more: a flip that changes nothing of what is shown or heard has nothing to be found. Takes
// hours, so that the clips take turns and the table is printed every fifty rounds. "300+700" leaves
// out the first 300 flips, which an earlier run has made: the flips of a clip are the same each
// time.

#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "PlantedDamage/DamagedClips.h"
#include "Probe/Prober.h"
#include "Signal/SignalAnalyzer.h"
#include "Tools/FFTool.h"

#include <algorithm>
#include <iostream>
#include <random>
#include <string>

using namespace vantroque;
namespace fs = std::filesystem;

namespace {

enum class Outcome { told, refused, unchanged, missed };

struct Tally {
    int told = 0;
    int refused = 0;
    int unchanged = 0;
    int missed = 0;

    void add(Outcome outcome)
    {
        switch (outcome) {
        case Outcome::told: ++told; break;
        case Outcome::refused: ++refused; break;
        case Outcome::unchanged: ++unchanged; break;
        case Outcome::missed: ++missed; break;
        }
    }
};

/// A digest of every picture and sample.
QByteArray shown(const fs::path& file)
{
    const auto run = FFTool::run(
        FFTool::find("ffmpeg").value(),
        {"-v", "quiet", "-i", file.native(), "-map", "0:v?", "-map", "0:a?", "-f", "md5", "-"},
        {.allowFailure = true});
    return run ? run->output : QByteArray();
}

Outcome outcome(const fs::path& file, const QByteArray& shownIntact)
{
    const auto media = Prober::probe(FileUrl::fromPath(file));
    if (!media)
        return Outcome::refused;
    const auto signal = SignalAnalyzer::analyze(media->url, *media, {}, nullptr);
    if (!signal)
        return Outcome::refused;
    if (!signal->decodeHealth->isWhole())
        return Outcome::told;
    return shown(file) == shownIntact ? Outcome::unchanged : Outcome::missed;
}

/// Flips bytes of one clip, the same each time.
class Flips {
public:
    Flips(DamagedClips::Clip clip, const fs::path& folder)
        : m_clip(std::move(clip)), m_file(folder / m_clip.file)
    {
        const fs::path intact = DamagedClips::intact(m_clip);
        m_whole = Files::read(intact, 100'000'000).value();
        m_shownIntact = shown(intact);
    }

    void flip()
    {
        const auto [at, by] = next();
        QByteArray bytes = m_whole;
        bytes[at] = static_cast<char>(bytes[at] ^ by);
        if (!Files::writeAtomically(m_file, bytes))
            throw std::runtime_error("cannot write " + m_file.native());
        m_tally.add(outcome(m_file, m_shownIntact));
    }

    void skip() { next(); }

    void print(int count) const
    {
        std::cout << "| " << m_clip.name << " | " << count << " | " << m_tally.told << " | "
                  << m_tally.refused << " | " << m_tally.unchanged << " | " << m_tally.missed
                  << " |" << std::endl;
    }

private:
    /// Where, and which bits.
    std::pair<qsizetype, int> next()
    {
        std::uniform_int_distribution<qsizetype> position(0, m_whole.size() - 1);
        std::uniform_int_distribution<int> change(1, 255);
        const qsizetype at = position(m_chance);
        return {at, change(m_chance)};
    }

    DamagedClips::Clip m_clip;
    fs::path m_file;
    QByteArray m_whole;
    QByteArray m_shownIntact;
    std::mt19937 m_chance{7}; // NOLINT: the same flips each time
    Tally m_tally;
};

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const std::string counts = words.empty() ? std::string() : words.front();
    const auto plus = counts.find('+');
    const int after = plus == std::string::npos ? 0 : std::atoi(counts.c_str());
    const int count = std::atoi(counts.substr(plus + 1).c_str()); // npos + 1 is 0
    const auto scratch = ScratchFolder::make();
    if (count < 1 || !scratch) {
        std::cerr << "usage: DecodingFlips [AFTER+]COUNT [CLIP...]\n";
        return 2;
    }
    std::vector<Flips> clips;
    for (const auto& clip : DamagedClips::clips())
        if (words.size() == 1
            || std::find(words.begin() + 1, words.end(), clip.file) != words.end())
            clips.emplace_back(clip, scratch->path());
    for (int i = 0; i < after; ++i)
        for (Flips& each : clips)
            each.skip();
    constexpr int untilTable = 50;
    for (int round = 1; round <= count; ++round) {
        for (Flips& each : clips)
            each.flip();
        if (round % untilTable != 0 && round != count)
            continue;
        std::cout << "| Clip | Flips | Told | Refused | Unchanged | Missed |\n"
                     "| --- | --- | --- | --- | --- | --- |\n";
        for (const Flips& each : clips)
            each.print(round);
    }
}
