#include "VantroqueApp/Views/Report/MeasurementCards.h"

#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QGridLayout>
#include <QHelpEvent>
#include <QPainter>

namespace vantroque {

using namespace Qt::StringLiterals;

class MeasurementCards::CardView : public QWidget {
public:
    explicit CardView(QWidget* parent) : QWidget(parent) { fit(); }

    void show(const MeasurementCard& card)
    {
        m_card = card;
        QString words = u"%1: %2 %3, %4"_s.arg(card.title, card.value, card.unit, card.caption);
        if (card.verdict)
            words += u", "_s + Icons::word(*card.verdict);
        setAccessibleName(words);
        setToolTip(card.caption);
        fit();
        update();
    }

protected:
    void resizeEvent(QResizeEvent*) override { fit(); }

    void paintEvent(QPaintEvent*) override
    {
        const Theme& theme = Theme::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(theme.hairline);
        painter.setBrush(theme.card);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
        const QRect text = rect().adjusted(padding, 0, -padding, 0);
        Type::draw(painter, QRect(text.left(), 10, text.width() - 18, 16), m_card.title,
                   Type::text(Type::caption), theme.text2);
        const QFont large = Type::text(Type::headline, QFont::DemiBold);
        Type::draw(painter, QRect(text.left(), 28, text.width(), 26), m_card.value, large,
                   theme.text1);
        const int valueEnd = QFontMetrics(large).horizontalAdvance(m_card.value) + 6;
        Type::draw(painter, QRect(text.left() + valueEnd, 30, text.width() - valueEnd, 26),
                   m_card.unit, Type::text(Type::caption), theme.text2);
        painter.setFont(Type::text(Type::caption));
        painter.setPen(theme.text2);
        painter.drawText(captionPlace(), Qt::TextWordWrap, m_card.caption);
        if (m_card.verdict)
            Icons::drawVerdict(painter, QRectF(width() - padding - 14, 11, 14, 14),
                               *m_card.verdict);
    }

private:
    static constexpr int padding = 12;
    static constexpr int captionTop = 55;
    static constexpr int lineHeight = 16;

    QRect captionPlace() const
    {
        return {padding, captionTop, width() - 2 * padding, height() - captionTop};
    }
    /// A caption that is too long for its card takes a second line.
    void fit()
    {
        const QFontMetrics metrics(Type::text(Type::caption));
        const QRect needed = metrics.boundingRect(captionPlace(), Qt::TextWordWrap, m_card.caption);
        setMinimumHeight(captionTop + (needed.height() > metrics.height() ? 2 : 1) * lineHeight
                         + padding - 3);
    }

    MeasurementCard m_card;
};

MeasurementCards::MeasurementCards(QWidget* parent) : QWidget(parent)
{
    constexpr int most = 4;
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(8);
    for (int i = 0; i < most; ++i) {
        m_cards.push_back(new CardView(this));
        grid->addWidget(m_cards.back(), i / 2, i % 2);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
}

void MeasurementCards::show(const FileReport& report, const MediaInfo* media,
                            const std::vector<Profile>& profiles)
{
    const auto cards = MeasurementCard::of(report, media, profiles);
    for (std::size_t i = 0; i < m_cards.size(); ++i) {
        m_cards[i]->setVisible(i < cards.size());
        if (i < cards.size())
            m_cards[i]->show(cards[i]);
    }
    setVisible(!cards.empty());
}

} // namespace vantroque
