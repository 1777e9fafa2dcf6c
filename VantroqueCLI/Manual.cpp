#include "VantroqueCLI/Manual.h"

#include "VantroqueCLI/Commands.h"

#include <QByteArrayList>

namespace vantroque::Manual {

namespace {

constexpr const char* endings =
    "-o never replaces a file that is read, and one that is called like media only with\n"
    "--overwrite.\n\n"
    "Exit status: 0 every file was analysed and none fails a platform, 1 some file fails\n"
    "one, 2 some file could not be analysed or the call was wrong. Put \"--\" before file\n"
    "names that begin with a hyphen.\n\n"
    "--version tells the version; with --verbose also the tools and what is kept from them.\n";

/// As the macros of a manual page take a text: a hyphen is a minus there only when it is escaped,
/// and a point or an apostrophe that begins a line would be a macro.
QByteArray escaped(QByteArray text)
{
    text = text.simplified();
    text.replace('\\', "\\e").replace('-', "\\-");
    if (text.startsWith('.') || text.startsWith('\''))
        text.prepend("\\&");
    return text;
}

} // namespace

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
    return text + endings;
}

QByteArray page()
{
    QByteArray text =
        ".TH VANTROQUE\\-CLI 1 \"\" \"Vantroque " VANTROQUE_VERSION "\"\n"
        ".SH NAME\n"
        "vantroque\\-cli \\- quality control for finished video deliverables\n"
        ".SH SYNOPSIS\n"
        ".B vantroque\\-cli\n"
        ".I COMMAND\n"
        "\\&...\n"
        ".SH DESCRIPTION\n"
        "Tells whether finished videos meet the delivery specifications of the\n"
        "platforms they are meant for: what was measured, what was expected and how to\n"
        "fix it.\n"
        ".SH COMMANDS\n";
    for (const Command& command : commands())
        text.append(".TP\n.BI ")
            .append(command.name)
            .append(" \" ")
            .append(escaped(command.usage))
            .append("\"\n")
            .append(escaped(command.summary))
            .append('\n');
    text += ".SH NOTES\n";
    for (const QByteArray& paragraph : QByteArray(endings).replace("\n\n", "\f").split('\f'))
        text.append(".PP\n").append(escaped(paragraph)).append('\n');
    return text
           + ".SH FILES\n"
             ".TP\n.I ~/.local/share/Vantroque/Profiles\n"
             "Profiles of your own, which are read beside the installed ones.\n"
             ".SH ENVIRONMENT\n"
             ".TP\n.B XDG_DATA_HOME\n"
             "The folder in place of ~/.local/share.\n"
             ".TP\n.B VANTROQUE_FFMPEG_DIR\n"
             "Where ffmpeg and ffprobe are looked for first.\n"
             ".TP\n.B VANTROQUE_CAGE\n"
             "\"off\" does not close the tools in, to look for the cause of a refusal.\n"
             ".SH SEE ALSO\n.BR vantroque (1),\n.BR ffprobe (1)\n";
}

} // namespace vantroque::Manual
