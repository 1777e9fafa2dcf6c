// CheckBenchmark CLIP CLI [PROFILE]: what a whole check costs beside the bare decode of the clip
// and beside its filter graph run by ffmpeg alone, in turns in one run. With a profile that limits
// where text may stand the graph writes the frames for the text as well, and the check reads them.

#include "Base/Numbers.h"
#include "Base/ScratchFolder.h"
#include "Probe/Prober.h"
#include "Signal/SignalPlan.h"
#include "Text/TextPlacementReader.h"
#include "Tools/FFTool.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <iterator>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

using namespace vantroque;

namespace {

constexpr int rounds = 5;

struct Cost {
    double wall = 0;      ///< Seconds, as all but the last.
    double cpu = 0;       ///< With all children.
    double own = 0;       ///< Without them.
    double megabytes = 0; ///< Peak of the process alone.
};

/// The largest memory so far of a process, in megabytes; 0 when it has ended.
double peakMegabytes(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) {
            double kilobytes = 0;
            std::istringstream(line.substr(6)) >> kilobytes;
            return kilobytes / 1024;
        }
    return 0;
}

/// User, system, children's user and children's system seconds of a process, also one that has
/// ended and was not waited for.
std::vector<double> processorTimes(pid_t process)
{
    std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
    std::string text{std::istreambuf_iterator<char>(stat), {}};
    std::istringstream fields(text.substr(text.rfind(')') + 2));
    constexpr int fieldsAhead = 11; // from the state to the count of page faults
    std::string skipped;
    for (int i = 0; i < fieldsAhead; ++i)
        fields >> skipped;
    std::vector<double> times(4);
    const auto ticks = static_cast<double>(::sysconf(_SC_CLK_TCK));
    for (double& time : times) {
        fields >> time;
        time /= ticks;
    }
    return times;
}

Cost run(const std::vector<std::string>& command)
{
    std::vector<char*> words;
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    posix_spawn_file_actions_t quiet;
    ::posix_spawn_file_actions_init(&quiet);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&quiet, descriptor, "/dev/null", O_RDWR, 0);
    pid_t process = -1;
    const auto start = std::chrono::steady_clock::now();
    if (::posix_spawnp(&process, words[0], &quiet, nullptr, words.data(), environ) != 0)
        throw std::runtime_error("cannot start " + command[0]);
    ::posix_spawn_file_actions_destroy(&quiet);

    Cost cost;
    siginfo_t ended{};
    constexpr useconds_t poll = 5'000;
    while (::waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOHANG | WNOWAIT) == 0
           && ended.si_pid == 0) {
        cost.megabytes = std::max(cost.megabytes, peakMegabytes(process));
        ::usleep(poll);
    }
    cost.wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const auto times = processorTimes(process);
    cost.own = times[0] + times[1];
    cost.cpu = cost.own + times[2] + times[3];
    int status = 0;
    ::waitpid(process, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) // 1: the clip fails a platform
        throw std::runtime_error(command[0] + " failed");
    return cost;
}

/// Of each figure the median.
Cost median(std::vector<Cost> costs)
{
    Cost middle;
    for (double Cost::*figure : {&Cost::wall, &Cost::cpu, &Cost::own, &Cost::megabytes}) {
        std::ranges::sort(costs, {}, figure);
        middle.*figure = costs[costs.size() / 2].*figure;
    }
    return middle;
}

std::string text(double value, int decimals)
{
    return Numbers::fixed(value, decimals).toStdString();
}

void print(const std::string& name, const Cost& cost)
{
    std::cout << name << text(cost.wall, 2) << "   " << text(cost.cpu, 2) << "   "
              << text(cost.own, 2) << "   " << text(cost.megabytes, 0) << '\n';
}

} // namespace

int main(int argc, char** argv)
try {
    const auto ffmpeg = FFTool::find("ffmpeg");
    const auto scratch = ScratchFolder::make();
    if (argc < 3 || argc > 4 || !ffmpeg || !scratch)
        return 2;
    const std::string clip = argv[1];
    const bool readsText = argc == 4;
    const auto media = Prober::probe(FileUrl::fromPath(clip));
    if (!media)
        return 2;
    SignalAnalyzer::Options options;
    if (readsText)
        options.textFrames = TextPlacementReader::request(*media, scratch->path());
    const SignalAnalyzer::SignalPlan plan(*media, options, scratch->path(), std::nullopt);
    std::vector<std::string> graph = plan.arguments();
    graph.insert(graph.begin(), ffmpeg->native());

    std::vector<std::string> checking{argv[2], "check"};
    // The other one measures the whole signal and does not ask for text.
    checking.insert(checking.end(), {"--profile", readsText ? argv[3] : "google-dv360"});
    std::vector<std::string> probing = checking;
    probing.insert(probing.end(), {"--skip-signal", clip});
    checking.push_back(clip);

    std::vector<Cost> decodes, graphs, probes, checks;
    for (int i = 0; i < rounds; ++i) {
        decodes.push_back(run({ffmpeg->native(), "-i", clip, "-map", "0", "-f", "null", "-"}));
        graphs.push_back(run(graph));
        probes.push_back(run(probing));
        checks.push_back(run(checking));
    }
    const Cost decode = median(decodes), graphAlone = median(graphs), probe = median(probes),
               check = median(checks);
    std::cout << "                wall   cpu     own     peak MB\n";
    print("bare decode     ", decode);
    print("graph alone     ", graphAlone);
    print("probes alone    ", probe);
    print("whole check     ", check);
    if (readsText) {
        std::cout << "wall / wall of the graph        " << text(check.wall / graphAlone.wall, 3)
                  << " (at most 1.25)\n";
        return 0;
    }
    std::cout << "own cpu / cpu of the graph      " << text(check.own / graphAlone.cpu, 4)
              << " (at most 0.05)\n"
              << "wall / wall of graph and probes "
              << text(check.wall / (graphAlone.wall + probe.wall), 3) << " (at most 1.1)\n"
              << "peak memory                     " << text(check.megabytes, 0)
              << " MB (under 250)\n";
    return 0;
} catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
}
