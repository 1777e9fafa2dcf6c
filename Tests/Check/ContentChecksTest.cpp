#include "Builders.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Rows contentRows(const ContentRule& rule)
{
    Profile profile = bareProfile();
    profile.content = rule;
    return rowsOf(checkContent, profile, hdSpot());
}

} // namespace

TEST(ContentChecks, AnUnmeasuredFileIsInfoForEachRuleThatNeedsTheMeasurement)
{
    std::vector<ContentRule> rules(3);
    rules[0].letterboxForbidden = true;
    rules[1].headTailBlackForbidden = true;
    rules[2].slate = SlatePolicy::optional;
    for (const ContentRule& rule : rules)
        EXPECT_THAT(contentRows(rule), ElementsAre(row("content", "Content checks", Verdict::info,
                                                       "signal pass skipped",
                                                       "letterbox/slate/black-padding analysis")));
}

TEST(ContentChecks, RulesThatAskForNothingHaveNoRow)
{
    ContentRule rule;
    rule.letterboxForbidden = false;
    rule.headTailBlackForbidden = false;
    rule.slateSeconds = 5;
    EXPECT_THAT(contentRows(rule), IsEmpty());
    EXPECT_THAT(rowsOf(checkContent, bareProfile(), hdSpot()), IsEmpty());
}

} // namespace vantroque::Checker
