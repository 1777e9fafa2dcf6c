#include "Base/ScratchFolder.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Completion.h"
#include "VantroqueCLI/Interruption.h"
#include "VantroqueCLI/Manual.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/VersionText.h"

#include <QStringList>

#include <algorithm>
#include <csignal>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

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
        return printed(Manual::usage());
    if (words[0] == "--version")
        return printed(versionText(words.size() == 2 && words[1] == "--verbose"));
    if (words[0] == "--manual")
        return printed(Manual::page());
    if (words[0] == "--completion" && words.size() == 2)
        if (const auto script = Completion::script(words[1]))
            return printed(*script);
    const auto command = std::ranges::find(commands(), words[0], &Command::name);
    if (command == commands().end())
        return wrongCall(u"unknown command \"%1\""_s.arg(QString::fromStdString(words[0])));
    if (words.size() == 2 && words[1] == "--help")
        return printed(Manual::usage());
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
