#pragma once

#include "Builders.h"
#include "Check/SlateLayout.h"

namespace vantroque::Checker {

/// Thirty seconds of ad after five of slate and two of black, at 25 frames a second, to change one
/// thing of.
struct Slated {
    ContentRule rule;
    std::vector<TimeSpan> runs{{5, 7}};
    SignalInfo signal;
    VideoStreamInfo video = hdVideo();
    bool hasAudio = true;
    QString fileName = QStringLiteral("ABCD1234000H");
    double totalSeconds = 37;

    LeaderFacts facts() const
    {
        return {.rule = rule,
                .slateLen = 5,
                .gapLen = 2,
                .runs = runs,
                .signal = signal,
                .video = video,
                .hasAudio = hasAudio,
                .fileName = fileName,
                .totalSeconds = totalSeconds};
    }

    Rows rows() const
    {
        Rows rows;
        checkSlateLayout(facts(), rows);
        return rows;
    }
};

} // namespace vantroque::Checker
