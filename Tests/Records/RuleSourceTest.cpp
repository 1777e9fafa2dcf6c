#include "Records/RuleSource.h"

#include <gtest/gtest.h>

namespace vantroque {

using namespace Qt::StringLiterals;

TEST(RuleSource, NamesItsDocumentTheClauseAndTheDateAndHowSureItIs)
{
    RuleSource source{u"EBU R 128 s1"_s, {}, u"2016"_s};
    EXPECT_EQ(source.words(), u"EBU R 128 s1, 2016"_s);
    source.clause = u"item b"_s;
    source.certainty = RuleSource::Certainty::quoted;
    EXPECT_EQ(source.words(), u"EBU R 128 s1, item b, 2016, as quoted"_s);
    source.certainty = RuleSource::Certainty::secondHand;
    EXPECT_EQ(source.words(), u"EBU R 128 s1, item b, 2016, at second hand"_s);
}

} // namespace vantroque
