// FilesBenchmark FOLDER CLI [EARLIER_CLI]: how long a check of a hundred files of one second takes,
// as text and against the digital platforms. With an earlier build of the program both take turns,
// so that a busy machine is as hard on one as on the other.

#include "Base/Files.h"
#include "Base/Numbers.h"
#include "Tools/FFTool.h"

#include <algorithm>
#include <chrono>
#include <iostream>

using namespace vantroque;
namespace fs = std::filesystem;

namespace {

constexpr int fileCount = 100;
constexpr int rounds = 5;

std::string text(double value)
{
    return Numbers::fixed(value, 2).toStdString();
}

/// Clips of which no two are the same, made where they are not yet there.
std::vector<std::string> clips(const fs::path& folder)
{
    std::vector<std::string> names;
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!ffmpeg || !Files::makeFolder(folder))
        throw std::runtime_error("cannot make clips");
    for (int i = 0; i < fileCount; ++i) {
        const std::string number = Numbers::wholeText(i);
        names.push_back(folder / (number + ".mp4"));
        if (fs::exists(names.back()))
            continue;
        const auto made = FFTool::run(
            *ffmpeg, {"-loglevel",
                      "error",
                      "-nostdin",
                      "-y",
                      "-f",
                      "lavfi",
                      "-i",
                      "testsrc2=size=320x180:rate=25:duration=1,noise=alls=6:all_seed=" + number,
                      "-f",
                      "lavfi",
                      "-i",
                      "sine=frequency=" + Numbers::wholeText(200 + 10 * i) + ":duration=1",
                      "-c:v",
                      "libx264",
                      "-preset",
                      "ultrafast",
                      "-pix_fmt",
                      "yuv420p",
                      "-c:a",
                      "aac",
                      "-ac",
                      "2",
                      names.back()});
        if (!made)
            throw std::runtime_error(made.error().description().toStdString());
    }
    return names;
}

double seconds(const std::string& program, const std::vector<std::string>& files)
{
    std::vector<std::string> words{"check"};
    words.insert(words.end(), files.begin(), files.end());
    const auto start = std::chrono::steady_clock::now();
    const auto ran = FFTool::run(program, words, {.allowFailure = true});
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!ran || ran->status > 1) // 1: the clips fail a platform
        throw std::runtime_error(program + " failed");
    return taken.count();
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
try {
    if (argc < 3 || argc > 4)
        return 2;
    const auto files = clips(argv[1]);
    std::vector<double> taken, earlier;
    for (int i = 0; i < rounds; ++i) {
        taken.push_back(seconds(argv[2], files));
        if (argc == 4)
            earlier.push_back(seconds(argv[3], files));
    }
    std::cout << fileCount << " files of 1 s: " << text(median(taken)) << " s\n";
    if (argc == 4)
        std::cout << "the earlier build:  " << text(median(earlier)) << " s, ratio "
                  << text(median(taken) / median(earlier)) << '\n';
    return 0;
} catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
}
