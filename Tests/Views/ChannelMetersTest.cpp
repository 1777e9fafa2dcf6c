#include "VantroqueApp/Views/Instruments/ChannelMeters.h"
#include "VantroqueApp/Views/Instruments/ChannelReadings.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

class ManyChannels : public testing::Test {
protected:
    ManyChannels()
    {
        m_meters.resize(400, 100);
        m_meters.setAttribute(Qt::WA_DontShowOnScreen);
        m_meters.show();
    }

    void fill(int count)
    {
        std::vector<ChannelMeters::Channel> channels;
        for (int i = 0; i < count; ++i)
            channels.push_back({.name = QString::number(i + 1), .rms = -20, .peak = -10});
        m_meters.setChannels(std::move(channels));
    }
    int scrolled() { return m_meters.findChild<QScrollBar*>()->value(); }
    bool scrolls() { return m_meters.findChild<QScrollBar*>()->isVisible(); }
    bool takesWheel(int turn)
    {
        QWheelEvent event({100, 60}, m_meters.mapToGlobal(QPointF(100, 60)), {}, {0, turn},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_meters, &event);
        return event.isAccepted();
    }

    ChannelMeters m_meters{ChannelMeters::Size::report};
};

TEST_F(ManyChannels, AreAllInSightUpToSixteen)
{
    fill(16);
    EXPECT_FALSE(scrolls());
    EXPECT_EQ(m_meters.height(), m_meters.heightOf(16));
    EXPECT_EQ(m_meters.focusPolicy(), Qt::NoFocus);
    EXPECT_FALSE(takesWheel(-120));
}

TEST_F(ManyChannels, ScrollByKeyboardBeyondThat)
{
    fill(24);
    EXPECT_TRUE(scrolls());
    EXPECT_EQ(m_meters.height(), m_meters.heightOf(16));
    EXPECT_NE(m_meters.focusPolicy() & Qt::TabFocus, 0);
    const QImage top = m_meters.grab().toImage();
    QTest::keyClick(&m_meters, Qt::Key_Down);
    EXPECT_EQ(scrolled(), 14);
    EXPECT_NE(m_meters.grab().toImage(), top);
    QTest::keyClick(&m_meters, Qt::Key_End);
    EXPECT_EQ(scrolled(), 8 * 14);
    QTest::keyClick(&m_meters, Qt::Key_Home);
    EXPECT_EQ(scrolled(), 0);
}

TEST_F(ManyChannels, LeaveTheWheelToThePageAtTheirEnd)
{
    fill(24);
    EXPECT_FALSE(takesWheel(120));
    EXPECT_TRUE(takesWheel(-120));
    EXPECT_EQ(scrolled(), 14);
    QTest::keyClick(&m_meters, Qt::Key_End);
    EXPECT_FALSE(takesWheel(-120));
}

TEST(ChannelReadings, OfAStoredHistoryThatLacksPeaksHaveNone)
{
    MediaInfo media;
    media.audio.emplace();
    media.audio->channels = 2;
    media.signal.emplace();
    media.signal->channelSeries = ChannelLevelSeries{10, {{-20, -18}, {-30, -28}}, {{-6}}};
    const auto loudest = ChannelReadings::loudest(media);
    ASSERT_EQ(loudest.size(), 2U);
    EXPECT_EQ(loudest[0].peak, -6);
    EXPECT_EQ(loudest[1].rms, -28);
    EXPECT_EQ(loudest[1].peak, ChannelMeters::silence);
    EXPECT_EQ(ChannelReadings::at(media, 0.15)[0].peak, ChannelMeters::silence);
}

} // namespace
} // namespace vantroque
