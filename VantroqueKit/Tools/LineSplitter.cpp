#include "Tools/LineSplitter.h"

#include <QUtf8StringView>

namespace vantroque {

void LineSplitter::feed(std::string_view bytes)
{
    const auto deliver = [this](std::string_view line) {
        if (!line.empty()
            && QUtf8StringView(line.data(), static_cast<qsizetype>(line.size())).isValidUtf8())
            m_onLine(line);
    };
    std::size_t start = 0;
    for (std::size_t end = 0; (end = bytes.find_first_of("\n\r", start)) != bytes.npos;
         start = end + 1) {
        const std::string_view rest = bytes.substr(start, end - start);
        if (m_pending.empty()) {
            deliver(rest);
        } else {
            m_pending += rest;
            deliver(m_pending);
            m_pending.clear();
        }
    }
    m_pending += bytes.substr(start);
}

} // namespace vantroque
