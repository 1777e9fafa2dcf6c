#include "VantroqueApp/Views/Player/FileLine.h"

#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/Glyph.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

FileLine::FileLine(PlayerController& player, QWidget* parent)
    : QFrame(parent),
      m_player(player),
      m_sign(new Glyph(Verdict::pass, 18, this)),
      m_name(new ElidedLabel(Type::text(Type::body, QFont::Medium), Qt::ElideMiddle, u"text1"_s,
                             this)),
      m_verdict(new ElidedLabel(Type::text(Type::caption), Qt::ElideRight, u"text2"_s, this))
{
    constexpr int high = 58;
    setObjectName(u"fileLine"_s);
    setAccessibleName(u"File"_s);
    setFixedHeight(high);
    auto* words = new QVBoxLayout;
    words->setSpacing(1);
    words->addStretch();
    words->addWidget(m_name);
    words->addWidget(m_verdict);
    words->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(12);
    layout->addWidget(m_sign);
    layout->addLayout(words, 1);
    connect(&player, &PlayerController::reportChanged, this, &FileLine::refresh);
    refresh();
}

void FileLine::refresh()
{
    const auto& report = m_player.report();
    if (!report)
        return;
    m_sign->setVerdict(Icons::signOf(*report));
    m_name->setText(report->fileName);
    m_name->setToolTip(report->filePath);
    m_verdict->setText(report->summaryHeadline());
}

} // namespace vantroque
