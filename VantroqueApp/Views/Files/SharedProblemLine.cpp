#include "VantroqueApp/Views/Files/SharedProblemLine.h"

#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QPainter>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;
using namespace RowParts;

SharedProblemLine::SharedProblemLine(const SharedProblem& problem, std::size_t of, QWidget* parent)
    : FoldLine(parent),
      m_problem(problem),
      m_count(u"%1 of %2 files"_s.arg(problem.files.size()).arg(of))
{
    setAccessibleName(QStringList{Icons::word(problem.verdict), problem.title, m_count,
                                  problem.whose, problem.measured,
                                  u"expected %1"_s.arg(problem.expected)}
                          .join(u", "_s));
    setToolTip(u"%1: %2"_s.arg(problem.title, pair()));
}

QString SharedProblemLine::pair() const
{
    return u"%1  →  %2"_s.arg(m_problem.measured, m_problem.expected);
}

QSize SharedProblemLine::sizeHint() const
{
    constexpr QSize hint(200, 36);
    return hint;
}

void SharedProblemLine::paintEvent(QPaintEvent*)
{
    constexpr int sign = 14;
    constexpr int titleWide = 170;
    constexpr int countWide = 100;
    constexpr int whoseWide = 120;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSurface(painter, rect(), false, underMouse() && !isChecked());
    Icons::drawVerdict(painter, QRectF(inset + 1, (height() - sign) / 2.0, sign, sign),
                       m_problem.verdict);
    const int whose = wordsEnd(rect()) - whoseWide;
    const int count = whose - gap - countWide;
    const int pairLeft = indent + titleWide + gap;
    const QFont quiet = Type::text(Type::body);
    Type::draw(painter, QRect(indent, 0, titleWide, height()), m_problem.title,
               Type::text(Type::body, QFont::Medium), theme.text1);
    Type::draw(painter, QRect(pairLeft, 0, std::max(count - gap - pairLeft, 0), height()), pair(),
               quiet, theme.text2);
    Type::draw(painter, QRect(count, 0, countWide, height()), m_count, quiet, theme.text2,
               Qt::AlignRight | Qt::AlignVCenter);
    Type::draw(painter, QRect(whose, 0, whoseWide, height()), m_problem.whose, quiet, theme.text2,
               Qt::AlignRight | Qt::AlignVCenter);
    drawChevron(painter, rect(), isChecked());
}

} // namespace vantroque
