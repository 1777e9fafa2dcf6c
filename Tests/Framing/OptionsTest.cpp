#include "Framing/GuideOptions.h"
#include "Picture/ScopeOptions.h"
#include "Support/TestFolder.h"

#include <gtest/gtest.h>

// What the operator has switched on is there again at the next start.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

class Options : public testing::Test {
protected:
    UserDefaults defaults() const
    {
        return UserDefaults(QString::fromStdString(m_folder / "vantroque.ini"));
    }

private:
    const TestFolder m_folder;
};

} // namespace

TEST_F(Options, AreAllOffWhenNothingWasSaved)
{
    EXPECT_EQ(GuideOptions::load(defaults()), GuideOptions());
    EXPECT_EQ(ScopeOptions::load(defaults()), ScopeOptions());
    EXPECT_FALSE(GuideOptions().safeAreas);
    EXPECT_FALSE(ScopeOptions().waveform);
}

TEST_F(Options, OfGuidesComeBackEachForItself)
{
    for (const GuideOptions& options :
         {GuideOptions{.safeAreas = true}, GuideOptions{.thirds = true},
          GuideOptions{.detectedPicture = true}, GuideOptions{.feedCrop = true},
          GuideOptions{.platformZoneIDs = {u"tiktok"_s}},
          GuideOptions{.platformZoneIDs = {u"tiktok"_s, u"meta-reels-stories"_s}}}) {
        {
            UserDefaults written = defaults();
            options.save(written);
        }
        EXPECT_EQ(GuideOptions::load(defaults()), options);
    }
}

TEST_F(Options, OfScopesComeBackEachForItself)
{
    for (const ScopeOptions& options :
         {ScopeOptions{.waveform = true}, ScopeOptions{.parade = true},
          ScopeOptions{.vectorscope = true}, ScopeOptions{.outOfRange = true}}) {
        {
            UserDefaults written = defaults();
            options.save(written);
        }
        EXPECT_EQ(ScopeOptions::load(defaults()), options);
    }
}

TEST_F(Options, OfScopesAreOtherOnesOnADeskForReviewing)
{
    const ScopeOptions all{.waveform = true, .parade = true, .vectorscope = true};
    EXPECT_EQ(ScopeOptions::load(defaults(), ScopePlace::review), all) << "unless put away";
    {
        UserDefaults written = defaults();
        ScopeOptions{.parade = true, .outOfRange = true}.save(written, ScopePlace::review);
    }
    EXPECT_EQ(ScopeOptions::load(defaults(), ScopePlace::review),
              (ScopeOptions{.parade = true, .outOfRange = true}));
    EXPECT_EQ(ScopeOptions::load(defaults()), ScopeOptions{.outOfRange = true})
        << "the hatch lies on the picture in either place";
}

TEST_F(Options, LieUnderTheirKeys)
{
    UserDefaults written = defaults();
    GuideOptions{.safeAreas = true, .platformZoneIDs = {u"tiktok"_s}}.save(written);
    ScopeOptions{.outOfRange = true}.save(written);
    EXPECT_TRUE(written.isOn(u"guides.safeAreas"_s));
    EXPECT_FALSE(written.isOn(u"guides.thirds"_s));
    EXPECT_EQ(written.textList(u"guides.platformZones"_s), QStringList{u"tiktok"_s});
    EXPECT_TRUE(written.isOn(u"scopes.outOfRange"_s));
    EXPECT_FALSE(written.isOn(u"scopes.waveform"_s));
}

TEST_F(Options, ThatAreNoSwitchCountAsOff)
{
    UserDefaults written = defaults();
    written.setText(u"guides.thirds"_s, u"yes please"_s);
    written.setText(u"guides.platformZones"_s, u"{}"_s);
    EXPECT_EQ(GuideOptions::load(written), GuideOptions());
}

} // namespace vantroque
