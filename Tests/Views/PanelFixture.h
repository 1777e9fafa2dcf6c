#pragma once

#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Notes/NoteField.h"
#include "VantroqueApp/Views/Notes/TimedList.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "Views/InFront.h"
#include "Views/PaintedWords.h"
#include "Views/WindowScenes.h"

#include <QAbstractButton>
#include <QApplication>

namespace vantroque {

/// The comments beside the player of an analysed file, in a window of their own.
class PanelTest : public ModelTest {
protected:
    PanelTest() { Look::use(AppearanceMode::dark); }
    ~PanelTest() override
    {
        m_panel.reset();
        m_scene.release();
    }

    CommentsPanel& open(const std::string& name = "fail.mp4")
    {
        start(m_scene.engine(), WindowScenes::profiles());
        model().files().add({anyFile(name)});
        EXPECT_TRUE(soonIdle());
        return openPanel();
    }
    /// Over the list as it is.
    CommentsPanel& openPanel()
    {
        model().openPlayer().syncPlayer();
        EXPECT_NE(model().player(), nullptr);
        EXPECT_TRUE(soon([this] { return notebook().isOpen(); }));
        m_panel = std::make_unique<CommentsPanel>(player(), model().noteAuthor());
        m_panel->resize(480, 420);
        bringToFront(*m_panel);
        return *m_panel;
    }
    CommentsPanel& panel() { return *m_panel; }
    PlayerController& player() { return *model().player(); }
    Notebook& notebook() { return player().notebook(); }

    /// Writes a note at a frame, as an operator does.
    void write(std::int64_t frame, const QString& text)
    {
        player().seek(frame);
        const auto count = notebook().comments().size();
        QTest::mouseClick(field().viewport(), Qt::LeftButton);
        QTest::keyClicks(&field(), text);
        QTest::keyClick(&field(), Qt::Key_Return, Qt::ControlModifier);
        ASSERT_TRUE(soon([&] { return notebook().comments().size() == count + 1; }));
    }
    NoteField& field() { return *m_panel->findChild<NoteField*>(); }
    TimedList& list(const QString& name)
    {
        for (auto* list : m_panel->findChildren<TimedList*>())
            if (list->accessibleName() == name)
                return *list;
        throw std::logic_error("no such list");
    }
    TimedList& notes() { return list(u"Notes"_s); }
    TimedList& detected() { return list(u"Detected"_s); }
    static QStringList rows(const TimedList& list)
    {
        QStringList rows;
        for (int i = 0; i < list.rows().rowCount(); ++i)
            rows << list.rows().index(i).data(Qt::AccessibleTextRole).toString();
        return rows;
    }
    static void click(TimedList& list, int row)
    {
        const QRect place = list.visualRect(list.rows().index(row));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.topLeft() + QPoint(120, 12));
    }
    /// By its words, or by its help.
    QAbstractButton& button(const QString& name)
    {
        for (auto* button : m_panel->findChildren<QAbstractButton*>())
            if (button->text() == name || button->toolTip() == name)
                return *button;
        throw std::logic_error("no such button");
    }
    QStringList words() { return paintedWords(*m_panel); }

    WindowScenes::SceneEngine m_scene;
    std::unique_ptr<CommentsPanel> m_panel;
};

} // namespace vantroque
