#include "VantroqueApp/Views/Compare/CompareCaption.h"

#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/IconButton.h"
#include "VantroqueApp/Views/Controls/Scrubber.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int lineHeight = 18;

QLabel* badge(const QString& kind, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setFont(Type::text(Type::badge, QFont::Medium));
    label->setProperty("badge", kind);
    label->setAlignment(Qt::AlignCenter);
    label->setFixedHeight(lineHeight);
    label->hide();
    return label;
}

QHBoxLayout* lineOf(QWidget& line)
{
    auto* layout = new QHBoxLayout(&line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    return layout;
}

int framesOf(const CompareTiming::Clip& clip)
{
    return static_cast<int>(clip.rate.frameAt(clip.last()));
}

} // namespace

CompareCaption::CompareCaption(CompareController& compare, CompareTile& tile, QWidget* parent)
    : QWidget(parent),
      m_compare(compare),
      m_tile(tile),
      m_letter(badge(u"letter"_s, this)),
      m_name(new ElidedLabel(Type::text(Type::body, QFont::Medium), Qt::ElideMiddle, u"text1"_s,
                             this)),
      m_line(new ElidedLabel(Type::text(Type::caption), Qt::ElideRight, u"text2"_s, this)),
      m_signOff(badge(u"round"_s, this)),
      m_solo(IconButton::make(u"play"_s, {}, {}, this)),
      m_place(new Scrubber(u"Place in %1"_s.arg(tile.name()), this)),
      m_sync(IconButton::make(u"sync"_s, u"Back in step"_s,
                              u"Bring this clip back in step with the others"_s, this))
{
    setFixedHeight(high);
    Icons::give(*m_sync, u"sync"_s, 16, &Theme::accent);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 6, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(firstLine());
    layout->addWidget(secondLine());
    layout->addWidget(tools());
    layout->addStretch(1);
    connect(m_solo, &QToolButton::clicked, this, [this] { m_compare.toggleSolo(m_tile.id()); });
    connect(m_sync, &QToolButton::clicked, this, [this] { m_compare.clearOffset(m_tile.id()); });
    connect(m_place, &Scrubber::scrubbed, this, [this](int frame) {
        m_compare.scrub(m_tile.id(), m_tile.clip().rate.secondsOf(frame));
    });
    connect(&tile, &CompareTile::signOffChanged, this, &CompareCaption::showTile);
    connect(&compare, &CompareController::modeChanged, this, &CompareCaption::showTile);
    connect(&compare, &CompareController::moved, this, &CompareCaption::showPlace);
    connect(&compare, &CompareController::soloChanged, this, &CompareCaption::showSolo);
    showTile();
}

QWidget* CompareCaption::firstLine()
{
    auto* line = new QWidget(this);
    auto* layout = lineOf(*line);
    m_letter->setFixedWidth(lineHeight);
    m_name->setText(m_tile.name());
    m_name->setFixedHeight(lineHeight);
    layout->addWidget(m_letter);
    layout->addWidget(m_name, 1);
    return line;
}

QWidget* CompareCaption::secondLine()
{
    auto* line = new QWidget(this);
    auto* layout = lineOf(*line);
    m_line->setFixedHeight(lineHeight);
    layout->addWidget(m_line, 1);
    layout->addWidget(m_signOff);
    return line;
}

QWidget* CompareCaption::tools()
{
    auto* line = new QWidget(this);
    auto* layout = lineOf(*line);
    layout->setSpacing(4);
    layout->addWidget(m_solo);
    layout->addWidget(m_place, 1);
    layout->addWidget(m_sync);
    m_place->setToolTip(u"Slip this clip against the others. Up and down move it a frame, Page up "
                        "and Page down ten"_s);
    return line;
}

void CompareCaption::setLetter(const QString& letter)
{
    m_letter->setText(letter);
    m_letter->setVisible(!letter.isEmpty());
}

void CompareCaption::setWords(const QStringList& words)
{
    m_words = words;
    showTile();
}

void CompareCaption::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    showTile();
}

/// Where there is little room, the decision says more than the size.
void CompareCaption::showTile()
{
    constexpr int tight = 240;
    const auto& signOff = m_tile.signOff();
    m_signOff->setText(signOff ? ReviewSignOff::label(signOff->decision) : QString());
    m_signOff->setVisible(signOff.has_value());
    const VideoSummary& video = m_tile.file().video;
    const QString size = u"%1x%2"_s.arg(video.width).arg(video.height);
    m_line->setText((QStringList(size) + m_words).join(u" · "_s));
    m_line->setVisible(width() >= tight || !signOff);
    m_place->setMaximum(framesOf(m_tile.clip()));
    showPlace();
    showSolo();
}

void CompareCaption::showPlace()
{
    if (!m_place->isSliderDown())
        m_place->setValue(
            static_cast<int>(m_tile.clip().rate.frameAt(m_compare.clipSeconds(m_tile))));
    m_sync->setVisible(CompareTiming::isSlipped(m_tile.clip()));
}

void CompareCaption::showSolo()
{
    const bool alone = m_compare.soloTileID() == m_tile.id();
    const bool plays = !m_tile.pictures().areStills();
    const QString help = alone ? u"Stop"_s : u"Play this clip alone, with sound"_s;
    Icons::give(*m_solo, alone ? u"stop"_s : u"play"_s);
    m_solo->setEnabled(plays);
    m_solo->setAccessibleName(help);
    m_solo->setToolTip(plays ? help : PlayerController::stepperHelp());
}

} // namespace vantroque
