#include "VantroqueApp/Views/Profiles/SearchField.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

SearchField::SearchField(const QString& name, QWidget* parent) : QLineEdit(parent)
{
    constexpr int fieldHeight = 30;
    constexpr int lens = 25;
    constexpr int digits = 32;
    setObjectName(u"search"_s);
    setFont(Type::text(Type::body));
    setPlaceholderText(name);
    setAccessibleName(name);
    setFixedHeight(fieldHeight);
    setTextMargins(lens, 0, digits, 0);
}

void SearchField::setCount(int count)
{
    m_count = count;
    setAccessibleDescription(count == 1 ? u"1 platform"_s : u"%1 platforms"_s.arg(count));
    update();
}

void SearchField::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    constexpr int inset = 9;
    constexpr int icon = 16;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    Icons::draw(painter, QRectF(inset, (height() - icon) / 2.0, icon, icon), u"zoom"_s,
                theme.text2);
    Type::draw(painter, rect().adjusted(0, 0, -inset, 0), QString::number(m_count),
               Type::text(Type::badge), theme.text3, Qt::AlignRight | Qt::AlignVCenter);
}

} // namespace vantroque
