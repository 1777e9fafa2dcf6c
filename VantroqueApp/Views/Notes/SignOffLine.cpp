#include "VantroqueApp/Views/Notes/SignOffLine.h"

#include "Base/Text.h"
#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QBoxLayout>
#include <QPushButton>

namespace vantroque {

using namespace Qt::StringLiterals;
using Decision = ReviewSignOff::Decision;

namespace {

constexpr int gap = 8;
constexpr int lineHeight = 26;
constexpr int signSize = 14;

QString notSignedOff(std::ptrdiff_t notes)
{
    return u"Not signed off. %1 note%2 to answer."_s.arg(QString::number(notes),
                                                         Text::plural(notes));
}

/// "Approved over 2 failing platforms, 22 Nov 2026 14:05"
QString decisionLine(const ReviewSignOff& signOff)
{
    QString line = ReviewSignOff::label(signOff.decision);
    if (const auto note = signOff.overrideNote())
        line += u' ' + *note;
    ReviewSignOff plain = signOff;
    plain.failingWhenSigned.clear(); // the tooltip names them
    return line + u", "_s + plain.detailLine(QLocale::ShortFormat);
}

QPushButton* button(const QString& text, const QString& help)
{
    auto* button = new QPushButton(text);
    button->setProperty("kind", u"small"_s);
    button->setFont(Type::text(Type::body, QFont::Medium));
    button->setToolTip(help);
    button->setAccessibleDescription(help);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(true); // so that Return presses it: the space bar plays
    return button;
}

} // namespace

SignOffLine::SignOffLine(QWidget* parent)
    : QWidget(parent),
      m_words(new ElidedLabel(Type::text(Type::caption), Qt::ElideRight, u"text2"_s)),
      m_approve(decisionButton(Decision::approved)),
      m_revise(decisionButton(Decision::needsRevisions)),
      m_clear(button(u"Clear"_s, u"Clear this decision"_s)),
      m_layout(new QBoxLayout(QBoxLayout::LeftToRight, this))
{
    connect(m_clear, &QPushButton::clicked, this, [this] { Q_EMIT decided(std::nullopt); });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(gap);
    for (QPushButton* each : {m_approve, m_revise, m_clear})
        buttons->addWidget(each);
    buttons->addStretch();
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(gap);
    m_layout->addWidget(m_words, 1);
    m_layout->addLayout(buttons);
    show(nullptr, false);
}

QPushButton* SignOffLine::decisionButton(Decision decision)
{
    QPushButton* made = button(ReviewSignOff::actionLabel(decision),
                               u"Mark the file "_s + ReviewSignOff::label(decision));
    made->setAccessibleName(made->text());
    made->setCheckable(true);
    connect(made, &QPushButton::clicked, this, [this, decision] {
        Q_EMIT decided(decision);
        arrange(); // the button shows what is decided, not that it was pressed
    });
    return made;
}

void SignOffLine::show(const FileReview* review, bool open)
{
    const ReviewSignOff* signOff =
        review != nullptr && review->signOff ? &*review->signOff : nullptr;
    m_decision = signOff != nullptr ? std::optional(signOff->decision) : std::nullopt;
    m_words->setText(signOff != nullptr
                         ? decisionLine(*signOff)
                         : notSignedOff(review != nullptr ? std::ssize(review->comments) : 0));
    m_words->setToolTip(signOff != nullptr ? signOff->detailLine(QLocale::ShortFormat) : QString());
    for (QPushButton* each : {m_approve, m_revise})
        each->setEnabled(open);
    m_clear->setVisible(signOff != nullptr);
    arrange();
}

void SignOffLine::setOneLine(bool oneLine)
{
    m_oneLine = oneLine;
    arrange();
}

bool SignOffLine::fits(int width) const
{
    int needed = QFontMetrics(m_words->font()).horizontalAdvance(m_words->text()) + gap;
    for (const QPushButton* each : {m_approve, m_revise, m_clear})
        if (!each->isHidden())
            needed += each->sizeHint().width() + gap;
    return needed <= width;
}

int SignOffLine::heightForWidth(int width) const
{
    return m_oneLine || fits(width) ? lineHeight : 2 * lineHeight;
}

void SignOffLine::arrange()
{
    m_approve->setChecked(m_decision == Decision::approved);
    m_revise->setChecked(m_decision == Decision::needsRevisions);
    m_approve->setText(ReviewSignOff::actionLabel(Decision::approved));
    m_revise->setText(ReviewSignOff::actionLabel(Decision::needsRevisions));
    Icons::give(*m_approve, u"checkmark"_s, signSize);
    Icons::give(*m_revise, u"edit"_s, signSize);
    const bool oneLine = m_oneLine || fits(width());
    if (m_oneLine && !fits(width())) // their signs say it as well
        for (QPushButton* each : {m_approve, m_revise}) {
            each->setText({});
            each->setIconSize({signSize, signSize});
        }
    m_layout->setDirection(oneLine ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_layout->setSpacing(oneLine ? gap : 2);
    setFixedHeight(heightForWidth(width()));
}

void SignOffLine::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

} // namespace vantroque
