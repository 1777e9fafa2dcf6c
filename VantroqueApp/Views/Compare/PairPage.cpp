#include "VantroqueApp/Views/Compare/PairPage.h"

#include "VantroqueApp/Views/Compare/CompareCaption.h"
#include "VantroqueApp/Views/Compare/PairPicture.h"
#include "VantroqueApp/Views/Style/Icons.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

PairPage::PairPage(CompareController& compare, ComparePair& pair, QWidget* parent)
    : QWidget(parent),
      m_compare(compare),
      m_pair(pair),
      m_picture(new PairPicture(compare, pair, this)),
      m_swap(new QToolButton(this)),
      m_captions(new QHBoxLayout)
{
    constexpr int side = 16;
    constexpr int top = 12;
    constexpr int button = 30;
    m_swap->setAccessibleName(u"Swap A and B"_s);
    m_swap->setToolTip(u"Swap A and B  (X)"_s);
    m_swap->setFixedSize(button, button);
    m_swap->setProperty("kind", u"square"_s);
    m_swap->setFocusPolicy(Qt::TabFocus);
    Icons::give(*m_swap, u"swap"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(side, top, side, top);
    layout->setSpacing(0);
    layout->addWidget(m_picture, 1);
    layout->addLayout(m_captions);
    m_captions->setContentsMargins(0, 0, 0, 0);
    m_captions->setSpacing(2 * side);
    m_captions->addWidget(m_swap, 0, Qt::AlignVCenter);
    connect(m_swap, &QToolButton::clicked, &pair, &ComparePair::swap);
    connect(&pair, &ComparePair::pairChanged, this, &PairPage::fill);
    connect(&pair, &ComparePair::modeChanged, this, &PairPage::showWords);
    fill();
}

void PairPage::fill()
{
    delete m_captionA;
    delete m_captionB;
    m_captionA = m_captionB = nullptr;
    if (!m_pair.isPair())
        return;
    m_captionA = new CompareCaption(m_compare, *m_pair.a(), this);
    m_captionB = new CompareCaption(m_compare, *m_pair.b(), this);
    m_captionA->setLetter(u"A"_s);
    m_captionB->setLetter(u"B"_s);
    m_captions->insertWidget(0, m_captionA, 1);
    m_captions->addWidget(m_captionB, 1);
    m_captionA->show(); // at once, and not in the next turn
    m_captionB->show();
    setTabOrder(m_captionA, m_swap);
    setTabOrder(m_swap, m_captionB);
    showWords();
    alignCaptions();
}

/// They stand under the edges of the picture, unless that is narrow.
void PairPage::alignCaptions()
{
    constexpr double narrow = 720;
    const QRectF picture = m_picture->pictureRect();
    const int side = picture.width() < narrow ? 0 : qRound(picture.left());
    m_captions->setContentsMargins(side, 0, side, 0);
}

void PairPage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layout()->activate(); // so that the picture has its size
    alignCaptions();
}

/// How B was brought to A is B's to say.
void PairPage::showWords()
{
    if (!m_pair.isPair())
        return;
    const auto codec = [](const CompareTile& tile) {
        return tile.file().codec ? QStringList(*tile.file().codec) : QStringList();
    };
    const PictureMatch match = m_pair.match();
    const bool differs = m_pair.mode() == CompareMode::difference;
    QStringList words = codec(*m_pair.b());
    if (const auto fitting = differs ? match.differenceWords() : match.wipeWords())
        words += *fitting;
    if (const auto reduced = m_pair.reducedWords(); reduced && differs)
        words += *reduced;
    m_captionA->setWords(codec(*m_pair.a()));
    m_captionB->setWords(words);
}

} // namespace vantroque
