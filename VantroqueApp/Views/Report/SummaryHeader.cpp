#include "VantroqueApp/Views/Report/SummaryHeader.h"

#include "VantroqueApp/Views/Controls/ElidedLabel.h"
#include "VantroqueApp/Views/Controls/SignChip.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QVBoxLayout>

namespace vantroque {

using namespace Qt::StringLiterals;

SummaryHeader::SummaryHeader(QWidget* parent)
    : QWidget(parent),
      m_chip(new SignChip),
      m_headline(Type::label({}, Type::headline, QFont::DemiBold, Type::Ink::text1)),
      m_subhead(Type::label({}, Type::body, QFont::Normal, Type::Ink::text2)),
      m_note(Type::label({}, Type::body, QFont::Normal, Type::Ink::text2)),
      m_name(
          new ElidedLabel(Type::text(Type::caption, QFont::DemiBold), Qt::ElideMiddle, u"text1"_s)),
      m_summary(new ElidedLabel(Type::text(Type::caption), Qt::ElideRight, u"text2"_s))
{
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addStretch();
    for (QLabel* label : {m_headline, m_subhead, m_note}) {
        label->setWordWrap(true);
        words->addWidget(label);
    }
    words->addStretch();
    auto* verdict = new QHBoxLayout;
    verdict->setSpacing(14);
    verdict->addWidget(m_chip, 0, Qt::AlignTop);
    verdict->addLayout(words, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(verdict);
    layout->addSpacing(10);
    layout->addWidget(m_name);
    layout->addWidget(m_summary);
}

void SummaryHeader::show(const FileReport& report, const QString& problems)
{
    constexpr std::size_t maxNamed = 8;
    m_chip->setVerdict(Icons::signOf(report));
    m_headline->setText(report.summaryHeadline());
    m_subhead->setText(problems);
    m_subhead->setToolTip(report.summarySubhead(maxNamed));
    m_subhead->setVisible(!m_subhead->text().isEmpty());
    m_note->setText(report.advisoryNote().value_or(QString()));
    m_note->setVisible(!m_note->text().isEmpty());
    m_name->setText(report.fileName);
    m_name->setToolTip(report.filePath);
    m_summary->setText(report.summaryLine);
}

} // namespace vantroque
