#include "VantroqueApp/Views/Report/PlatformsHeading.h"

#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QHBoxLayout>
#include <QLabel>

namespace vantroque {

using namespace Qt::StringLiterals;

PlatformsHeading::PlatformsHeading(QWidget* parent)
    : QWidget(parent),
      m_count(Type::label({}, Type::badge, QFont::Medium, Type::Ink::text1)),
      m_outcome(Type::label({}, Type::caption, QFont::Normal, Type::Ink::text2))
{
    constexpr int high = 32;
    setFixedHeight(high);
    m_count->setObjectName(u"countBadge"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(RowParts::inset, 0, RowParts::inset, 0);
    layout->setSpacing(8);
    layout->addWidget(
        Type::label(u"Platforms"_s, Type::heading, QFont::DemiBold, Type::Ink::text1));
    layout->addWidget(m_count);
    layout->addStretch();
    layout->addWidget(m_outcome);
}

void PlatformsHeading::show(const FileReport& report)
{
    const std::size_t all = report.gateProfiles().size();
    const std::size_t passing = report.passingProfileCount();
    m_count->setText(QString::number(all));
    QStringList parts;
    if (all > passing)
        parts << u"%1 fail"_s.arg(all - passing);
    if (passing > 0)
        parts << u"%1 pass"_s.arg(passing);
    m_outcome->setText(parts.join(u" · "_s));
    setVisible(all > 0);
}

} // namespace vantroque
