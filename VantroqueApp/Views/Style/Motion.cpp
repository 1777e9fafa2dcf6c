#include "VantroqueApp/Views/Style/Motion.h"

#include <QStyle>
#include <QWidget>

namespace vantroque::Motion {

int duration(const QWidget& widget, int milliseconds)
{
    return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0
               ? milliseconds
               : 0;
}

} // namespace vantroque::Motion
