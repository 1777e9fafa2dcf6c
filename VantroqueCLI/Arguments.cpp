#include "VantroqueCLI/Arguments.h"

#include <getopt.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Long options count from here, short ones are characters.
constexpr int firstLongOption = 1001;

/// The option that getopt has just refused, as it was written.
QString refusedOption(const std::vector<char*>& argv)
{
    // Several short options may share a word, and then getopt has not left it yet.
    if (optopt != 0 && optopt < firstLongOption) {
        const char letter = static_cast<char>(optopt);
        return u'-' + QString::fromUtf8(&letter, 1);
    }
    return QString::fromUtf8(argv[static_cast<std::size_t>(optind - 1)]);
}

} // namespace

Result<Arguments> Arguments::parse(const std::vector<std::string>& words, const Options& known)
{
    std::vector<std::string> names;
    std::vector<option> options;
    names.reserve(known.size()); // the options point into it
    for (const auto& [name, takesValue] : known) {
        names.push_back(name);
        options.push_back({names.back().c_str(), takesValue ? required_argument : no_argument,
                           nullptr, static_cast<int>(names.size()) + firstLongOption - 1});
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
            return failure((found == ':' ? u"%1 needs a value"_s : u"unknown option %1"_s)
                               .arg(refusedOption(argv)));
        }
        const std::string name =
            found == 'o' ? "output" : names.at(static_cast<std::size_t>(found - firstLongOption));
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
