#include "VantroqueApp/Views/Profiles/GroupHeader.h"

#include "VantroqueApp/Views/Profiles/ProfileRowDelegate.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QPainter>
#include <QPushButton>

namespace vantroque {

using namespace Qt::StringLiterals;

/// The chevron, the name and the count, which are one button.
class GroupHeader::Title : public QPushButton {
public:
    explicit Title(const QString& text, QWidget* parent) : QPushButton(text, parent)
    {
        setFocusPolicy(Qt::TabFocus);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }

    void show(const ProfileRows::Count& count, bool folded)
    {
        m_count = u"%1 of %2"_s.arg(count.chosen).arg(count.all);
        m_folded = folded;
        setAccessibleName(u"%1, %2"_s.arg(text(), m_count));
        setAccessibleDescription(folded ? u"folded"_s : u"unfolded"_s);
        setToolTip(folded ? u"Unfold"_s : u"Fold"_s);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        constexpr int chevron = 12;
        constexpr int inset = 16;
        constexpr int gap = 8;
        const Theme& theme = Theme::current();
        QPainter painter(this);
        const QFont name = Type::text(Type::body, QFont::DemiBold);
        Icons::draw(painter, QRectF(inset, (height() - chevron) / 2.0, chevron, chevron),
                    m_folded ? u"chevr"_s : u"chev"_s, theme.text2);
        const int left = inset + chevron + gap;
        Type::draw(painter, rect().adjusted(left, 0, 0, 0), text(), name, theme.text1);
        const int after = left + QFontMetrics(name).horizontalAdvance(text()) + gap;
        Type::draw(painter, rect().adjusted(after, 0, 0, 0), m_count, Type::text(Type::caption),
                   theme.text2);
    }

private:
    QString m_count;
    bool m_folded = false;
};

GroupHeader::GroupHeader(ProfileRows& rows, ProfileGroup group, QWidget* parent)
    : QWidget(parent),
      m_rows(rows),
      m_group(group),
      m_title(new Title(ProfileRows::title(group), this)),
      m_all(link(u"All"_s, true)),
      m_none(link(u"None"_s, false))
{
    constexpr int rightInset = 10;
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 1, rightInset, 0);
    layout->setSpacing(4);
    layout->addWidget(m_title, 1);
    layout->addWidget(m_all);
    layout->addWidget(m_none);
    setFixedHeight(ProfileRowDelegate::headingHeight);
    connect(m_title, &QPushButton::clicked, this, &GroupHeader::pressed);
    refresh();
}

QPushButton* GroupHeader::link(const QString& text, bool on)
{
    auto* button = new QPushButton(text, this);
    button->setProperty("kind", u"link"_s);
    button->setFont(Type::text(Type::caption, QFont::Medium));
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(u"%1 of %2"_s.arg(text, ProfileRows::title(m_group)));
    connect(button, &QPushButton::clicked, this, [this, on] { m_rows.choose(m_group, on); });
    return button;
}

void GroupHeader::refresh()
{
    m_title->show(m_rows.count(m_group), m_rows.isFolded(m_group) && !m_rows.isSearching());
    m_all->setEnabled(m_rows.canChoose(m_group, true));
    m_none->setEnabled(m_rows.canChoose(m_group, false));
    const QString which = m_rows.isSearching() ? u" of those found"_s : QString();
    m_all->setToolTip(u"Check all%1 in this group"_s.arg(which));
    m_none->setToolTip(u"Check none%1 in this group"_s.arg(which));
}

void GroupHeader::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::current().card);
    painter.fillRect(QRect(0, 0, width(), 1), Theme::current().hairline);
}

} // namespace vantroque
