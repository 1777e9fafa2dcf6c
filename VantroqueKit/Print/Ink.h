#pragma once

#include "Records/Report.h"

#include <QColor>
#include <QString>

/// Colours and marks on paper.
namespace vantroque::Ink {

const QColor text{23, 24, 28};
const QColor quiet{79, 84, 95};
const QColor hairline{198, 202, 210};
const QColor slot{232, 234, 238};

/// Of a verdict, in words, marks and stamps.
QColor of(Verdict verdict);

/// A sign whose shape tells the verdict too, since paper may come out in grey.
QString mark(Verdict verdict);

} // namespace vantroque::Ink
