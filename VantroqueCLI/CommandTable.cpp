#include "VantroqueCLI/Commands.h"

namespace vantroque {

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{
        {"check",
         "[--profile ID]... [--group GROUP]... [--all]\n"
         "        [--format text|json|jsonl|junit] [--resume OUT] [--summary] [--media]\n"
         "        [--detail] [--skip-signal] [--captions FILE] [--text-language CODE]...\n"
         "        [--jobs N] [--verbose] [--profiles-dir DIR] [--files-from LIST]...\n"
         "        [-o FILE] [--overwrite] [FILE]...",
         "Scores files against the delivery specifications of platforms; the digital ones\n"
         "      unless profiles or groups (digital, broadcast, recommendation) are named.\n"
         "      LIST is a file with names, or - for standard input: one a line or, when there is\n"
         "      a NUL in it, one before each NUL. jsonl: one file a line, as soon as it is done;\n"
         "      --resume goes on with the OUT of a call that was ended, and appends what is not\n"
         "      there yet.",
         {{"profile", true},
          {"group", true},
          {"all", false},
          {"format", true},
          {"summary", false},
          {"media", false},
          {"detail", false},
          {"skip-signal", false},
          {"captions", true},
          {"text-language", true},
          {"verbose", false},
          {"jobs", true},
          {"profiles-dir", true},
          {"files-from", true},
          {"resume", true},
          {"output", true},
          {"overwrite", false}},
         check},
        {"watch",
         "--done DIR --failed DIR [--settle SECONDS] [--once] [--profile ID]...\n"
         "        [--group GROUP]... [--all] [--format text|json|junit]\n"
         "        [--text-language CODE]... [--profiles-dir DIR] DIR",
         "Checks the films that arrive in a folder, each when it has stood still for so long (10\n"
         "      seconds) and nobody writes it, puts the report beside it and moves both: to "
         "--done\n"
         "      when no platform fails it, otherwise to --failed. --once does what is there and\n"
         "      ends. After a kill it goes on where it was.",
         {{"done", true},
          {"failed", true},
          {"settle", true},
          {"once", false},
          {"profile", true},
          {"group", true},
          {"all", false},
          {"format", true},
          {"text-language", true},
          {"profiles-dir", true}},
         watch},
        {"collect",
         "[--files-from LIST]... [--format text|json|junit|table] [-o FILE] [--overwrite]\n"
         "        OUT...",
         "Joins what checks have written with --format jsonl or json, and says what LIST has and\n"
         "      they have not. A folder stands for the files in it that end in .jsonl. text sums\n"
         "      up; table: one line a file, for spreadsheets.",
         {{"files-from", true}, {"format", true}, {"output", true}, {"overwrite", false}},
         collect},
        {"probe",
         "FILE...",
         "Prints what is known of each file without decoding it, as JSON.",
         {},
         probe},
        {"measure",
         "[--profiles-dir DIR] [-o FILE] [--overwrite] FILE...",
         "Measures files and prints a table, one line a file and one column a measurement.",
         {{"profiles-dir", true}, {"output", true}, {"overwrite", false}},
         measure},
        {"markers",
         "--format avid|premiere|resolve|csv [--profile ID]... [--group GROUP]... [--all]\n"
         "        [--skip-signal] [--text-language CODE]... [--profiles-dir DIR]\n"
         "        [-o FILE] [--overwrite] FILE",
         "Writes findings, and the notes of the file's review, as markers for an editing system\n"
         "      or as a table.",
         {{"format", true},
          {"profile", true},
          {"group", true},
          {"all", false},
          {"skip-signal", false},
          {"text-language", true},
          {"profiles-dir", true},
          {"output", true},
          {"overwrite", false}},
         markers},
        {"pdf",
         "[--profile ID]... [--group GROUP]... [--all] [--skip-signal] [--captions FILE]\n"
         "        [--reviewer NAME] [--text-language CODE]... [--jobs N] [--verbose]\n"
         "        [--profiles-dir DIR] -o FILE [--overwrite] FILE...",
         "Writes the reports of files and the notes of their reviews for people without the\n"
         "      program, as PDF.",
         {{"profile", true},
          {"group", true},
          {"all", false},
          {"skip-signal", false},
          {"captions", true},
          {"reviewer", true},
          {"text-language", true},
          {"verbose", false},
          {"jobs", true},
          {"profiles-dir", true},
          {"output", true},
          {"overwrite", false}},
         pdf},
        {"captions",
         "[--media FILE] [--format text|json] FILE",
         "Checks a caption file, or the captions inside a media file, for spelling and timing.",
         {{"media", true}, {"format", true}},
         captions},
        {"still",
         "--at TIME [--guides LIST] [--captions FILE] [--clean] [-o FILE] [--overwrite] FILE",
         "Writes one frame as a picture, by default beside the file, with the drawings of the\n"
         "      file's review at it. LIST: safe, thirds, picture, feed, tiktok,\n"
         "      meta-reels-stories or all, with commas between. --clean leaves out all drawing.",
         {{"at", true},
          {"guides", true},
          {"captions", true},
          {"clean", false},
          {"output", true},
          {"overwrite", false}},
         still},
        {"scopes",
         "--at TIME -o DIR FILE",
         "Writes waveform.png, parade.png, vectorscope.png and, over the frame,\n"
         "      out-of-range.png into a folder.",
         {{"at", true}, {"output", true}},
         scopes},
        {"profiles",
         "[--freshness] [--format text|json] [--profiles-dir DIR]\n"
         "        --check FILE...",
         "Lists the profiles, or how long ago each was compared with its source. Those of your\n"
         "      own lie in ~/.local/share/Vantroque/Profiles, beside the installed ones; one with\n"
         "      the id of an installed one stands in for it. --profiles-dir replaces them all.\n"
         "      --check tells what is wrong with profiles of your own, and on which line.",
         {{"freshness", false}, {"format", true}, {"profiles-dir", true}, {"check", false}},
         profiles},
    };
    return all;
}

} // namespace vantroque
