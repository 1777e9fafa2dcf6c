#include "Picture/ScopeRenderer.h"
#include "VantroqueApp/Views/Player/DeskInstruments.h"
#include "VantroqueApp/Views/Player/ScopesPanel.h"
#include "Views/PaintedWords.h"
#include "Views/PaneFixture.h"

#include <QAbstractButton>
#include <QMenu>

namespace vantroque {
namespace {

using testing::Contains;
using testing::Not;

/// The pane of a player as a desk for reviewing.
class DeskPaneTest : public PaneTest {
protected:
    ScopesPanel& scopesPanel(bool ofDesk)
    {
        for (ScopesPanel* panel : pane().findChildren<ScopesPanel*>())
            if (pane().findChild<DeskInstruments*>()->isAncestorOf(panel) == ofDesk)
                return *panel;
        throw std::logic_error("a pane without scopes");
    }
    /// In the menu of scopes.
    void toggle(const QString& scope)
    {
        for (QMenu* menu : pane().findChildren<QMenu*>())
            for (QAction* action : menu->actions())
                if (action->text() == scope)
                    action->trigger();
        QApplication::processEvents();
    }
    QAbstractButton& problemButton(const QString& name)
    {
        for (auto* button : pane().findChildren<QAbstractButton*>())
            if (button->accessibleName() == name)
                return *button;
        throw std::logic_error("no button to step with");
    }
};

TEST_F(DeskPaneTest, ADeskHasItsOwnScopesUnlessTheyArePutAway)
{
    openPane({}, {1440, 852});
    pane().setReview(true);
    QApplication::processEvents();
    auto& scopes = scopesPanel(true);
    EXPECT_TRUE(scopes.isVisible());
    EXPECT_THAT(paintedWords(scopes),
                testing::IsSupersetOf({u"Waveform"_s, u"RGB parade"_s, u"Vectorscope"_s}));
    toggle(u"RGB parade"_s);
    EXPECT_THAT(paintedWords(scopes), Not(Contains(u"RGB parade"_s)));
    pane().setReview(false);
    EXPECT_FALSE(scopesPanel(false).hasScopes()) << "that is a choice of its own";
    pane().setReview(true);
    EXPECT_THAT(paintedWords(scopes), Not(Contains(u"RGB parade"_s)));
    toggle(u"Waveform"_s);
    toggle(u"Vectorscope"_s);
    EXPECT_FALSE(scopes.isVisible());
}

TEST_F(DeskPaneTest, TheScalesOfScopesStandBeforeThereIsAFrame)
{
    ScopeFeed feed(m_settings, m_clock, {320, 180}, ColorMatrix::bt709);
    feed.setPlace(ScopePlace::review);
    ScopesPanel scopes(feed);
    scopes.setForm(ScopesPanel::Form::desk);
    ASSERT_TRUE(feed.scopeImages().waveform.isNull());
    EXPECT_THAT(paintedWords(scopes), testing::IsSupersetOf({u"100"_s, u"50"_s, u"0"_s, u"R"_s}));
    const QImage seen = scopes.grab().toImage();
    constexpr int left = 12 + 28; // padding and digits
    constexpr int top = 8 + 20;   // and the title
    EXPECT_EQ(seen.pixelColor(left + 100, top + ScopeRenderer::row(100, 128)),
              QColor(74, 222, 128));
}

TEST_F(DeskPaneTest, StepsThroughProblemsByTimeAndStopsAtTheEnds)
{
    SignalEvent info = finding(10, 12, u"Dip to black"_s);
    info.verdict = Verdict::info;
    openPane({info, finding(20, 40, u"Too bright"_s), finding(60, 61, u"Too dark"_s)}, {1100, 852});
    auto& next = problemButton(u"Next problem by time"_s);
    auto& previous = problemButton(u"Previous problem by time"_s);
    EXPECT_THAT(paintedWords(pane()), Contains(u"Video levels"_s).Times(0));
    EXPECT_FALSE(previous.isEnabled());
    QTest::mouseClick(&next, Qt::LeftButton);
    EXPECT_EQ(frame(), 20);
    EXPECT_THAT(paintedWords(pane()),
                testing::IsSupersetOf({u"Place"_s, u"1 of 2"_s, u"Video levels"_s}));
    EXPECT_FALSE(previous.isEnabled());
    const QPoint place = next.mapTo(&pane(), QPoint());
    key(Qt::Key_N);
    EXPECT_EQ(frame(), 60);
    EXPECT_EQ(next.mapTo(&pane(), QPoint()), place) << "it stays under the pointer";
    EXPECT_FALSE(next.isEnabled());
    EXPECT_EQ(player().exportMessage(), std::nullopt);
    key(Qt::Key_N);
    EXPECT_EQ(frame(), 60);
    EXPECT_EQ(player().exportMessage(), u"No place after this one needs a look."_s);
    key(Qt::Key_N, Qt::ShiftModifier);
    EXPECT_EQ(frame(), 20);
    EXPECT_EQ(player().overlay().finding->label, u"luma"_s) << "the ring says it too";
    player().setReport(nullptr);
    QApplication::processEvents();
    EXPECT_FALSE(next.isVisible());
}

} // namespace
} // namespace vantroque
