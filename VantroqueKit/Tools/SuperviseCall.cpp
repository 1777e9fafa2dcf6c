#include "Tools/SuperviseCall.h"

#include "Tools/SuperviseProtocol.h"

#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace vantroque {

using namespace SuperviseProtocol;

namespace {

template<typename Number>
std::optional<Number> numberOf(std::string_view text)
{
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// Where the paths after that word go; null for a word that the protocol does not have.
std::vector<std::string>* listOf(std::string_view word, Cage::Rights& rights)
{
    if (word == programWord)
        return &rights.programs;
    if (word == readWord)
        return &rights.reads;
    return word == writeWord ? &rights.writes : nullptr;
}

/// Takes the words up to the one before the tool. False when one of them is none of the protocol.
bool takeRights(char**& words, std::optional<Cage::Rights>& cage)
{
    for (; *words != nullptr && *words != std::string_view(toolWord); ++words) {
        if (!cage && *words == std::string_view(cagedWord)) {
            cage.emplace();
            continue;
        }
        auto* const paths = cage ? listOf(*words, *cage) : nullptr;
        if (paths == nullptr || words[1] == nullptr)
            return false;
        paths->emplace_back(*++words);
    }
    return *words != nullptr;
}

} // namespace

std::optional<SuperviseCall> SuperviseCall::of(int count, char** words)
{
    if (count < 4)
        return std::nullopt;
    const auto parent = numberOf<pid_t>(words[1]);
    const auto memoryBytes = numberOf<rlim_t>(words[2]);
    SuperviseCall call;
    words += 3;
    if (!parent || !memoryBytes || !takeRights(words, call.cage) || words[1] == nullptr)
        return std::nullopt;
    call.parent = *parent;
    call.memoryBytes = *memoryBytes;
    call.tool = words + 1;
    return call;
}

} // namespace vantroque
