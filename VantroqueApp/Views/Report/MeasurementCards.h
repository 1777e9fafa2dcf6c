#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <QWidget>

namespace vantroque {

/// One figure on a card.
struct MeasurementCard {
    QString title;
    QString value;
    QString unit;
    QString caption;
    std::optional<Verdict> verdict;
    bool operator==(const MeasurementCard&) const = default;

    /// Those of a file. `media` may be null.
    static std::vector<MeasurementCard> of(const FileReport& report, const MediaInfo* media,
                                           const std::vector<Profile>& profiles);
};

/// The figures beside the verdicts, two in a row.
class MeasurementCards : public QWidget {
public:
    explicit MeasurementCards(QWidget* parent = nullptr);
    void show(const FileReport& report, const MediaInfo* media,
              const std::vector<Profile>& profiles);

private:
    class CardView;

    std::vector<CardView*> m_cards;
};

} // namespace vantroque
