#include "Cage/Cage.h"

#include "Cage/CallFilter.h"
#include "Cage/Landlock.h"

#include <array>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <sys/prctl.h>
#include <utility>

namespace vantroque::Cage {

namespace {

std::string_view setting()
{
    const char* set = std::getenv("VANTROQUE_CAGE");
    return set != nullptr ? set : "";
}

int mostAbi()
{
    int version = newestAbi;
    const std::string_view text = setting();
    std::from_chars(text.data(), text.data() + text.size(), version);
    return version;
}

} // namespace

std::uint32_t close(const Rights& rights)
{
    if (setting() == "off" || ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return 0;
    const std::uint32_t held = Landlock::confine(rights, mostAbi());
    return held | (CallFilter::install() ? calls : 0U);
}

std::string words(std::uint32_t held)
{
    static constexpr std::array<std::pair<Held, std::string_view>, 4> names{
        {{files, "files"}, {network, "network"}, {signals, "signals"}, {calls, "calls"}}};
    std::string words;
    for (const auto& [bit, name] : names)
        if ((held & bit) != 0)
            (words += words.empty() ? "" : ", ") += name;
    return words.empty() ? "nothing" : words;
}

} // namespace vantroque::Cage
