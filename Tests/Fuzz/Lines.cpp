// What checks wrote line by line, and lists of names, which collect and check take from anywhere.

#include "Fuzz/Target.h"
#include "VantroqueCLI/NameList.h"
#include "VantroqueCLI/Parts.h"

using namespace vantroque;

namespace {

/// Written as a line of its own, a result is the same.
Result<void> holdAsLine(const WrittenResult& result)
{
    const QByteArray line = ResultLine::of(result.object, result.version);
    Fuzz::hold(line.endsWith('\n') && line.count('\n') == 1, "a line has one end");
    Fuzz::hold(ResultLine::isTorn(line.first(line.size() / 2)), "half a line is known as torn");
    const auto again = ResultLine::read(line);
    Fuzz::hold(again.has_value(), "what was written can be read");
    Fuzz::hold(again->file.name == result.file.name && again->version == result.version
                   && again->object == result.object,
               "what was read is the same");
    return {};
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Fuzz::FileInMemory file(Fuzz::bytesOf(data, size));
    Fuzz::hold(Parts::read(file.path(), holdAsLine).has_value(), "a part is read to its end");
    if (const auto names = NameList::read(file.path()))
        for (const std::string& name : *names)
            Fuzz::hold(!name.empty(), "a name is not empty");
    return 0;
}
