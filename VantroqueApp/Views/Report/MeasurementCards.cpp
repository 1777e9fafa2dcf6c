#include "VantroqueApp/Views/Report/MeasurementCards.h"

#include "Base/Timecode.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 12;
constexpr int rowHeight = 32;
constexpr int cardHeight = 72;
constexpr int captionTop = 49; ///< On a card of its own.
constexpr int linkHeight = 26;
constexpr int linkRoom = linkHeight + 6;
constexpr int sign = 14;
constexpr int unitGap = 4; ///< Between a value and its unit.

QFont valueFont()
{
    return Type::text(Type::ring, QFont::DemiBold);
}

} // namespace

/// Pressed, it shows where it is at its worst.
class MeasurementCards::CardView : public QAbstractButton {
public:
    explicit CardView(QWidget* parent) : QAbstractButton(parent), m_link(new QPushButton(this))
    {
        setAttribute(Qt::WA_Hover);
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
        m_link->setProperty("kind", u"plain"_s);
        m_link->setFont(Type::text(Type::caption, QFont::Medium));
        m_link->setFocusPolicy(Qt::TabFocus);
        m_link->setAutoDefault(true); // so that Return presses it: the space bar plays
        m_link->hide();
        connect(this, &QAbstractButton::toggled, this, &CardView::fit);
    }

    QPushButton& link() { return *m_link; }
    const MeasurementCard& card() const { return m_card; }

    void show(const MeasurementCard& card, double frameRate, bool fresh)
    {
        m_card = card;
        QString words = u"%1: %2 %3, %4"_s.arg(card.title, card.value, card.unit, card.caption);
        if (card.verdict)
            words += u", "_s + Icons::word(*card.verdict);
        setAccessibleName(words);
        setToolTip(card.caption);
        setCheckable(card.moment.has_value());
        setFocusPolicy(card.moment ? Qt::StrongFocus : Qt::NoFocus);
        if (fresh || !card.moment)
            setChecked(false);
        if (card.moment) {
            m_link->setText(u"worst at %1"_s.arg(Timecode(card.moment->frame, frameRate).text()));
            Icons::give(*m_link, u"goto"_s);
        }
        fit();
    }
    void setWide(bool wide)
    {
        m_wide = wide;
        fit();
    }

    QSize sizeHint() const override
    {
        const int caption =
            QFontMetrics(Type::text(Type::caption)).horizontalAdvance(m_card.caption);
        constexpr int ample = 10'000; // for the caption on one line
        return {std::max(caption, figureWidth()) + 2 * padding + 1, heightForWidth(ample)};
    }
    /// Side by side, title and value are whole. A caption can be broken.
    QSize minimumSizeHint() const override
    {
        return {m_wide ? figureWidth() + 2 * padding + 1 : 0, sizeHint().height()};
    }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override
    {
        return closedHeight(width) + (isChecked() ? linkRoom : 0);
    }

protected:
    void resizeEvent(QResizeEvent*) override { placeLink(); }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            return click();
        QAbstractButton::keyPressEvent(event);
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (m_wide)
            paintCard(painter);
        else
            paintRow(painter);
    }

private:
    void fit()
    {
        m_link->setVisible(isChecked());
        m_link->setFixedHeight(linkHeight);
        placeLink();
        updateGeometry();
        update();
    }
    void placeLink()
    {
        const int left = m_wide ? padding - 8 : padding + sign + RowParts::gap - 8;
        m_link->setGeometry(left, closedHeight(width()) - (m_wide ? 4 : 0),
                            std::min(m_link->sizeHint().width(), width() - left), linkHeight);
    }

    /// Higher where the caption takes a second line.
    int closedHeight(int width) const
    {
        constexpr int air = 6;
        const QFontMetrics metrics(Type::text(Type::caption));
        const int room = m_wide ? width - 2 * padding : captionRoom(width).width();
        const int caption = metrics
                                .boundingRect(QRect(0, 0, std::max(room, 1), 1'000),
                                              Qt::TextWordWrap, m_card.caption)
                                .height();
        return m_wide ? cardHeight + std::max(caption - metrics.height(), 0)
                      : std::max(rowHeight, caption + 2 * air);
    }
    /// In a row, right of the value.
    QRect captionRoom(int width) const
    {
        constexpr int value = 90;
        const int left = valueLeft();
        const int end = std::max(left + valueWidth(), left + std::min(value, width / 5));
        const int right = width - padding - (m_card.moment ? RowParts::chevron + 6 : 0);
        return {end + RowParts::gap, 0, right - end - RowParts::gap, 0};
    }
    static int valueLeft()
    {
        constexpr int label = 62;
        return padding + sign + RowParts::gap + label + RowParts::gap;
    }
    int figureWidth() const
    {
        const int title = QFontMetrics(Type::text(Type::caption)).horizontalAdvance(m_card.title);
        return std::max(title + RowParts::gap + sign, valueWidth())
               + (m_card.moment ? RowParts::chevron : 0);
    }
    int valueWidth() const
    {
        return QFontMetrics(valueFont()).horizontalAdvance(m_card.value) + unitGap
               + QFontMetrics(Type::text(Type::caption)).horizontalAdvance(m_card.unit);
    }

    void paintSign(QPainter& painter, int left, int top) const
    {
        if (m_card.verdict)
            Icons::drawVerdict(painter, QRectF(left, top, sign, sign), *m_card.verdict);
    }
    void paintValue(QPainter& painter, const QRect& line) const
    {
        const Theme& theme = Theme::current();
        const QFont large = valueFont();
        Type::draw(painter, line, m_card.value, large, theme.text1);
        const int unit =
            line.left() + QFontMetrics(large).horizontalAdvance(m_card.value) + unitGap;
        Type::draw(painter, QRect(unit, line.top() + 1, line.right() + 1 - unit, line.height()),
                   m_card.unit, Type::text(Type::caption), theme.text2);
    }
    void paintCaption(QPainter& painter, const QRect& room, Qt::Alignment alignment) const
    {
        painter.setFont(Type::text(Type::caption));
        painter.setPen(Theme::current().text2);
        painter.drawText(room, static_cast<int>(alignment) | Qt::TextWordWrap, m_card.caption);
    }
    void paintCard(QPainter& painter) const
    {
        RowParts::drawSurface(painter, rect(), true, false);
        const int words = width() - 2 * padding;
        Type::draw(painter, QRect(padding, 9, words - sign - 4, 16), m_card.title,
                   Type::text(Type::caption), Theme::current().text2);
        paintSign(painter, width() - padding - sign, 10);
        paintValue(painter, QRect(padding, 26, words, 22));
        paintCaption(painter, QRect(padding, captionTop, words, closedHeight(width()) - captionTop),
                     Qt::AlignLeft | Qt::AlignTop);
        if (m_card.moment)
            paintChevron(painter, QRect(0, 26, width() - padding + RowParts::inset, 22));
    }
    void paintRow(QPainter& painter) const
    {
        const int high = closedHeight(width());
        paintSign(painter, padding, (high - sign) / 2);
        const int left = padding + sign + RowParts::gap;
        Type::draw(painter, QRect(left, 0, valueLeft() - RowParts::gap - left, high), m_card.title,
                   Type::text(Type::body), Theme::current().text2);
        paintValue(painter, QRect(valueLeft(), 0, width() - valueLeft(), high));
        QRect room = captionRoom(width());
        room.setHeight(high);
        paintCaption(painter, room, Qt::AlignRight | Qt::AlignVCenter);
        if (m_card.moment)
            paintChevron(painter, QRect(0, 0, width() - padding + RowParts::inset, high));
    }
    void paintChevron(QPainter& painter, const QRect& line) const
    {
        RowParts::drawChevron(painter, line, isChecked());
    }

    MeasurementCard m_card;
    QPushButton* m_link;
    bool m_wide = false;
};

MeasurementCards::MeasurementCards(QWidget* parent)
    : QWidget(parent), m_layout(new QBoxLayout(QBoxLayout::TopToBottom, this))
{
    constexpr int most = 4;
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    for (int i = 0; i < most; ++i) {
        auto* view = new CardView(this);
        m_cards.push_back(view);
        m_layout->addWidget(view);
        connect(&view->link(), &QPushButton::clicked, this,
                [this, view] { Q_EMIT momentChosen(view->card().check, *view->card().moment); });
    }
}

void MeasurementCards::show(const std::vector<MeasurementCard>& cards, double frameRate, bool fresh)
{
    for (std::size_t i = 0; i < m_cards.size(); ++i) {
        m_cards[i]->setVisible(i < cards.size());
        if (i < cards.size()) {
            m_cards[i]->show(cards[i], frameRate, fresh);
            m_layout->setStretchFactor(m_cards[i], m_cards[i]->sizeHint().width());
        }
    }
    setVisible(!cards.empty());
}

void MeasurementCards::setWide(bool wide)
{
    if (std::exchange(m_wide, wide) == wide)
        return;
    m_layout->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_layout->setSpacing(wide ? 8 : 0);
    for (CardView* card : m_cards)
        card->setWide(wide);
    update();
}

/// The one card around the rows, with lines between them.
void MeasurementCards::paintEvent(QPaintEvent*)
{
    if (m_wide)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    RowParts::drawSurface(painter, rect(), true, false);
    for (const CardView* card : m_cards)
        if (!card->isHidden() && card->y() > 0)
            painter.fillRect(QRect(padding, card->y(), width() - 2 * padding, 1),
                             Theme::current().hairline);
}

} // namespace vantroque
