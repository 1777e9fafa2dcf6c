#pragma once

#include "Framing/PictureMatch.h"
#include "Picture/FrameDifference.h"
#include "VantroqueApp/Model/Background/LatestOnly.h"
#include "VantroqueApp/Model/Compare/CompareController.h"

#include <QObject>

namespace vantroque {

/// How versions are looked at: beside each other, two of them as one picture with an edge between
/// them, or where those two differ.
enum class CompareMode { tiles, wipe, difference };

/// The two versions that are laid over each other, A and B: those that were clicked last. Main
/// thread.
class ComparePair : public QObject {
    Q_OBJECT

public:
    /// What is left when B is taken from A.
    struct Difference {
        FrameDifference::Difference picture;
        std::int64_t frameOfA = 0;
        std::int64_t frameOfB = 0;
        int gain = 1;
    };

    /// `compare` must outlive it.
    explicit ComparePair(CompareController& compare);

    CompareMode mode() const { return m_mode; }
    /// Stays among the tiles where there is no pair.
    void setMode(CompareMode mode);

    bool isPair() const { return m_a != nullptr && m_b != nullptr; }
    /// Null where there are not two.
    CompareTile* a() const { return m_a; }
    CompareTile* b() const { return m_b; }
    /// Becomes B, and what was B is A.
    void choose(CompareTile& tile);
    void swap();
    PictureMatch match() const;
    /// What their difference cannot see, since the engine gives frames as 4:2:0 in at most 10 bits:
    /// "compared as 4:2:0".
    std::optional<QString> reducedWords() const;

    /// How much of the picture is A's, from the left: 0 to 1.
    double wipeEdge() const { return m_wipeEdge; }
    void setWipeEdge(double edge);

    /// One of `FrameDifference::gains`.
    int gain() const { return m_gain; }
    void setGain(int gain);
    /// Nothing until the first was computed, and outside of its mode.
    const std::optional<Difference>& difference() const { return m_difference; }
    /// It is of the frames that are due now, with the gain of now.
    bool isCurrent() const;
    /// One of them is shown as stills, which have no decoded samples.
    const CompareTile* withoutSamples() const;

Q_SIGNALS:
    void modeChanged();
    void pairChanged();
    void wipeEdgeChanged();
    void gainChanged();
    void differenceChanged();

private:
    void takeTiles();
    void setPair(CompareTile* a, CompareTile* b);
    void compute();

    CompareController& m_compare;
    CompareMode m_mode = CompareMode::tiles;
    CompareTile* m_a = nullptr;
    CompareTile* m_b = nullptr;
    double m_wipeEdge = 0.5;
    int m_gain = 4;
    std::optional<Difference> m_difference;
    LatestOnly m_work; ///< Ends first.
};

} // namespace vantroque
