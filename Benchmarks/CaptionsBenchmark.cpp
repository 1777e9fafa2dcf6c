// CaptionsBenchmark: how long 50 MB of hostile bytes hold the caption parser up, as the text of one
// cue and, where that is another road, as a whole file.

#include "Base/Numbers.h"
#include "Captions/CaptionParser.h"

#include <chrono>
#include <iostream>
#include <sys/resource.h>
#include <vector>

using namespace vantroque;

namespace {

constexpr qsizetype size = 50'000'000;

struct Kind {
    const char* name;
    QByteArray head;
    QByteArray piece; ///< Again and again.
};

const std::vector<Kind> kinds{
    {"plain text", "0:0 --> 0:1\n", "All the news that is fit to air\n"},
    {"short cues", "", "0:0-->0:1\na\n\n"},
    {"<", "0:0 --> 0:1\n", "<"},
    {"{", "0:0 --> 0:1\n", "{"},
    {"<i>", "0:0 --> 0:1\n", "<i>"},
    {"<i>a", "0:0 --> 0:1\n", "<i>a"},
    {"&lt;", "0:0 --> 0:1\n", "&lt;"},
    {"< with a mark", "0:0 --> 0:1\n", "<\xCC\xB8"},
    {"combining marks", "0:0 --> 0:1\n", "\xCC\x81"},
    {"-->", "", "-->"},
    {"colons", "0:0 --> ", ":"},
    {"digits", "0:0 --> 0:", "1"},
    {"empty blocks", "", "\n\n"},
    {"empty lines", "0:0 --> 0:1\n", "\n \n"},
    {"carriage returns", "", "\r\n"},
    {"no UTF-8", "0:0 --> 0:1\n", "\xFF"},
};

double secondsFor(const Kind& kind)
{
    const QByteArray bytes = kind.head + kind.piece.repeated(size / kind.piece.size());
    const auto start = std::chrono::steady_clock::now();
    static_cast<void>(CaptionParser::parse(CaptionParser::decode(bytes), CaptionTrack::Format::srt,
                                           CaptionParser::PlacementTags::honoured));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main()
{
    for (const Kind& kind : kinds)
        std::cout << QByteArray(kind.name).leftJustified(18).constData() << ' '
                  << Numbers::fixed(secondsFor(kind), 2).toStdString() << " s" << std::endl;
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    std::cout << "most memory        " << usage.ru_maxrss / 1000 << " MB" << std::endl;
    return 0;
}
