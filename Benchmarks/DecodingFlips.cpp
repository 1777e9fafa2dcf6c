// DecodingFlips COUNT [CLIP...]: flips so many random bytes, one at a time, in each of the small
// clips of the damage tests, and tells how many of them are found. What is silent is decoded once
// more: a flip that changes nothing of what is shown or heard has nothing to be found.

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
    return run ? run->stdout : QByteArray();
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

Tally flips(const DamagedClips::Clip& clip, int count, const fs::path& folder)
{
    const fs::path intact = DamagedClips::intact(clip);
    const QByteArray whole = Files::read(intact, 100'000'000).value();
    const QByteArray shownIntact = shown(intact);
    const fs::path file = folder / clip.file;
    std::mt19937 chance(7); // NOLINT: the same flips each time
    std::uniform_int_distribution<qsizetype> position(0, whole.size() - 1);
    std::uniform_int_distribution<int> change(1, 255);
    Tally tally;
    for (int i = 0; i < count; ++i) {
        QByteArray bytes = whole;
        const qsizetype at = position(chance);
        bytes[at] = static_cast<char>(bytes[at] ^ change(chance));
        if (!Files::writeAtomically(file, bytes))
            throw std::runtime_error("cannot write " + file.native());
        tally.add(outcome(file, shownIntact));
    }
    return tally;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const int count = words.empty() ? 0 : std::atoi(words.front().c_str());
    const auto scratch = ScratchFolder::make();
    if (count < 1 || !scratch) {
        std::cerr << "usage: DecodingFlips COUNT [CLIP...]\n";
        return 2;
    }
    std::cout << "| Clip | Flips | Told | Refused | Unchanged | Missed |\n"
                 "| --- | --- | --- | --- | --- | --- |\n";
    for (const auto& clip : DamagedClips::clips()) {
        if (words.size() > 1 && std::find(words.begin() + 1, words.end(), clip.file) == words.end())
            continue;
        const Tally tally = flips(clip, count, scratch->path());
        std::cout << "| " << clip.name << " | " << count << " | " << tally.told << " | "
                  << tally.refused << " | " << tally.unchanged << " | " << tally.missed << " |"
                  << std::endl;
    }
}
