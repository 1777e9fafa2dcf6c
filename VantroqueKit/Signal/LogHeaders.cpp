#include "Signal/LogHeaders.h"

#include "Base/Text.h"
#include "Signal/LogText.h"

namespace vantroque {

bool LogHeaders::holds(std::string_view line)
{
    if (line.starts_with("Input #") || line.starts_with("Output #")) {
        m_inHeader = m_aheadOfStreams = true;
        return true;
    }
    // Complaints about a damaged file begin with its path.
    if (!m_inHeader)
        return line.starts_with('/');
    // The file's name and the keys of tags are printed with their line feeds.
    m_aheadOfStreams = m_aheadOfStreams && !line.starts_with("  Stream #");
    m_inHeader = m_aheadOfStreams || line.starts_with("  ");
    return m_inHeader;
}

QByteArray LogHeaders::without(const QByteArray& log)
{
    LogHeaders headers;
    QByteArray rest;
    LogText::forEachLine(Text::view(log), [&](std::string_view line) {
        if (!headers.holds(line))
            rest.append(line.data(), static_cast<qsizetype>(line.size())).append('\n');
    });
    return rest;
}

} // namespace vantroque
