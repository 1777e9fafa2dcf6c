#include "Base/Numbers.h"
#include "Check/CheckRow.h"
#include "Check/CheckTexts.h"
#include "Check/SignalChecks.h"

#include <QStringList>

#include <algorithm>

namespace vantroque::SignalChecks {

using namespace Qt::StringLiterals;

namespace {

/// What is said of streams first to last, counted from 0. Streams in a row of which the same is
/// said are named together, or a master of sixteen, mostly silent, could not be read.
struct TrackWords {
    int first = 0;
    int last = 0;
    bool isSilent = false;
    QString words;
};

QString figures(const TrackLoudness& track)
{
    QStringList parts;
    if (track.integratedLKFS)
        parts << u"%1 LKFS"_s.arg(Numbers::fixed(*track.integratedLKFS, 1));
    if (track.truePeakDb)
        parts << u"%1 dBTP"_s.arg(Numbers::fixed(*track.truePeakDb, 1));
    return parts.isEmpty() ? u"not measured"_s : parts.join(u", "_s);
}

/// "track 2, stereo (2 ch)"; "tracks 3 and 4"; "tracks 5 to 16"
QString trackName(const TrackWords& words, const AudioStreamInfo& audio)
{
    const QString first = QString::number(words.first + 1);
    if (words.last == words.first && words.isSilent)
        return u"track "_s + first;
    if (words.last == words.first)
        return u"track %1, %2"_s.arg(
            first,
            Checker::channelName(audio.tracks->at(static_cast<std::size_t>(words.first)).channels));
    return u"tracks %1 %2 %3"_s.arg(first, words.last == words.first + 1 ? u"and"_s : u"to"_s,
                                    QString::number(words.last + 1));
}

std::vector<TrackWords> describe(const std::vector<TrackGroup>& groups,
                                 const std::vector<TrackLoudness>& measured)
{
    std::vector<TrackWords> all;
    for (const TrackGroup& group : groups) {
        const auto found = std::ranges::find(measured, group.first, &TrackLoudness::first);
        const TrackLoudness track = found == measured.end() ? TrackLoudness() : *found;
        constexpr double audible = -60; // dBTP
        const bool silent = track.truePeakDb && Numbers::below(*track.truePeakDb, audible);
        const int last = group.first + group.count - 1;
        if (silent && !all.empty() && all.back().isSilent)
            all.back().last = last;
        else
            all.push_back({group.first, last, silent, silent ? u"silent"_s : figures(track)});
    }
    return all;
}

} // namespace

std::optional<CheckResult> audioTracksRow(const MediaInfo& media)
{
    if (!media.audio || media.audio->streamCount < 2 || !media.signal)
        return std::nullopt;
    const AudioStreamInfo& audio = *media.audio;
    const CheckRow row{u"audio-tracks"_s, u"Audio tracks"_s,
                       audio.isPair()
                           ? u"stated, not graded: the other rows speak of tracks 1 and 2"_s
                           : u"stated, not graded: the other rows speak of track 1"_s};
    auto groups = audio.trackGroups();
    groups.erase(groups.begin());
    if (audio.isPair() && groups.empty())
        return row.info(u"tracks 1 and 2 are left and right"_s);
    if (!audio.tracks || !media.signal->audioTracks)
        return row.info(
            u"only the first of %1 was measured"_s.arg(QString::number(audio.streamCount)));
    QStringList parts;
    for (const TrackWords& words : describe(groups, *media.signal->audioTracks))
        parts << u"%1: %2"_s.arg(trackName(words, audio), words.words);
    return row.info(parts.join(u"; "_s));
}

} // namespace vantroque::SignalChecks
