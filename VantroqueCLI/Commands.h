#pragma once

#include "VantroqueCLI/Arguments.h"
#include "VantroqueCLI/ExitStatus.h"

namespace vantroque {

/// One thing that the command line can do.
struct Command {
    const char* name;
    const char* usage; ///< The words after the name.
    const char* summary;
    Arguments::Options options;
    ExitStatus (*run)(const Arguments& arguments);
};

/// In the order of the help.
const std::vector<Command>& commands();

ExitStatus captions(const Arguments& arguments);
ExitStatus check(const Arguments& arguments);
ExitStatus collect(const Arguments& arguments);
ExitStatus markers(const Arguments& arguments);
ExitStatus measure(const Arguments& arguments);
ExitStatus pdf(const Arguments& arguments);
ExitStatus probe(const Arguments& arguments);
ExitStatus profiles(const Arguments& arguments);
ExitStatus scopes(const Arguments& arguments);
ExitStatus still(const Arguments& arguments);
ExitStatus watch(const Arguments& arguments);

} // namespace vantroque
