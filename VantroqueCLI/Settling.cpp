#include "VantroqueCLI/Settling.h"

#include <algorithm>

namespace vantroque {

void Settling::look(const std::map<std::string, FileStamp>& there, Time now)
{
    std::erase_if(m_seen, [&](const auto& seen) { return !there.contains(seen.first); });
    for (const auto& [name, stamp] : there) {
        const auto [seen, isNew] = m_seen.try_emplace(name, Seen{stamp, now});
        if (!isNew && seen->second.stamp != stamp)
            seen->second = {stamp, now};
    }
}

std::vector<Settling::Film> Settling::ready(Time now) const
{
    std::vector<std::pair<Time, Film>> found;
    for (const auto& [name, seen] : m_seen)
        if (readyAt(seen) <= now)
            found.push_back({seen.since, {name, seen.stamp}});
    std::ranges::stable_sort(found, {}, &std::pair<Time, Film>::first);
    std::vector<Film> films;
    films.reserve(found.size());
    for (auto& [since, film] : found)
        films.push_back(std::move(film));
    return films;
}

std::optional<Settling::Time> Settling::next() const
{
    std::optional<Time> first;
    for (const auto& [name, seen] : m_seen)
        first = std::min(first.value_or(Time::max()), readyAt(seen));
    return first;
}

void Settling::startOver(const std::string& name, Time now)
{
    constexpr auto least = std::chrono::seconds(1); // also where nothing need settle
    if (const auto seen = m_seen.find(name); seen != m_seen.end())
        seen->second = {seen->second.stamp, now, now + least};
}

void Settling::wait(const std::string& name, Time until)
{
    if (const auto seen = m_seen.find(name); seen != m_seen.end())
        seen->second.notBefore = until;
}

void Settling::retry(const std::string& name, Time now)
{
    constexpr auto first = std::chrono::minutes(1);
    constexpr auto longest = std::chrono::minutes(60);
    constexpr int doublings = 6; // lead beyond the longest
    const auto seen = m_seen.find(name);
    if (seen == m_seen.end())
        return;
    const auto delay = first * (1 << std::min(seen->second.retries++, doublings));
    seen->second.notBefore = now + std::min<Clock::duration>(delay, longest);
}

void Settling::touched(const std::string& name)
{
    if (const auto seen = m_seen.find(name); seen != m_seen.end())
        seen->second.notBefore = {};
}

Settling::Time Settling::readyAt(const Seen& seen) const
{
    return std::max(seen.since + m_settle, seen.notBefore);
}

} // namespace vantroque
