#include "VantroqueCLI/Arguments.h"

#include <getopt.h>

namespace vantroque {

using namespace Qt::StringLiterals;

Result<Arguments> Arguments::parse(const std::vector<std::string>& words, const Options& known)
{
    std::vector<std::string> names;
    std::vector<option> options;
    names.reserve(known.size()); // the options point into it
    for (const auto& [name, takesValue] : known) {
        names.push_back(name);
        options.push_back({names.back().c_str(), takesValue ? required_argument : no_argument,
                           nullptr, static_cast<int>(names.size()) + 1000});
    }
    options.push_back({});

    // getopt reorders its words; the first stands for the program's name.
    std::vector<std::string> copies{std::string()};
    copies.insert(copies.end(), words.begin(), words.end());
    std::vector<char*> argv;
    for (std::string& word : copies)
        argv.push_back(word.data());
    const int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);

    Arguments arguments;
    optind = 0; // starts anew, also after an earlier call
    const char* shortOptions = known.contains("output") ? ":o:" : ":";
    for (int found = 0;
         (found = ::getopt_long(argc, argv.data(), shortOptions, options.data(), nullptr)) != -1;) {
        if (found == '?' || found == ':') {
            const QString word = QString::fromUtf8(argv[static_cast<std::size_t>(optind - 1)]);
            return failure(
                (found == ':' ? u"%1 needs a value"_s : u"unknown option %1"_s).arg(word));
        }
        const std::string name =
            found == 'o' ? "output" : names.at(static_cast<std::size_t>(found - 1001));
        arguments.m_values[name].push_back(optarg != nullptr ? optarg : "");
    }
    for (int i = optind; i < argc; ++i)
        arguments.m_files.emplace_back(argv[static_cast<std::size_t>(i)]);
    return arguments;
}

std::vector<std::string> Arguments::values(const std::string& option) const
{
    const auto found = m_values.find(option);
    return found == m_values.end() ? std::vector<std::string>() : found->second;
}

std::string Arguments::value(const std::string& option, const std::string& otherwise) const
{
    const auto found = m_values.find(option);
    return found == m_values.end() ? otherwise : found->second.back();
}

} // namespace vantroque
