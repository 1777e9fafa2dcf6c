#include "Signal/SignalLog.h"

#include "Base/Numbers.h"
#include "Signal/LogHeaders.h"
#include "Signal/LogText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace vantroque {

using LogText::after;
using LogText::mostChannels;
using LogText::number;
using LogText::word;

namespace {

bool contains(std::string_view text, std::string_view key)
{
    return text.find(key) != std::string_view::npos;
}

std::optional<double> numberAfter(std::string_view line, std::string_view key)
{
    const auto text = after(line, key);
    return text ? number(*text) : std::nullopt;
}

std::optional<int> wholeNumber(std::string_view text)
{
    const auto value = Numbers::toInt(text);
    if (!value || *value < 0 || *value > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(*value);
}

/// A level in dBFS, for which ffmpeg also prints "-inf".
std::optional<double> level(std::string_view text)
{
    return word(text) == "-inf" ? std::optional<double>(LogText::silence) : number(text);
}

void keep(std::vector<double>& list, const std::optional<double>& value)
{
    if (value)
        list.push_back(*value);
}

} // namespace

SignalLog::SignalLog(std::string_view log)
{
    LogHeaders headers;
    bool isDecoding = false;
    LogText::forEachLine(log, [&](std::string_view line) {
        if (headers.holds(line))
            return;
        if (line == "Stream mapping:") {
            *this = SignalLog();
            isDecoding = true;
        } else if (isDecoding) {
            readLine(line);
        }
    });
    countFromFirstFrame();
    addLateSoundToSilence();
}

std::optional<double> SignalLog::frameInterval() const
{
    const auto count = static_cast<double>(m_lumaDifferences.size());
    if (count < 2 || !m_lastFrame || *m_lastFrame <= *m_firstFrame)
        return std::nullopt;
    return (*m_lastFrame - *m_firstFrame) / (count - 1);
}

std::string SignalLog::summaryOf(int track) const
{
    const auto found = m_summaries.find(track);
    return found == m_summaries.end() ? std::string() : found->second;
}

std::optional<CropRect> SignalLog::activePicture() const
{
    const Rectangle* best = nullptr;
    for (const Rectangle& rectangle : m_cropOrder)
        if (best == nullptr || m_crops.at(rectangle) > m_crops.at(*best))
            best = &rectangle;
    if (best == nullptr)
        return std::nullopt;
    const auto& [width, height, x, y] = *best;
    return CropRect{width, height, x, y};
}

void SignalLog::readLine(std::string_view line)
{
    m_hasFilterLines = m_hasFilterLines || line.starts_with("[Parsed_");
    if (const auto metadata = after(line, "lavfi.")) {
        readMetadata(*metadata);
        return;
    }
    if (contains(line, "pts_time:")) { // before each frame's values, and by the million
        readTime(line);
        return;
    }
    if (const auto crop = after(line, "crop=")) {
        readCrop(*crop);
        return;
    }
    if (readLoudness(line) || readSummary(line))
        return;
    readSize(line);
    readBlack(line);
    readSilence(line);
    readFields(line);
    readChannel(line);
}

/// A line of how loud it is so far.
bool SignalLog::readLoudness(std::string_view line)
{
    const auto text = line.starts_with("[Parsed_ebur128_") ? after(line, "] t:") : std::nullopt;
    if (text) {
        m_openSummary.reset();
        m_loudest.read(*text);
    }
    return text.has_value();
}

/// A line of a sum of loudness. Those of further audio streams have filters with names of ours.
bool SignalLog::readSummary(std::string_view line)
{
    constexpr std::string_view furtherTrack = "[ebur128@track";
    if (contains(line, "Summary:")) {
        m_openSummary = 0;
        if (line.starts_with(furtherTrack)) {
            const std::string_view number = word(line.substr(furtherTrack.size()));
            m_openSummary = wholeNumber(number).value_or(std::numeric_limits<int>::max());
        } else {
            m_loudest.close();
        }
        m_summaries[*m_openSummary].clear();
        return true;
    }
    if (!m_openSummary)
        return false;
    if (!line.empty() && !line.starts_with("  ")) {
        m_openSummary.reset();
        return false;
    }
    constexpr std::size_t longestSummary = 4096;
    std::string& summary = m_summaries[*m_openSummary];
    if (summary.size() < longestSummary)
        summary.append(line) += '\n';
    return true;
}

void SignalLog::readTime(std::string_view line)
{
    if (line.starts_with("[Parsed_metadata_")) {
        if (const auto time = numberAfter(line, "pts_time:")) {
            m_firstFrame = m_firstFrame.value_or(*time);
            m_lastFrame = time;
        }
    } else if (line.starts_with("[Parsed_ametadata_")) {
        if (const auto time = numberAfter(line, "pts_time:")) {
            m_firstSound = m_firstSound.value_or(*time);
            m_lastSound = std::max(*time, m_lastSound.value_or(*time));
        }
    }
}

/// "video:248kB audio:562kB subtitle:0kB ..." at the end of the run.
void SignalLog::readSize(std::string_view line)
{
    if (!line.starts_with("video:"))
        return;
    const auto size = after(line, " audio:");
    if (size)
        m_soundKilobytes = Numbers::toDouble(size->substr(0, size->find("kB")));
}

void SignalLog::countFromFirstFrame()
{
    const double start = pictureStart();
    for (auto* times : {&m_silenceStarts, &m_silenceEnds, &m_freezeStarts})
        for (double& time : *times)
            time -= start;
    for (BlackRun& run : m_blackRuns) {
        run.start -= start;
        run.end -= start;
    }
    for (auto* time : {&m_firstSound, &m_lastSound})
        if (*time)
            **time -= start;
}

std::optional<double> SignalLog::fromFirstFrame(const std::optional<double>& time) const
{
    return time ? std::optional(*time - pictureStart()) : std::nullopt;
}

std::optional<LoudestWindow> SignalLog::fromFirstFrame(std::optional<LoudestWindow> window) const
{
    if (window)
        window->start -= pictureStart();
    return window;
}

void SignalLog::leaveOut(std::uint64_t bytes)
{
    if (m_soundKilobytes)
        *m_soundKilobytes -= static_cast<double>(bytes) / 1024;
}

/// Nothing is heard until the sound begins, and ffmpeg looks for silence only from there on.
void SignalLog::addLateSoundToSilence()
{
    constexpr double shortestSilence = 0.5; // as ffmpeg is told
    constexpr double lag = 0.001;           // of the silence detector
    const double begin = soundStart();
    if (begin <= 0)
        return;
    if (!m_silenceStarts.empty() && !Numbers::above(m_silenceStarts.front(), begin + lag)) {
        if (!m_silenceDurations.empty())
            m_silenceDurations.front() += m_silenceStarts.front();
        m_silenceStarts.front() = 0;
    } else if (!Numbers::below(begin, shortestSilence)) {
        m_silenceStarts.insert(m_silenceStarts.begin(), 0);
        m_silenceEnds.insert(m_silenceEnds.begin(), begin);
        m_silenceDurations.insert(m_silenceDurations.begin(), begin);
        ++m_silenceEndCount;
    }
}

void SignalLog::readMetadata(std::string_view text)
{
    constexpr std::string_view statistics = "signalstats.";
    constexpr std::string_view levels = "astats.";
    constexpr std::string_view phase = "aphasemeter.phase=";
    if (text.starts_with(statistics))
        readStatistic(text.substr(statistics.size()));
    else if (text.starts_with(levels))
        readLevel(text.substr(levels.size()));
    else if (text.starts_with(phase)) {
        if (const auto value = number(text.substr(phase.size())))
            m_phase.push_back(static_cast<float>(*value));
    } else {
        readFreeze(text);
    }
}

void SignalLog::readStatistic(std::string_view text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return;
    const std::string_view key = text.substr(0, equals);
    const std::string_view value = word(text.substr(equals + 1));
    if (key == "YDIF") {
        keep(m_lumaDifferences, Numbers::toDouble(value));
        return;
    }
    const auto code = wholeNumber(value);
    if (!code)
        return;
    if (key == "YMIN")
        m_lowestLuma = std::min(m_lowestLuma.value_or(*code), *code);
    else if (key == "YMAX")
        m_highestLuma = std::max(m_highestLuma.value_or(*code), *code);
    else if (key == "YBITDEPTH")
        m_firstLumaBits = m_firstLumaBits.value_or(*code);
}

void SignalLog::readLevel(std::string_view text)
{
    const auto level = LogText::windowLevel(text);
    if (!level)
        return;
    LevelWindows& windows = m_levelWindows[level->channel];
    const bool isRms = level->kind == LogText::WindowLevel::Kind::rms;
    (isRms ? windows.rms : windows.peak).push_back(level->dbfs);
}

void SignalLog::readFreeze(std::string_view text)
{
    keep(m_freezeStarts, numberAfter(text, "freeze_start:"));
    keep(m_freezeDurations, numberAfter(text, "freeze_duration:"));
}

void SignalLog::readCrop(std::string_view text)
{
    std::array<int, 4> sides{};
    std::string_view rest = word(text);
    for (int& side : sides) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const auto pixels = wholeNumber(rest.substr(0, end));
        if (!pixels)
            return; // an all-black picture has negative sides
        side = *pixels;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const Rectangle rectangle{sides[0], sides[1], sides[2], sides[3]};
    if (++m_crops[rectangle] == 1)
        m_cropOrder.push_back(rectangle);
}

void SignalLog::readBlack(std::string_view line)
{
    const auto start = numberAfter(line, "black_start:");
    const auto end = numberAfter(line, "black_end:");
    const auto duration = numberAfter(line, "black_duration:");
    if (start && end && duration)
        m_blackRuns.push_back({*start, *end, *duration});
}

void SignalLog::readSilence(std::string_view line)
{
    if (!contains(line, "silence"))
        return;
    m_hasSilenceDetector = true;
    keep(m_silenceStarts, numberAfter(line, "silence_start:"));
    if (const auto end = after(line, "silence_end:")) {
        ++m_silenceEndCount;
        keep(m_silenceEnds, number(*end));
    }
    keep(m_silenceDurations, numberAfter(line, "silence_duration:"));
}

void SignalLog::readFields(std::string_view line)
{
    const auto count = [&](std::string_view key) -> std::optional<std::int64_t> {
        const auto text = after(line, key);
        return text ? Numbers::toInt(word(*text)) : std::nullopt;
    };
    if (contains(line, "Multi frame detection:")) {
        const auto top = count("TFF:");
        const auto bottom = count("BFF:");
        const auto progressive = count("Progressive:");
        const auto undetermined = count("Undetermined:");
        if (top && bottom && progressive && undetermined)
            m_fieldCounts = {*top, *bottom, *progressive, *undetermined};
    } else if (contains(line, "Repeated Fields:")) {
        m_repeatedFields = {count("Neither:").value_or(0), count("Top:").value_or(0),
                            count("Bottom:").value_or(0)};
    }
}

void SignalLog::readChannel(std::string_view line)
{
    if (contains(line, "Channel: ")) {
        if (std::ssize(m_channelBlocks) < mostChannels)
            m_channelBlocks.emplace_back();
        return;
    }
    if (m_channelBlocks.empty())
        return;
    ChannelBlock& block = m_channelBlocks.back();
    if (const auto rms = after(line, "RMS level dB:"))
        block.rmsDb = block.rmsDb ? block.rmsDb : level(*rms);
    else if (const auto peak = after(line, "Peak level dB:"))
        block.peakDb = block.peakDb ? block.peakDb : level(*peak);
    else if (const auto bits = after(line, "Bit depth:")) {
        const auto used = after(word(*bits), "/");
        block.bits = block.bits || !used ? block.bits : wholeNumber(*used);
    }
}

} // namespace vantroque
