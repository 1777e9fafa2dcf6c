#include "VantroqueApp/Views/MessagePane.h"

#include "VantroqueApp/Views/Type.h"

#include <QLabel>
#include <QVBoxLayout>

namespace vantroque {

MessagePane::MessagePane(QWidget* parent)
    : QWidget(parent),
      m_heading(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_text(Type::label({}, Type::body, QFont::Normal, Type::Ink::text2))
{
    constexpr int textWidth = 520;
    for (QLabel* label : {m_heading, m_text}) {
        label->setAlignment(Qt::AlignHCenter);
        label->setWordWrap(true);
        label->setMinimumWidth(280);
        label->setMaximumWidth(textWidth);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->setSpacing(8);
    layout->addStretch();
    layout->addWidget(m_heading, 0, Qt::AlignHCenter);
    layout->addWidget(m_text, 0, Qt::AlignHCenter);
    layout->addStretch();
}

void MessagePane::show(const QString& heading, const QString& text)
{
    m_heading->setText(heading);
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    // A centred label is only as wide as it asks for.
    const int wanted = QFontMetrics(m_text->font()).horizontalAdvance(text) + 4;
    m_text->setMinimumWidth(std::min(wanted, m_text->maximumWidth()));
    m_heading->setMinimumWidth(std::min(
        QFontMetrics(m_heading->font()).horizontalAdvance(heading) + 4, m_heading->maximumWidth()));
}

} // namespace vantroque
