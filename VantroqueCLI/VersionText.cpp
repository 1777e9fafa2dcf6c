#include "VantroqueCLI/VersionText.h"

#include "Cage/Cage.h"
#include "Tools/FFTool.h"

namespace vantroque {

namespace {

/// Where a tool is, the first line of what it says of itself, and what holds around it.
QByteArray toolLines(const std::string& name)
{
    const auto path = FFTool::find(name);
    if (!path)
        return path.error().description().toUtf8() + '\n';
    const auto ran = FFTool::run(*path, {"-version"});
    if (!ran)
        return ran.error().description().toUtf8() + '\n';
    const QByteArray words = ran->output.left(ran->output.indexOf('\n'));
    return QByteArray::fromStdString(name + ": " + path->native()) + '\n' + "  " + words + '\n'
           + "  caged: " + QByteArray::fromStdString(Cage::words(ran->cage))
           + (FFTool::isSnap(*path) ? ", since a snap cannot start in the cage\n" : "\n");
}

} // namespace

QByteArray versionText(bool isVerbose)
{
    QByteArray text = "vantroque-cli " VANTROQUE_VERSION "\n";
    if (isVerbose)
        for (const char* tool : {"ffprobe", "ffmpeg"})
            text += toolLines(tool);
    return text;
}

} // namespace vantroque
