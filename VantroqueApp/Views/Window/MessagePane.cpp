#include "VantroqueApp/Views/Window/MessagePane.h"

#include "VantroqueApp/Views/Controls/SignChip.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

MessagePane::MessagePane(QWidget* parent)
    : QScrollArea(parent),
      m_sign(new SignChip),
      m_heading(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_text(Type::label({}, Type::body, QFont::Normal, Type::Ink::text2))
{
    setAccessibleName(u"Message"_s);
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* page = new QWidget;
    page->setObjectName(u"report"_s); // for its ground
    auto* layout = new QVBoxLayout(page);
    layout->setSpacing(8);
    layout->addStretch();
    layout->addWidget(m_sign, 0, Qt::AlignHCenter);
    layout->addSpacing(8);
    for (QLabel* label : {m_heading, m_text}) {
        label->setAlignment(Qt::AlignHCenter);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(label);
    }
    layout->addStretch();
    setWidget(page);
}

void MessagePane::show(const QString& icon, const QString& heading, const QString& text)
{
    m_sign->setIcon(icon, heading);
    m_sign->setVisible(!icon.isEmpty());
    m_heading->setText(heading);
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    fit();
}

void MessagePane::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fit();
}

/// Long lines are hard to read.
void MessagePane::fit()
{
    constexpr int margin = 24;
    constexpr int widest = 600;
    const int side = std::max((viewport()->width() - widest) / 2, margin);
    widget()->layout()->setContentsMargins(side, margin, side, margin);
    // Where there is something to scroll, the keyboard must get there.
    const bool scrolls = widget()->heightForWidth(viewport()->width()) > height();
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
}

} // namespace vantroque
