#pragma once

#include "VantroqueCLI/Output.h"

#include <map>
#include <string>

namespace vantroque {

/// Says on standard error what is wrong with files, and not again as long as that stays the same.
class ToldOnce {
public:
    void tell(const std::string& name, const QString& words)
    {
        const auto [told, isNew] = m_told.try_emplace(name, words);
        if (!isNew && told->second == words)
            return;
        told->second = words;
        Output::complain(QString::fromStdString(name) + QStringLiteral(": ") + words);
    }
    /// What is not among these may come back and is told of anew.
    template<typename IsThere>
    void keepOnly(const IsThere& isThere)
    {
        std::erase_if(m_told, [&](const auto& told) { return !isThere(told.first); });
    }

private:
    std::map<std::string, QString> m_told;
};

} // namespace vantroque
