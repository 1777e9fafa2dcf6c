#pragma once

#include "Model/PlayerFixture.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
#include "VantroqueApp/Views/Player/TimecodeField.h"
#include "VantroqueApp/Views/Player/Timeline.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "Views/InFront.h"

#include <QApplication>

#include <stdexcept>

namespace vantroque {

/// The pane of a player whose engine and clock are in the hands of the test, in a window of its
/// own.
class PaneTest : public PlayerTest {
protected:
    PaneTest() { Look::use(AppearanceMode::dark); }
    ~PaneTest() override { closePane(); }

    static SignalEvent finding(std::int64_t frame, std::int64_t end, const QString& text)
    {
        return {.id = u"e"_s + QString::number(frame),
                .kind = SignalEvent::Kind::levels,
                .frame = frame,
                .endFrame = end,
                .verdict = Verdict::fail,
                .text = text,
                .box = NormalizedRect{0.1, 0.2, 0.3, 0.4}};
    }
    PlayerPane& openPane(std::vector<SignalEvent> events = {}, QSize size = {720, 852})
    {
        auto report = std::make_shared<FileReport>();
        report->events = std::move(events);
        return showPane(open(playedFile(), m_film.maker(), report), size);
    }
    PlayerPane& showPane(PlayerController& player, QSize size = {720, 852})
    {
        m_pane = std::make_unique<PlayerPane>(player, m_settings);
        m_pane->resize(size);
        bringToFront(*m_pane);
        m_pane->picture().setFocus();
        return *m_pane;
    }
    void closePane() { m_pane.reset(); }

    PlayerPane& pane() { return *m_pane; }
    PictureView& picture() { return m_pane->picture(); }
    Timeline& timeline() { return *m_pane->findChild<Timeline*>(); }
    TimecodeField& timecodeField()
    {
        for (QWidget* widget : m_pane->findChildren<QWidget*>())
            if (auto* field = dynamic_cast<TimecodeField*>(widget))
                return *field;
        throw std::logic_error("a pane without a field for time codes");
    }
    /// To whatever has the keyboard.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        ASSERT_NE(m_pane->focusWidget(), nullptr);
        QTest::keyClick(m_pane->focusWidget(), key, modifiers);
    }
    /// In the middle of the span of a finding.
    QPoint placeOf(std::int64_t frame)
    {
        const TimelineMarks& marks = timeline().marks();
        return QPointF(marks.placeOf(frame), marks.line.center().y()).toPoint();
    }

    std::unique_ptr<PlayerPane> m_pane;
};

} // namespace vantroque
