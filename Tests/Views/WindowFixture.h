#pragma once

#include "VantroqueApp/Views/Controls/FocusRing.h"
#include "VantroqueApp/Views/Files/FileListView.h"
#include "VantroqueApp/Views/Notes/CommentsPanel.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "VantroqueApp/Views/Window/DetailPane.h"
#include "Views/InFront.h"
#include "Views/WindowScenes.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QResizeEvent>
#include <QWindow>

namespace vantroque {

/// The size that the desktop gave a window last.
class Granted : public QObject {
public:
    explicit Granted(QWindow& window) { window.installEventFilter(this); }

    QSize size() const { return m_size; }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            m_size = static_cast<QResizeEvent*>(event)->size();
        return false;
    }

private:
    QSize m_size;
};

/// A real window over a model of the test's own.
class WindowTest : public ModelTest {
protected:
    WindowTest() { Look::use(AppearanceMode::dark); }
    ~WindowTest() override
    {
        m_scene.release();
        m_window.reset();
    }

    MainWindow& open(std::vector<Profile> profiles = WindowScenes::profiles())
    {
        return open(Result<std::vector<Profile>>(std::move(profiles)));
    }
    MainWindow& open(Result<std::vector<Profile>> profiles)
    {
        m_window.reset();
        AppModel& model = start(m_scene.engine(), std::move(profiles));
        m_window = std::make_unique<MainWindow>(model);
        bringToFront(*m_window);
        return *m_window;
    }
    MainWindow& window() { return *m_window; }
    /// Until the desktop has granted the size: a window has it at once, but a window manager may
    /// still answer what was asked of it before.
    void resizeTo(const QSize& size)
    {
        if (window().size() == size)
            return;
        const Granted granted(*window().windowHandle());
        window().resize(size);
        ASSERT_TRUE(soon([&] { return granted.size() == size && window().size() == size; }));
        QApplication::processEvents(); // what is in the window is laid out
    }

    /// As a file manager does, on a place of the window.
    void drop(const QMimeData& dropped, const QPointF& place)
    {
        beginDrop(dropped, place);
        ASSERT_TRUE(soon([&] { return !window().isTaking(); }));
    }
    /// The same, without waiting until the window has the files.
    void beginDrop(const QMimeData& dropped, const QPointF& place)
    {
        // The window passes it on to what is at that place.
        QWindow* handle = window().windowHandle();
        QDragEnterEvent enter(place.toPoint(), Qt::CopyAction, &dropped, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(handle, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop(place, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(handle, &drop);
    }
    void drop(const std::vector<FileUrl>& files)
    {
        QMimeData dropped;
        QList<QUrl> urls;
        for (const FileUrl& file : files)
            urls << QUrl(file.toString());
        dropped.setUrls(urls);
        drop(dropped, window().rect().center());
    }

    /// Nothing is left to do, and the player of the selected file is there.
    bool soonIdle()
    {
        return ModelTest::soonIdle() && soon([&] {
                   return model().player() == nullptr || the<CommentsPanel>() != nullptr;
               });
    }

    template<typename Widget>
    Widget* the(const QString& accessibleName)
    {
        for (Widget* widget : window().findChildren<Widget*>())
            if (widget->accessibleName() == accessibleName)
                return widget;
        return nullptr;
    }
    template<typename Widget>
    Widget* the()
    {
        return window().findChild<Widget*>();
    }

    /// As soon as it is there: the player of a file comes after the report.
    template<typename Widget, typename... Name>
    Widget* soonThe(const Name&... accessibleName)
    {
        Widget* widget = nullptr;
        soon([&] { return (widget = the<Widget>(accessibleName...)) != nullptr; });
        return widget;
    }

    /// The words of all labels and buttons in sight.
    QStringList words()
    {
        QStringList words;
        for (const QLabel* label : window().findChildren<QLabel*>())
            if (label->isVisible())
                words << label->text();
        for (const QAbstractButton* button : window().findChildren<QAbstractButton*>())
            if (button->isVisible())
                words << button->text();
        return words;
    }
    bool shows(const QString& text) { return words().contains(text); }
    bool soonShows(const QString& text)
    {
        return soon([&] { return shows(text); });
    }
    /// What the rows of a list say.
    static QStringList rows(const QAbstractItemView& view)
    {
        QStringList rows;
        for (int i = 0; i < view.model()->rowCount(); ++i)
            rows << view.model()->index(i, 0).data(Qt::AccessibleTextRole).toString();
        return rows;
    }

    WindowScenes::SceneEngine m_scene;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace vantroque
