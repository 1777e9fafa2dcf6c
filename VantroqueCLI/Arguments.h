#pragma once

#include "Base/Result.h"

#include <QString>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace vantroque {

/// What a command was called with. File names keep their bytes.
class Arguments {
public:
    /// The options that a command knows: name and whether a value follows. "-o" is short for
    /// "--output".
    using Options = std::map<std::string, bool>;

    /// Reads what stands after the command's name. Options may stand anywhere before "--".
    static Result<Arguments> parse(const std::vector<std::string>& words, const Options& known);

    const std::vector<std::string>& files() const { return m_files; }
    bool has(const std::string& option) const { return m_values.contains(option); }
    /// All values that an option was given, in order.
    std::vector<std::string> values(const std::string& option) const;
    /// The last one, which overrides those before.
    std::string value(const std::string& option, const std::string& otherwise) const;

private:
    std::vector<std::string> m_files;
    std::map<std::string, std::vector<std::string>> m_values;
};

} // namespace vantroque
