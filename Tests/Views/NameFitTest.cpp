#include "VantroqueApp/Views/Files/NameFit.h"
#include "VantroqueApp/Views/Files/FileOrder.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <gtest/gtest.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

class FittedNames : public testing::Test {
protected:
    QString fitted(const QString& name, const std::vector<QString>& beside, int width = 150)
    {
        return NameFit::shortened(name, beside, m_metrics, width);
    }

    const QFontMetrics m_metrics{Type::text(Type::body)};
};

TEST_F(FittedNames, ThatDifferInTheMiddleStayDifferent)
{
    const QString a = u"Northlight_Spring_Campaign_S07_30s_16x9_English_v04.mov"_s;
    const QString b = u"Northlight_Spring_Campaign_S08_30s_16x9_English_v04.mov"_s;
    const QString one = fitted(a, {b});
    const QString other = fitted(b, {a, b});
    EXPECT_NE(one, other);
    EXPECT_TRUE(one.contains(u'7')) << one.toStdString();
    EXPECT_TRUE(other.contains(u'8')) << other.toStdString();
    EXPECT_TRUE(one.startsWith(u'N') && one.endsWith(u'v')) << one.toStdString();
    for (const QString& name : {one, other})
        EXPECT_LE(m_metrics.horizontalAdvance(name), 150) << name.toStdString();
}

/// Digits are not equally wide, so that one name may keep a letter more than the other.
TEST_F(FittedNames, OfASeriesAllShowTheirNumber)
{
    const auto name = [](int number) {
        return u"ok_Northlight_SlowRoast_S%1_x_en_va.mov"_s.arg(number);
    };
    for (int number = 10; number < 40; ++number)
        for (int width = 140; width <= 240; width += 20) {
            const QString shown = fitted(name(number), {name(number + 1)}, width);
            EXPECT_TRUE(shown.contains(QString::number(number % 10)))
                << shown.toStdString() << " in " << width;
        }
}

TEST_F(FittedNames, ThatStayDifferentAnywayKeepTheirEnds)
{
    const QString a = u"Northlight_Spring_Campaign_30s_16x9_English_v04.mov"_s;
    const QString b = u"Northlight_Spring_Campaign_30s_16x9_English_v05.mov"_s;
    EXPECT_EQ(fitted(a, {b}), m_metrics.elidedText(a, Qt::ElideMiddle, 150));
    EXPECT_EQ(fitted(u"short.mov"_s, {b}), u"short.mov"_s);
}

TEST_F(FittedNames, OfWhichOneHasMoreInTheMiddleStayDifferent)
{
    const QString a = u"Northlight_Spring_Campaign_30s_16x9_English_v04.mov"_s;
    const QString b = u"Northlight_Spring_Campaign_clean_30s_16x9_English_v04.mov"_s;
    EXPECT_NE(fitted(a, {b}), fitted(b, {a}));
}

TEST_F(FittedNames, FitEvenWhereThereIsAlmostNoRoom)
{
    const QString a = u"Northlight_Spring_Campaign_S07_30s_16x9_English_v04.mov"_s;
    const QString b = u"Northlight_Spring_Campaign_S08_30s_16x9_English_v04.mov"_s;
    for (int width = 0; width < 60; width += 10)
        EXPECT_LE(m_metrics.horizontalAdvance(fitted(a, {b}, width)), std::max(width, 20));
}

TEST(NameOrder, CountsAndKnowsNoCapitals)
{
    EXPECT_TRUE(comesBefore(u"spot9.mov"_s, u"Spot10.mov"_s));
    EXPECT_FALSE(comesBefore(u"Spot10.mov"_s, u"spot9.mov"_s));
    EXPECT_TRUE(comesBefore(u"A.mov"_s, u"b.mov"_s));
    EXPECT_TRUE(comesBefore(u"a"_s, u"a2"_s));
    EXPECT_FALSE(comesBefore(u"same.mov"_s, u"same.mov"_s));
    EXPECT_FALSE(comesBefore(u"007"_s, u"7"_s) && comesBefore(u"7"_s, u"007"_s));
}

} // namespace
} // namespace vantroque
