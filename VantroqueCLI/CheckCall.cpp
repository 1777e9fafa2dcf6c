#include "VantroqueCLI/CheckCall.h"

#include "Base/Numbers.h"
#include "VantroqueCLI/CaptionSource.h"
#include "VantroqueCLI/NameList.h"

namespace vantroque::CheckCall {

using namespace Qt::StringLiterals;

Result<std::vector<std::string>> listed(const Arguments& arguments)
{
    std::vector<std::string> names;
    for (const std::string& list : arguments.values("files-from")) {
        const auto more = TRY(NameList::read(list));
        names.insert(names.end(), more.begin(), more.end());
    }
    return names;
}

Result<std::vector<std::string>> files(const Arguments& arguments)
{
    std::vector<std::string> names = arguments.files();
    const auto more = TRY(listed(arguments));
    names.insert(names.end(), more.begin(), more.end());
    if (names.empty())
        return failure(u"no file given"_s);
    return names;
}

std::vector<std::string> inputs(const Arguments& arguments, std::vector<std::string> files)
{
    for (const std::string& captions : arguments.values("captions"))
        files.push_back(captions);
    for (const std::string& list : arguments.values("files-from"))
        files.push_back(list == "-" ? "/dev/stdin" : list);
    return files;
}

Result<std::size_t> jobCount(const Arguments& arguments)
{
    constexpr std::int64_t most = 64; // more at once would only take turns
    const auto jobs = Numbers::toInt(QString::fromStdString(arguments.value("jobs", "1")));
    if (!jobs || *jobs < 1 || *jobs > most)
        return failure(u"--jobs takes a number from 1 to %1"_s.arg(most));
    return static_cast<std::size_t>(*jobs);
}

Result<std::optional<LoadedCaptions>> givenCaptions(const Arguments& arguments)
{
    if (!arguments.has("captions"))
        return std::nullopt;
    return TRY(loadCaptions(FileUrl::fromPath(arguments.value("captions", {}))));
}

} // namespace vantroque::CheckCall
