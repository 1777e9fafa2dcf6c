#include "VantroqueApp/Views/Analyzing/LiveInstruments.h"

#include "VantroqueApp/Views/Style/Theme.h"

#include <QPixmap>
#include <QTest>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

/// One luma code all over, in video range and without colour.
LiveInstruments::Frame grey(std::uint8_t code, int width = 640, int height = 360)
{
    const auto size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return std::make_shared<const ScopeFrame>(
        ScopeFrame{.width = width,
                   .height = height,
                   .y = std::vector<std::uint8_t>(size, code),
                   .cb = std::vector<std::uint8_t>(size, 128),
                   .cr = std::vector<std::uint8_t>(size, 128)});
}

constexpr std::uint8_t white = 235;
constexpr std::uint8_t black = 16;

class LivePicture : public testing::Test {
protected:
    LivePicture()
    {
        m_instruments.resize(1112, LiveInstruments::heightFor(1112));
        m_instruments.setAttribute(Qt::WA_DontShowOnScreen);
        static_cast<QWidget&>(m_instruments).show();
    }

    QColor at(int x, int y) { return m_instruments.grab().toImage().pixelColor(x, y); }
    QColor middle() { return at(300, 189); }
    bool soonMiddle(const QColor& color)
    {
        return QTest::qWaitFor([&] { return middle() == color; }, 30'000);
    }

    LiveInstruments m_instruments;
};

TEST_F(LivePicture, IsDrawnBehindTheBackOfTheWindow)
{
    m_instruments.show(grey(white));
    EXPECT_EQ(middle(), Theme::dark().stage);
    EXPECT_TRUE(soonMiddle(Qt::white));
}

TEST_F(LivePicture, FillsItsPlaceOrStandsBetweenBars)
{
    m_instruments.show(grey(white));
    ASSERT_TRUE(soonMiddle(Qt::white));
    EXPECT_EQ(at(20, 189), QColor(Qt::white));
    m_instruments.show(grey(black, 360, 640));
    ASSERT_TRUE(soonMiddle(Qt::black));
    EXPECT_EQ(at(20, 189), Theme::dark().stage);
}

TEST_F(LivePicture, EndsAtTheLastOfManyFrames)
{
    for (int i = 0; i < 50; ++i)
        m_instruments.show(grey(static_cast<std::uint8_t>(50 + i)));
    m_instruments.show(grey(white));
    EXPECT_TRUE(soonMiddle(Qt::white));
}

TEST_F(LivePicture, OfTheFileBeforeIsNotShown)
{
    m_instruments.show(grey(white));
    m_instruments.show(nullptr);
    m_instruments.show(grey(black));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            EXPECT_NE(middle(), QColor(Qt::white));
            return middle() == QColor(Qt::black);
        },
        30'000));
    m_instruments.show(nullptr);
    EXPECT_EQ(middle(), Theme::dark().stage);
}

TEST_F(LivePicture, HasWaveformVectorscopeAndParadePixelByPixel)
{
    const int left = m_instruments.width() - 424 + 14;
    const auto isTrace = [&](int x, int y) { return at(x, y).lightness() > 150; };
    m_instruments.show(grey(white));
    ASSERT_TRUE(soonMiddle(Qt::white));
    constexpr int rowOf100 = 34 + 11; // of the scale from 110 to -10 on 128 rows
    EXPECT_TRUE(isTrace(left + 128, rowOf100));
    EXPECT_FALSE(isTrace(left + 128, rowOf100 + 30));
    EXPECT_TRUE(isTrace(left + 256 + 12 + 64, 34 + 64)) << "no colour is the middle";
    EXPECT_TRUE(isTrace(left + 64, rowOf100 + 172)) << "red of the parade";
    EXPECT_TRUE(isTrace(left + 320, rowOf100 + 172)) << "blue of the parade";
}

TEST_F(LivePicture, ThatCannotBeDrawnLeavesThePlaceEmpty)
{
    auto broken = std::make_shared<ScopeFrame>(*grey(white));
    broken->cr.clear();
    m_instruments.show(broken);
    m_instruments.resize(900, 300);
    m_instruments.show(grey(white));
    EXPECT_TRUE(soonMiddle(Qt::white));
}

} // namespace
} // namespace vantroque
