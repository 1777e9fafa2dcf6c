#include "VantroqueApp/Views/Controls/DropWell.h"

#include "VantroqueApp/Views/Controls/Glyph.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

DropWell::DropWell(int radius, int margin, QWidget* parent)
    : QWidget(parent), m_radius(radius), m_margin(margin)
{
}

DropWell* DropWell::large(bool toolMissing, const QString& problem, QWidget* parent)
{
    auto* well = new DropWell(14, 24, parent);
    well->setAccessibleName(u"Drop video files here"_s);
    auto* layout = new QVBoxLayout(well);
    layout->setSpacing(0);
    layout->addStretch();
    layout->addWidget(Glyph::chip(u"drop"_s, well), 0, Qt::AlignHCenter);
    layout->addSpacing(20);
    layout->addWidget(
        Type::label(u"Drop video files here"_s, Type::headline, QFont::DemiBold, Type::Ink::text1),
        0, Qt::AlignHCenter);
    layout->addSpacing(6);
    layout->addWidget(Type::label(u"Scored against the platforms you pick."_s, Type::body,
                                  QFont::Normal, Type::Ink::text2),
                      0, Qt::AlignHCenter);
    layout->addSpacing(20);
    auto* choose = new QPushButton(u"Choose Files"_s);
    choose->setProperty("kind", u"primary"_s);
    choose->setFont(Type::text(Type::body, QFont::DemiBold));
    choose->setAccessibleName(choose->text());
    choose->setAutoDefault(true);
    well->setFocusProxy(choose);
    connect(choose, &QPushButton::clicked, well, &DropWell::pressed);
    layout->addWidget(choose, 0, Qt::AlignHCenter);
    well->addGuideLine(*layout);
    if (toolMissing)
        well->addWarning(*layout, u"ffmpeg was not found. Install it with: brew install ffmpeg"_s,
                         u"On Debian and Ubuntu: sudo apt install ffmpeg"_s);
    if (!problem.isEmpty())
        well->addWarning(*layout, problem, {});
    layout->addStretch();
    return well;
}

void DropWell::addGuideLine(QVBoxLayout& layout)
{
    m_guide = new QWidget(this);
    auto* read = new QPushButton(u"Read the guide."_s, m_guide);
    read->setProperty("kind", u"link"_s);
    read->setFont(Type::text(Type::body, QFont::Medium));
    read->setAccessibleName(u"New here? Read the guide"_s);
    read->setToolTip(u"From the first start to the first verdict  (F1)"_s);
    read->setAutoDefault(true);
    connect(read, &QPushButton::clicked, this, &DropWell::guideWanted);
    auto* line = new QHBoxLayout(m_guide);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(
        Type::label(u"New here?"_s, Type::body, QFont::Normal, Type::Ink::text2, m_guide));
    line->addWidget(read);
    layout.addSpacing(16);
    layout.addWidget(m_guide, 0, Qt::AlignHCenter);
}

DropWell* DropWell::small(QWidget* parent)
{
    auto* well = new DropWell(8, 0, parent);
    well->setAccessibleName(u"Drop more files"_s);
    well->setToolTip(u"Drop files here, or press to choose them"_s);
    well->setFixedHeight(44);
    well->setFocusPolicy(Qt::TabFocus);
    well->setCursor(Qt::PointingHandCursor);
    auto* layout = new QHBoxLayout(well);
    layout->setContentsMargins(8, 0, 8, 0);
    layout->setSpacing(8);
    layout->addStretch();
    layout->addWidget(new Glyph(u"drop"_s, 16, well));
    layout->addWidget(
        Type::label(u"Drop more files"_s, Type::body, QFont::Normal, Type::Ink::text2));
    layout->addStretch();
    return well;
}

void DropWell::addWarning(QVBoxLayout& layout, const QString& text, const QString& hint)
{
    constexpr int maxWidth = 620;
    layout.addSpacing(20);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch();
    row->addWidget(new Glyph(Verdict::warn, 16, this), 0, Qt::AlignTop);
    auto* line = Type::label(text, Type::body, QFont::Normal, Type::Ink::text1);
    const int width = QFontMetrics(line->font()).horizontalAdvance(text) + 2;
    line->setWordWrap(width > maxWidth);
    if (line->wordWrap())
        line->setFixedWidth(maxWidth);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row->addWidget(line);
    row->addStretch();
    layout.addLayout(row);
    if (hint.isEmpty())
        return;
    layout.addSpacing(4);
    auto* more = Type::label(hint, Type::caption, QFont::Normal, Type::Ink::text2);
    more->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout.addWidget(more, 0, Qt::AlignHCenter);
}

void DropWell::setInviting(bool inviting)
{
    m_inviting = inviting;
    update();
}

void DropWell::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box =
        QRectF(rect()).adjusted(m_margin + 1, m_margin + 1, -m_margin - 1, -m_margin - 1);
    QPen pen(theme.dashes, 1);
    pen.setDashPattern({3, 2.5});
    if (m_inviting) {
        constexpr float veil = 0.08F;
        QColor fill = theme.accent;
        fill.setAlphaF(veil);
        painter.setBrush(fill);
        pen = QPen(theme.accent, 2);
    }
    painter.setPen(pen);
    painter.drawRoundedRect(box, m_radius, m_radius);
}

void DropWell::mouseReleaseEvent(QMouseEvent* event)
{
    if (focusPolicy() != Qt::NoFocus && event->button() == Qt::LeftButton
        && rect().contains(event->pos()))
        Q_EMIT pressed();
}

void DropWell::keyPressEvent(QKeyEvent* event)
{
    if (focusPolicy() != Qt::NoFocus
        && (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return))
        Q_EMIT pressed();
    else
        QWidget::keyPressEvent(event);
}

} // namespace vantroque
