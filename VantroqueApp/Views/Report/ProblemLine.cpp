#include "VantroqueApp/Views/Report/ProblemLine.h"

#include "Base/Text.h"
#include "Base/Timecode.h"
#include "VantroqueApp/Views/Controls/RowParts.h"
#include "VantroqueApp/Views/Style/Icons.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

using namespace RowParts;

constexpr int twoLines = 48;
constexpr int oneLine = 36;
constexpr int sign = 14;
constexpr int lineHeight = 18;
constexpr int firstLine = 6;
QString arrow()
{
    return u"  →  "_s;
}

QFont timeFont()
{
    return Type::mono(Type::caption, QFont::Medium);
}

/// How many more things are asked for than what is shown.
std::ptrdiff_t otherLimits(const Problem& problem)
{
    std::vector<QString> asked;
    for (const Problem::Limit& limit : problem.limits)
        if (std::ranges::count(asked, limit.expected) == 0)
            asked.push_back(limit.expected);
    return std::ssize(asked) - 1;
}

QString otherLimitsText(const Problem& problem)
{
    const auto count = otherLimits(problem);
    const QString what = problem.checkID == u"loudness"_s ? u"target"_s : u"limit"_s;
    return u"%1 %2%3"_s.arg(QString::number(count), what, Text::plural(count));
}

QString words(const Problem& problem, const QString& time)
{
    const Problem::Limit& limit = problem.limits.front();
    QStringList words{Icons::word(problem.verdict), problem.title, problem.whose(), limit.measured,
                      u"expected %1"_s.arg(limit.expected)};
    if (otherLimits(problem) > 0)
        words << u"and %1"_s.arg(otherLimitsText(problem));
    if (!time.isEmpty())
        words << u"at %1"_s.arg(time);
    return words.join(u", "_s);
}

} // namespace

ProblemLine::ProblemLine(const Problem& problem, double frameRate, QWidget* parent)
    : FoldLine(parent),
      m_problem(problem),
      m_time(problem.moment ? Timecode(problem.moment->frame, frameRate).text() : QString())
{
    connect(this, &QAbstractButton::toggled, this, [this] { updateGeometry(); });
    setAccessibleName(words(problem, m_time));
    const Problem::Limit& limit = problem.limits.front();
    setToolTip(u"%1: %2 → %3"_s.arg(problem.title, limit.measured, limit.expected));
}

void ProblemLine::setWide(bool wide)
{
    if (std::exchange(m_wide, wide) == wide)
        return;
    updateGeometry();
    update();
}

QSize ProblemLine::sizeHint() const
{
    constexpr int narrowest = 200;
    constexpr int titleAlone = 30;
    if (m_wide)
        return {narrowest, oneLine};
    return {narrowest, leavesPair() ? titleAlone : twoLines};
}

ProblemLine::Places ProblemLine::places() const
{
    constexpr int wideTitle = 144;
    constexpr int wideWhose = 104;
    const int right = wordsEnd(rect());
    const int top = m_wide ? (height() - lineHeight) / 2 : firstLine;
    const int below = m_wide ? top : firstLine + lineHeight;
    const auto line = [](int left, int y, int end) {
        return QRect(left, y, std::max(end - left, 0), lineHeight);
    };
    const int needed = QFontMetrics(Type::text(Type::caption)).horizontalAdvance(m_problem.whose());
    const int whose = m_wide ? std::max(wideWhose, needed + 1) : needed + 1;
    Places places;
    places.sign = QRect(inset + 1, top + 2, sign, sign);
    places.whose = line(right - whose, top, right);
    places.title = line(indent, top, m_wide ? indent + wideTitle : places.whose.left() - gap);
    int end = m_wide ? places.whose.left() - gap : right;
    if (!m_time.isEmpty()) {
        const int wide = QFontMetrics(timeFont()).horizontalAdvance(m_time) + 1;
        places.time = line(end - wide, below, end);
        end -= wide + gap;
    }
    places.pair = line(m_wide ? indent + wideTitle + gap : indent, below, end);
    places.chevron = QRect(0, top, width(), lineHeight);
    return places;
}

bool ProblemLine::isCut() const
{
    const Problem::Limit& limit = m_problem.limits.front();
    const QFontMetrics metrics(Type::text(m_wide ? Type::body : Type::caption));
    const int tag =
        otherLimits(m_problem) > 0 ? gap + tagWidth(u"+"_s + otherLimitsText(m_problem)) : 0;
    return metrics.horizontalAdvance(limit.measured + arrow() + limit.expected) + 3 + tag
           > places().pair.width();
}

void ProblemLine::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSurface(painter, rect(), false, underMouse() && !isChecked());
    const Places at = places();
    Icons::drawVerdict(painter, at.sign, m_problem.verdict);
    Type::draw(painter, at.title, m_problem.title, Type::text(Type::body, QFont::Medium),
               theme.text1);
    Type::draw(painter, at.whose, m_problem.whose(), Type::text(Type::caption), theme.text2,
               Qt::AlignRight | Qt::AlignVCenter);
    if (m_wide || !leavesPair())
        Type::draw(painter, at.time, m_time, timeFont(), theme.accent);
    if (!leavesPair())
        paintPair(painter, at.pair);
    drawChevron(painter, at.chevron, isChecked());
}

/// What was expected yields before what was measured.
void ProblemLine::paintPair(QPainter& painter, QRect room) const
{
    const Theme& theme = Theme::current();
    const Problem::Limit& limit = m_problem.limits.front();
    const QFont font = Type::text(m_wide ? Type::body : Type::caption);
    const QFontMetrics metrics(font);
    const bool isTagged = otherLimits(m_problem) > 0;
    const QString tag = isTagged ? u"+"_s + otherLimitsText(m_problem) : QString();
    const int tagRoom = isTagged ? gap + tagWidth(tag) : 0;
    const auto draw = [&](const QString& text, const QColor& color) {
        const int wide = std::min(metrics.horizontalAdvance(text) + 1, room.width() - tagRoom);
        if (wide > 0)
            Type::draw(painter, QRect(room.left(), room.top(), wide, room.height()), text, font,
                       color);
        room.setLeft(room.left() + std::max(wide, 0));
    };
    draw(limit.measured, theme.text1);
    constexpr int few = 24; // for less an arrow would point at nothing
    if (metrics.horizontalAdvance(arrow()) + few <= room.width() - tagRoom) {
        draw(arrow(), theme.text2);
        draw(limit.expected, theme.text2);
    }
    if (isTagged && room.width() >= tagRoom)
        drawTag(painter, room.left() + gap, room, tag);
}

void ProblemLine::mouseReleaseEvent(QMouseEvent* event)
{
    const bool hasTime = m_wide || !leavesPair();
    if (event->button() == Qt::LeftButton && hasTime
        && places().time.contains(event->position().toPoint())) {
        setDown(false);
        Q_EMIT timePressed();
        return event->accept();
    }
    FoldLine::mouseReleaseEvent(event);
}

} // namespace vantroque
