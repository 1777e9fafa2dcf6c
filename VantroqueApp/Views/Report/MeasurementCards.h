#pragma once

#include "Records/MediaInfo.h"
#include "Records/Profile.h"
#include "Records/Report.h"

#include <QWidget>

class QBoxLayout;

namespace vantroque {

/// One figure on a card.
struct MeasurementCard {
    QString title;
    QString value;
    QString unit;
    QString caption;
    std::optional<Verdict> verdict;
    QString check = {};                     ///< That scores it.
    std::optional<CheckMoment> moment = {}; ///< Where it is at its worst, when that is known.
    bool operator==(const MeasurementCard&) const = default;

    /// Those of a file. `media` may be null.
    static std::vector<MeasurementCard> of(const FileReport& report, const MediaInfo* media,
                                           const std::vector<Profile>& profiles);
};

/// The figures beside the verdicts: a card with a row for each, or, where there is room, a card
/// each side by side. One that has a worst moment opens to it.
class MeasurementCards : public QWidget {
    Q_OBJECT

public:
    explicit MeasurementCards(QWidget* parent = nullptr);
    /// Moments count frames at `frameRate`. Those of another file are closed.
    void show(const std::vector<MeasurementCard>& cards, double frameRate, bool fresh);
    void setWide(bool wide);

Q_SIGNALS:
    void momentChosen(const QString& check, const vantroque::CheckMoment& moment);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class CardView;

    QBoxLayout* m_layout;
    std::vector<CardView*> m_cards;
    bool m_wide = false;
};

} // namespace vantroque
