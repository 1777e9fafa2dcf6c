#include "VantroqueCLI/ProbeAhead.h"

#include "Probe/Prober.h"

namespace vantroque {

ProbeAhead::ProbeAhead(const std::vector<std::string>& names, std::size_t ahead)
    : m_names(names), m_ahead(ahead)
{
}

std::optional<ProbeAhead::File> ProbeAhead::take()
{
    const std::scoped_lock lock(m_mutex);
    while (m_started < m_names.size() && m_coming.size() <= m_ahead)
        startNext();
    if (m_coming.empty())
        return std::nullopt;
    File file = std::move(m_coming.front());
    m_coming.pop_front();
    return file;
}

void ProbeAhead::startNext()
{
    const std::size_t index = m_started++;
    // Where no further thread can be had, the probe waits for whoever asks for it.
    m_coming.push_back({index, std::async(std::launch::async | std::launch::deferred,
                                          [url = FileUrl::fromPath(m_names[index])] {
                                              return Prober::probe(url, Prober::Captions::leftOut);
                                          })});
}

} // namespace vantroque
