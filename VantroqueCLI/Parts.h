#pragma once

#include "VantroqueCLI/ResultLine.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What checks have written in pieces: files of JSON Lines, or whole documents in JSON. They may be
/// of any origin.
namespace vantroque::Parts {

/// The files that are meant: a folder stands for those in it that end in ".jsonl", in the order of
/// their names.
Result<std::vector<std::string>> files(const std::vector<std::string>& names);

/// What is wrong with a part, in words that name it.
struct Flaws {
    std::optional<QString> unreadable; ///< All of it, or some lines.
    std::optional<QString> torn;       ///< Its last line, as a killed check leaves it.
};
/// Takes a result. What cannot be taken ends the reading.
using Take = std::function<Result<void>(const WrittenResult& result)>;

/// Hands out the results in a part, one after the other: never more than one line, or than one
/// document, is in memory. Fails as `take` does.
Result<Flaws> read(const std::string& part, const Take& take);

} // namespace vantroque::Parts
