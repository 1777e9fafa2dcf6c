#pragma once

#include <QProxyStyle>
#include <QWidget>

namespace vantroque {

/// A desktop that wants animations, or none.
class AnimationStyle : public QProxyStyle {
public:
    explicit AnimationStyle(bool animates) : QProxyStyle(u"Fusion"_qs), m_animates(animates) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        constexpr int usual = 200;
        return hint == SH_Widget_Animation_Duration
                   ? (m_animates ? usual : 0)
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }

    static void set(QWidget& widget, bool animates)
    {
        auto* style = new AnimationStyle(animates);
        style->setParent(&widget);
        widget.setStyle(style);
    }

private:
    const bool m_animates;
};

} // namespace vantroque
