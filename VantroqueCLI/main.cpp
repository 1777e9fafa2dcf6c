#include "Base/ScratchFolder.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Interruption.h"
#include "VantroqueCLI/Output.h"

#include <QStringList>

#include <algorithm>
#include <csignal>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

const std::vector<Command>& commands()
{
    static const std::vector<Command> all{
        {"check",
         "[--profile ID]... [--group GROUP]... [--all] [--format text|json|junit]\n"
         "        [--summary] [--media] [--detail] [--skip-signal] [--captions FILE]\n"
         "        [--text-language CODE]... [--jobs N] [--verbose] [--profiles-dir DIR]\n"
         "        [-o FILE] [--overwrite] FILE...",
         "Scores files against the delivery specifications of platforms; the digital ones\n"
         "      unless profiles or groups (digital, broadcast, recommendation) are named.",
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
          {"output", true},
          {"overwrite", false}},
         check},
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
         "[--freshness] [--format text|json] [--profiles-dir DIR]",
         "Lists the installed profiles, or how long ago each was compared with its source.",
         {{"freshness", false}, {"format", true}, {"profiles-dir", true}},
         profiles},
    };
    return all;
}

QByteArray usage()
{
    QByteArray text = "Usage: vantroque-cli COMMAND ...\n\n";
    for (const Command& command : commands())
        text.append("  ")
            .append(command.name)
            .append(' ')
            .append(command.usage)
            .append("\n      ")
            .append(command.summary)
            .append("\n\n");
    return text
           + "-o never replaces a file that is read, and one that is called like media only with\n"
             "--overwrite.\n\n"
             "Exit status: 0 every file was analysed and none fails a platform, 1 some file fails\n"
             "one, 2 some file could not be analysed or the call was wrong. Put \"--\" before "
             "file\n"
             "names that begin with a hyphen.\n";
}

ExitStatus printed(const QByteArray& text)
{
    const auto written = Output::print(text);
    if (written)
        return ExitStatus::passed;
    Output::complain(written.error().description);
    return ExitStatus::trouble;
}

ExitStatus wrongCall(const QString& problem)
{
    Output::complain(problem + u" (vantroque-cli --help tells the usage)"_s);
    return ExitStatus::trouble;
}

ExitStatus run(const std::vector<std::string>& words)
{
    if (words.empty())
        return wrongCall(u"no command given"_s);
    if (words[0] == "--help" || words[0] == "-h" || words[0] == "help")
        return printed(usage());
    if (words[0] == "--version")
        return printed("vantroque-cli " VANTROQUE_VERSION "\n");
    const auto command = std::ranges::find(commands(), words[0], &Command::name);
    if (command == commands().end())
        return wrongCall(u"unknown command \"%1\""_s.arg(QString::fromStdString(words[0])));
    if (words.size() == 2 && words[1] == "--help")
        return printed(usage());
    const auto arguments = Arguments::parse({words.begin() + 1, words.end()}, command->options);
    return arguments ? command->run(*arguments) : wrongCall(arguments.error().description);
}

} // namespace

int main(int argc, char** argv)
{
    Interruption::watch();
    std::signal(SIGXFSZ, SIG_IGN); // Too large a file is an error like any other.
    ScratchFolder::sweep();
    return static_cast<int>(run({argv + 1, argv + argc}));
}
