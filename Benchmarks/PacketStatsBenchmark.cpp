// PacketStatsBenchmark FILE: what reading the packet list of a long file costs this process, beside
// what ffprobe needs to print it, in one run.

#include "Base/Numbers.h"
#include "Probe/Prober.h"
#include "Tools/FFTool.h"

#include <iostream>
#include <sys/resource.h>

using namespace vantroque;

namespace {

double cpuSeconds(int who)
{
    rusage usage{};
    ::getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double peakMegabytes()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

std::string text(double value, int decimals)
{
    return Numbers::fixed(value, decimals).toStdString();
}

} // namespace

int main(int argc, char** argv)
{
    const auto ffprobe = FFTool::find("ffprobe");
    if (argc != 2 || !ffprobe)
        return 2;
    const auto stats = Prober::packetStats(*ffprobe, FileUrl::fromPath(argv[1]), 1000);
    if (!stats) {
        std::cerr << stats.error().description.toStdString() << '\n';
        return 1;
    }
    const double own = cpuSeconds(RUSAGE_SELF);
    const double tool = cpuSeconds(RUSAGE_CHILDREN);
    std::cout << "packets            " << stats->packetCount << '\n'
              << "own cpu            " << text(own, 2) << " s\n"
              << "ffprobe cpu        " << text(tool, 2) << " s\n"
              << "own / ffprobe      " << text(own / tool, 3) << " (at most 0.25)\n"
              << "peak memory        " << text(peakMegabytes(), 0) << " MB (under 200)\n";
    return 0;
}
