#include "VantroqueApp/Views/MessagePane.h"

#include "VantroqueApp/Views/Type.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 24;

} // namespace

MessagePane::MessagePane(QWidget* parent)
    : QScrollArea(parent),
      m_heading(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_text(Type::label({}, Type::body, QFont::Normal, Type::Ink::text2))
{
    setAccessibleName(u"Message"_s);
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* page = new QWidget;
    page->setObjectName(u"report"_s);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(8);
    layout->addStretch();
    for (QLabel* label : {m_heading, m_text}) {
        label->setAlignment(Qt::AlignHCenter);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(label, 0, Qt::AlignHCenter);
    }
    layout->addStretch();
    setWidget(page);
}

void MessagePane::show(const QString& heading, const QString& text)
{
    m_heading->setText(heading);
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    fit(*m_heading);
    fit(*m_text);
    // Where there is something to scroll, the keyboard must get there.
    const bool scrolls = widget()->sizeHint().height() > height();
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
}

void MessagePane::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    show(m_heading->text(), m_text->text());
}

/// A centred label that wraps asks for less than it needs.
void MessagePane::fit(QLabel& label) const
{
    constexpr int widest = 520;
    constexpr int air = 4;
    if (label.text().isEmpty())
        return;
    const int wanted = QFontMetrics(label.font()).horizontalAdvance(label.text()) + air;
    const int room = std::min(viewport()->width() - 2 * margin, widest);
    label.setFixedWidth(std::clamp(wanted, 1, std::max(room, 1)));
    label.setFixedHeight(label.heightForWidth(label.width()));
}

} // namespace vantroque
