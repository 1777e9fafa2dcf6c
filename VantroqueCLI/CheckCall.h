#pragma once

#include "Captions/LoadedCaptions.h"
#include "VantroqueCLI/Arguments.h"

/// What the calls of commands that check files have in common.
namespace vantroque::CheckCall {

/// The files that each --files-from names.
Result<std::vector<std::string>> listed(const Arguments& arguments);

/// The files of the call: those that it names, then those of each --files-from.
Result<std::vector<std::string>> files(const Arguments& arguments);

/// What a call that takes `files` reads.
std::vector<std::string> inputs(const Arguments& arguments, std::vector<std::string> files);

/// How many files are checked at once, by --jobs.
Result<std::size_t> jobCount(const Arguments& arguments);

/// The captions of --captions, when it is given.
Result<std::optional<LoadedCaptions>> givenCaptions(const Arguments& arguments);

} // namespace vantroque::CheckCall
