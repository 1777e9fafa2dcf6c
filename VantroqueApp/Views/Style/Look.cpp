#include "VantroqueApp/Views/Style/Look.h"

#include "VantroqueApp/Views/Style/HoverEnds.h"
#include "VantroqueApp/Views/Style/Popups.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QKeyEvent>
#include <QPalette>
#include <QStyleFactory>

#include <map>

// Resources of a static library are linked only when somebody asks for them.
static void takeResources()
{
    Q_INIT_RESOURCE(icons);
    Q_INIT_RESOURCE(style);
}

namespace vantroque::Look {

using namespace Qt::StringLiterals;

namespace {

bool desktopIsDark = true;

/// Return presses a button, as Space does: while a player is open, Space plays.
class ReturnPresses : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        auto* button = qobject_cast<QAbstractButton*>(watched);
        if (button == nullptr || !button->isEnabled() || key.isAutoRepeat()
            || (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter))
            return false;
        button->click();
        return true;
    }
};

QPalette palette(const Theme& theme)
{
    QPalette palette;
    palette.setColor(QPalette::Window, theme.window);
    palette.setColor(QPalette::WindowText, theme.text1);
    palette.setColor(QPalette::Base, theme.card);
    palette.setColor(QPalette::AlternateBase, theme.hover);
    palette.setColor(QPalette::Text, theme.text1);
    palette.setColor(QPalette::PlaceholderText, theme.text3);
    palette.setColor(QPalette::Button, theme.card);
    palette.setColor(QPalette::ButtonText, theme.text1);
    palette.setColor(QPalette::BrightText, theme.text1);
    palette.setColor(QPalette::Link, theme.accent);
    palette.setColor(QPalette::Highlight, theme.accent);
    palette.setColor(QPalette::HighlightedText, theme.onAccent);
    palette.setColor(QPalette::ToolTipBase, theme.card);
    palette.setColor(QPalette::ToolTipText, theme.text1);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, theme.text3);
    return palette;
}

QString styleSheet(const Theme& theme)
{
    QFile file(u":/vantroque/style.qss"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString sheet = QString::fromUtf8(file.readAll());
    const std::map<QString, QColor> roles{{u"@window"_s, theme.window},
                                          {u"@sidebar"_s, theme.sidebar},
                                          {u"@card"_s, theme.card},
                                          {u"@hairline"_s, theme.hairline},
                                          {u"@edge"_s, theme.controlEdge},
                                          {u"@text1"_s, theme.text1},
                                          {u"@text2"_s, theme.text2},
                                          {u"@text3"_s, theme.text3},
                                          {u"@accent"_s, theme.accent},
                                          {u"@onAccent"_s, theme.onAccent},
                                          {u"@selected"_s, theme.selected},
                                          {u"@hover"_s, theme.hover},
                                          {u"@pressed"_s, theme.pressed},
                                          {u"@badge"_s, theme.badge},
                                          {u"@accentDown"_s, theme.accent.darker(112)}};
    // The longer name first: one may begin with another.
    for (auto role = roles.rbegin(); role != roles.rend(); ++role)
        sheet.replace(role->first, role->second.name());
    return sheet.replace(u"@checkmark"_s,
                         theme.isDark ? u"check-dark.svg"_s : u"check-light.svg"_s);
}

} // namespace

void begin()
{
    takeResources();
    constexpr int middle = 128;
    desktopIsDark = QApplication::palette().color(QPalette::Window).lightness() < middle;
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setFont(Type::text(Type::body));
    Popups::dress(*qApp);
    qApp->installEventFilter(new HoverEnds(qApp));
    qApp->installEventFilter(new ReturnPresses(qApp));
}

void use(AppearanceMode mode)
{
    const bool dark =
        mode == AppearanceMode::dark || (mode == AppearanceMode::system && desktopIsDark);
    Theme::use(dark ? Theme::dark() : Theme::light());
    QApplication::setPalette(palette(Theme::current()));
    qApp->setStyleSheet(styleSheet(Theme::current()));
}

} // namespace vantroque::Look
