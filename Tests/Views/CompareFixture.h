#pragma once

#include "Model/CompareFixture.h"
#include "VantroqueApp/Views/Compare/CompareBar.h"
#include "VantroqueApp/Views/Compare/CompareCaption.h"
#include "VantroqueApp/Views/Compare/CompareGrid.h"
#include "VantroqueApp/Views/Compare/CompareTileView.h"
#include "VantroqueApp/Views/Compare/CompareView.h"
#include "VantroqueApp/Views/Compare/PairPicture.h"
#include "VantroqueApp/Views/Controls/Scrubber.h"
#include "VantroqueApp/Views/Style/Look.h"
#include "Views/InFront.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>

#include <stdexcept>

namespace vantroque {

/// Versions whose engines and clock are in the hands of the test, in a window of their own.
class CompareViewTest : public CompareTest {
protected:
    CompareViewTest() { Look::use(AppearanceMode::dark); }
    ~CompareViewTest() override { m_view.reset(); }

    static VideoSummary shaped(int width, int height, double seconds = 4)
    {
        VideoSummary summary = video(seconds);
        summary.width = width;
        summary.height = height;
        return summary;
    }
    CompareView& show(const std::vector<VideoSummary>& videos, QSize size = {1440, 852})
    {
        m_view.reset();
        open(videos);
        return show(size);
    }
    CompareView& show(QSize size = {1440, 852})
    {
        m_view = std::make_unique<CompareView>(compare());
        QObject::connect(m_view.get(), &CompareView::left, [this] { ++m_left; });
        m_view->resize(size);
        bringToFront(*m_view);
        return *m_view;
    }
    CompareView& view() { return *m_view; }
    ComparePair& pair() { return m_view->pair(); }
    PairPicture& together() { return *m_view->findChild<PairPicture*>(); }
    CompareGrid& grid() { return *m_view->findChild<CompareGrid*>(); }
    CompareTileView& tileView(std::size_t number) { return *grid().tiles().at(number); }

    /// What is in sight and has that name; the caption's own if one is given.
    template<typename Widget = QWidget>
    Widget& named(const QString& name, QWidget* in = nullptr)
    {
        for (Widget* widget : (in != nullptr ? in : m_view.get())->findChildren<Widget*>())
            if (widget->accessibleName() == name && widget->isVisible())
                return *widget;
        throw std::logic_error("nothing has the name " + name.toStdString());
    }
    static QStringList words(const QWidget& in)
    {
        QStringList words;
        for (const QLabel* label : in.findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty())
                words << label->text();
        return words;
    }
    void click(const QString& name, QWidget* in = nullptr)
    {
        QTest::mouseClick(&named<QAbstractButton>(name, in), Qt::LeftButton);
    }
    /// To whatever has the keyboard.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        ASSERT_NE(m_view->focusWidget(), nullptr);
        QTest::keyClick(m_view->focusWidget(), key, modifiers);
    }

    std::unique_ptr<CompareView> m_view;
    int m_left = 0; ///< How often it was left.
};

} // namespace vantroque
