#include "Tools/Trouble.h"

#include "Tools/FFTool.h"
#include "Tools/ToolWords.h"

#include <QRegularExpression>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// What to do about sentences that hold these words.
struct Advice {
    QString words;
    std::vector<Trouble::Step> steps;
    bool mayPass = false; ///< Without anything being done to the file.
};

Trouble::Step copyAgain()
{
    return {u"Copy or download the file again."_s,
            u"A copy that broke off or an export that crashed leaves a file like this one."_s};
}

Trouble::Step exportAgain(const QString& last)
{
    return {u"If the copy is complete, export it again from the edit."_s,
            u"Wait until the export says that it is done: the %1 is written last."_s.arg(last)};
}

Trouble::Step makeRoom()
{
    return {u"Close other programs, then try again."_s, {}};
}

/// Of what is wrong with the file.
std::vector<Advice> onFiles()
{
    return {
        {u"The index is missing"_s, {copyAgain(), exportAgain(u"index"_s)}},
        {u"Its header or footer cannot be read"_s, {copyAgain(), exportAgain(u"footer"_s)}},
        {u"Nothing in it can be decoded"_s,
         {{u"See whether it plays elsewhere and is the file that you mean."_s,
           u"A document or an archive under a video's name looks like this."_s},
          {u"Copy or download it again, or export it again from the edit."_s,
           u"So does a film that is damaged from its first bytes on."_s}}},
        {u"The file is empty"_s,
         {{u"Wait until it is written, then try again."_s,
           u"A copy or an export that has only begun is empty."_s},
          {u"Copy or download the file again."_s,
           u"A disk that was full leaves an empty file as well."_s}}},
        {u"There is no picture and no sound in it"_s,
         {{u"Add the film itself."_s,
           u"This file holds captions, data or a cover, and nothing to measure."_s}}},
        {u"The file was changed "_s,
         {{u"Wait until it is written, then analyze it again."_s,
           u"A copy or an export that still goes on changes the file."_s}}},
        {u"This is a playlist"_s,
         {{u"Open it in a text editor and add the files that it names."_s,
           u"What is delivered is one media file. A list of others cannot be measured."_s}}},
        {u"It is not there"_s,
         {{u"Add the file again from where it lies now."_s,
           u"It was moved, renamed or deleted after it was added."_s},
          {u"If it lies on a network share, see whether the share is connected."_s, {}}}},
    };
}

/// Of what this machine lacks.
std::vector<Advice> onMachine()
{
    return {
        {u"cannot be read from its disk"_s,
         {{u"See whether the disk or the network share is still connected."_s, {}},
          {u"Copy the file to a disk of this machine and add the copy."_s,
           u"When the copy breaks off too, the disk or the share is at fault."_s}}},
        {ToolWords::notEnoughMemory(), {makeRoom()}},
        {u"Too many files are open"_s, {makeRoom()}, true},
        {u"The disk is full"_s,
         {{u"Free some room on the disk of the temporary folder, then try again."_s,
           u"Pictures of the film lie there while it is measured."_s}},
         true},
        {u"A file would grow larger"_s,
         {{u"Ask who looks after this machine for a higher limit on the size of files."_s,
           u"Pictures of the film are written while it is measured."_s}},
         true},
        {u"There is no permission"_s,
         {{u"Get the permission to read the file, then try again."_s,
           u"Its owner can give it, in the file manager under the file's properties."_s}}},
        {u" did not finish within "_s,
         {{u"Copy the file to a disk of this machine and add the copy."_s,
           u"A slow disk or network share can be the cause."_s}}},
        {u" crashed on this file"_s,
         {{u"Try again once."_s, u"A machine that is short of memory ends programs like this."_s},
          {u"Export the film again from the edit."_s,
           u"What makes a decoder crash is damaged, or was made to do harm."_s}}},
        {u" not found. Install ffmpeg"_s,
         {{u"Install ffmpeg, then try again."_s,
           u"On Debian and Ubuntu: sudo apt install ffmpeg"_s}},
         true},
    };
}

std::vector<Trouble::Step> stepsFor(const QString& sentence)
{
    for (const auto& advices : {onFiles(), onMachine()})
        for (const Advice& advice : advices)
            if (sentence.contains(advice.words))
                return advice.steps;
    return {};
}

/// "ffprobe exited with status 1: words", as a failed tool is told of.
const QRegularExpression& ended()
{
    static const QRegularExpression pattern(uR"(^(\S+) exited with status ([0-9]+): (.*)$)"_s,
                                            QRegularExpression::DotMatchesEverythingOption
                                                | QRegularExpression::MultilineOption);
    return pattern;
}

QString sentenceOn(const QString& tool, int status, const QString& words)
{
    constexpr int afterSignals = 128; // A status above tells of a signal that ended it.
    if (status > afterSignals)
        return u"%1 crashed on this file."_s.arg(tool);
    const QString line = ToolWords::lineThatMatters(words);
    if (line.endsWith("No such file or directory"_L1))
        return u"It is not there."_s;
    return line.isEmpty() ? u"%1 failed and did not say why."_s.arg(tool) : line;
}

} // namespace

Trouble Trouble::of(const QString& reason)
{
    const auto match = ended().match(reason);
    const bool isTool = match.hasMatch();
    const QString ours = (isTool ? reason.left(match.capturedStart()) : reason).trimmed();
    Trouble trouble;
    trouble.sentence = ours.section(u'\n', 0, 0);
    trouble.words = ours.section(u'\n', 1);
    if (isTool) {
        const int status = match.captured(2).toInt();
        trouble.tool = u"%1, status %2"_s.arg(match.captured(1), match.captured(2));
        trouble.words = match.captured(3).trimmed();
        if (trouble.sentence.isEmpty())
            trouble.sentence = sentenceOn(match.captured(1), status, trouble.words);
    }
    if (trouble.sentence.isEmpty())
        trouble.sentence = u"It failed and nothing said why."_s;
    trouble.steps = stepsFor(trouble.sentence);
    return trouble;
}

bool Trouble::isOfOthers(const QString& reason)
{
    const auto match = ended().match(reason);
    return match.hasMatch()
           && FFTool::wasEndedByOthers(match.captured(2).toInt(), match.captured(3).toUtf8());
}

bool Trouble::mayPass(const QString& reason)
{
    const QString sentence = of(reason).sentence;
    return isOfOthers(reason) || std::ranges::any_of(onMachine(), [&](const Advice& advice) {
               return advice.mayPass && sentence.contains(advice.words);
           });
}

} // namespace vantroque
