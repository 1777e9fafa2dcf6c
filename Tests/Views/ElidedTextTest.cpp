#include "VantroqueApp/Views/Report/ReportRows.h"
#include "VantroqueApp/Views/Report/ReportSections.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "Views/PaintedWords.h"
#include "Views/WindowFixture.h"

#include <QHelpEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QToolTip>
#include <QVariantAnimation>

// What a window has no room for is told under the pointer.

namespace vantroque {
namespace {

constexpr char16_t ellipsis = u'…';

QString helpAt(QWidget& root, const QPoint& place)
{
    QWidget* below = root.childAt(place);
    QWidget& widget = below != nullptr ? *below : root;
    QToolTip::showText({}, u"nothing"_s); // what was shown before goes only after a while
    QHelpEvent event(QEvent::ToolTip, widget.mapFrom(&root, place), root.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    return QToolTip::text();
}

bool tellsWhole(QString help, const QString& shortened)
{
    QStringList parts;
    for (const QString& part : shortened.split(ellipsis))
        parts << QRegularExpression::escape(part);
    return help.remove(ellipsis).contains(
        QRegularExpression(parts.join(u".+"_s), QRegularExpression::DotMatchesEverythingOption));
}

class ElidedText : public WindowTest {
protected:
    /// The shortened texts in sight of which there is no more under the pointer.
    QStringList untold(QWidget& root)
    {
        QApplication::processEvents(); // what came last is laid out
        QStringList untold;
        m_found.clear();
        for (const auto& [text, place] : paintedTexts(root)) {
            // A row at the foot may be cut off above its text.
            if (!text.contains(ellipsis) || !root.rect().contains(place))
                continue;
            m_found << text;
            if (const QString help = helpAt(root, place + QPoint(2, -2)); !tellsWhole(help, text))
                untold << text + u" -> "_s + help;
        }
        return untold;
    }

    /// With many platforms of long names, in the smallest size.
    void openSmall()
    {
        auto profiles = WindowScenes::profiles(40);
        for (Profile& profile : profiles)
            profile.name += u" of the Northern Isles and of all Western Approaches to Them"_s;
        open(profiles);
        resizeTo(window().minimumSize());
    }
    /// With a file of a long name; what it begins with says what becomes of it.
    void openWith(const std::string& name)
    {
        openSmall();
        drop({anyFile(name + " " + std::string(200, 'n') + ".mp4")});
    }
    void openAllRows()
    {
        auto& sections = *the<ReportSections>();
        const auto& rows = static_cast<const ReportRows&>(*sections.model());
        for (const bool checks : {false, true})
            for (int row = rows.rowCount() - 1; row >= 0; --row)
                if (const auto index = rows.index(row);
                    (rows.check(index) != nullptr) == checks && !rows.isOpen(index))
                    Q_EMIT sections.clicked(index);
    }

    QStringList m_found; ///< All of them.
};

TEST_F(ElidedText, OfAReportIsTold)
{
    openWith("long");
    ASSERT_TRUE(soonIdle());
    openAllRows();
    QWidget& page = *the<ReportView>()->widget();
    const auto& opening = *the<ReportSections>()->findChild<QVariantAnimation*>();
    ASSERT_TRUE(soon([&] { return opening.state() == QAbstractAnimation::Stopped; }));
    QApplication::processEvents();
    EXPECT_EQ(untold(window()), QStringList());
    EXPECT_EQ(untold(page), QStringList());
    EXPECT_GT(m_found.size(), 25) << "most names and statuses";
}

TEST_F(ElidedText, OfTheListIsTold)
{
    openWith("fail");
    drop({anyFile("bad" + std::string(200, 'b') + ".mp4"),
          anyFile("warn" + std::string(200, 'w') + ".mp4")});
    ASSERT_TRUE(soonIdle());
    for (const FileAnalysis& file : model().files().analyses()) {
        model().files().select(file.id);
        EXPECT_EQ(untold(window()), QStringList());
        EXPECT_GE(m_found.size(), 4) << "three names and a status line";
    }
}

TEST_F(ElidedText, OfAFileThatIsAnalysedIsTold)
{
    for (const char* state : {"run", "run-probing", "run-surround", "run-many", "run-text"}) {
        openWith(state);
        ASSERT_TRUE(soon(
            [&] { return model().queue().progress(model().files().analyses()[0].id) != nullptr; }));
        drop({anyFile("wait" + std::string(200, 'w') + ".mp4")});
        EXPECT_EQ(untold(window()), QStringList()) << state;
        EXPECT_GE(m_found.size(), 3) << m_found.join(u'\n').toStdString();
        m_scene.release();
        ASSERT_TRUE(soonIdle());
        m_scene.hold();
    }
}

TEST_F(ElidedText, OfAMessageIsTold)
{
    openWith("ok");
    ASSERT_TRUE(soonIdle());
    model().exports().setExportMessage(u"Saved 1 report to "_s + QString(300, u'm') + u".txt"_s);
    EXPECT_EQ(untold(window()), QStringList());
    EXPECT_GE(m_found.size(), 2);
}

TEST_F(ElidedText, OfMenusIsTold)
{
    openWith("ok");
    ASSERT_TRUE(soonIdle());
    for (QMenu* menu : window().findChildren<QMenu*>()) {
        menu->popup(QPoint());
        EXPECT_EQ(untold(*menu), QStringList()) << menu->title().toStdString();
        menu->hide();
    }
}

TEST_F(ElidedText, ShowsMarkupInAFilesNameAsItIs)
{
    open();
    drop({anyFile("<b>spot<br>.mp4")});
    ASSERT_TRUE(soonIdle());
    QWidget& rows = *the<FileListView>()->viewport();
    const QString help = helpAt(window(), rows.mapTo(&window(), QPoint(40, 20)));
    ASSERT_THAT(help.toStdString(), testing::HasSubstr("<b>spot<br>.mp4"));
    const QLabel* tip = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->inherits("QTipLabel"))
            tip = static_cast<QLabel*>(widget);
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(tip->textFormat(), Qt::PlainText);
}

TEST_F(ElidedText, WithoutHelpIsFound)
{
    QLabel label(u"a…b"_s);
    EXPECT_EQ(untold(label).size(), 1);
    label.setToolTip(u"a…b"_s);
    EXPECT_EQ(untold(label).size(), 1);
    label.setToolTip(u"a and b"_s);
    EXPECT_EQ(untold(label).size(), 0);
}

} // namespace
} // namespace vantroque
