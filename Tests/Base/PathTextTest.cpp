#include "Base/PathText.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

TEST(PathText, IsThePathItself)
{
    const FileUrl url = FileUrl::fromPath("/v/caf\xC3\xA9 100%20.mov");
    EXPECT_EQ(PathText::of(url), u"/v/caf\u00E9 100%20.mov"_s);
    EXPECT_EQ(PathText::url(PathText::of(url)), url);
}

TEST(PathText, OfBytesThatAreNoTextIsAUrl)
{
    const FileUrl url = FileUrl::fromPath("/v/caf\xE9 100%.mov");
    EXPECT_EQ(PathText::of(url), u"file:///v/caf%E9%20100%25.mov"_s);
    EXPECT_EQ(PathText::url(PathText::of(url)), url);
}

TEST(PathText, TellsTheReplacementCharacterFromABadByte)
{
    const FileUrl url = FileUrl::fromPath("/v/\xEF\xBF\xBD.mov");
    EXPECT_EQ(PathText::of(url), u"/v/\uFFFD.mov"_s);
    EXPECT_EQ(PathText::url(PathText::of(url)), url);
}

} // namespace
} // namespace vantroque
