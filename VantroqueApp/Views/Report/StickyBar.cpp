#include "VantroqueApp/Views/Report/StickyBar.h"

#include "Base/Text.h"
#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/Glyph.h"
#include "VantroqueApp/Views/Controls/IconButton.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace vantroque {

using namespace Qt::StringLiterals;

StickyBar::StickyBar(QWidget* parent)
    : QWidget(parent),
      m_sign(new Glyph(Verdict::pass, 16)),
      m_headline(
          new ElidedLabel(Type::text(Type::body, QFont::DemiBold), Qt::ElideRight, u"text1"_s)),
      m_count(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2)),
      m_previous(IconButton::previousProblem()),
      m_next(IconButton::nextProblem()),
      m_steps(IconButton::steps(*m_previous, *m_next))
{
    constexpr int side = 20;
    setAccessibleName(u"Summary"_s);
    setFixedHeight(high);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(side, 0, side, 0);
    layout->setSpacing(8);
    layout->addWidget(m_sign);
    layout->addWidget(m_headline, 1);
    layout->addWidget(m_count);
    layout->addWidget(m_steps);
    for (QToolButton* button : {m_previous, m_next})
        button->setFocusPolicy(Qt::NoFocus); // Tab comes to those over the list
    connect(m_previous, &QToolButton::clicked, this, [this] { Q_EMIT stepPressed(false); });
    connect(m_next, &QToolButton::clicked, this, [this] { Q_EMIT stepPressed(true); });
}

void StickyBar::show(const FileReport& report, std::size_t problems)
{
    m_problems = static_cast<qint64>(problems);
    m_sign->setVerdict(Icons::signOf(report));
    m_headline->setText(report.summaryHeadline());
    for (QWidget* each : {static_cast<QWidget*>(m_count), m_steps})
        each->setVisible(m_problems > 0);
    fit();
}

/// Beside a headline that needs the room the count is a number alone.
void StickyBar::fit()
{
    const QString number = QString::number(m_problems);
    const QString words = u"%1 problem%2"_s.arg(number, Text::plural(m_problems));
    const QMargins margins = layout()->contentsMargins();
    int others = margins.left() + margins.right() + m_sign->width() + layout()->spacing();
    if (m_problems > 0)
        others += m_count->fontMetrics().horizontalAdvance(words) + m_steps->sizeHint().width()
                  + 2 * layout()->spacing();
    m_count->setText(others + m_headline->sizeHint().width() <= width() ? words : number);
    m_count->setToolTip(words);
    m_count->setAccessibleName(words);
}

void StickyBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

void StickyBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::current().window);
    painter.fillRect(QRect(0, height() - 1, width(), 1), Theme::current().hairline);
}

} // namespace vantroque
