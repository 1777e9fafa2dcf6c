#include "Records/RuleSource.h"

#include <QStringList>

namespace vantroque {

using namespace Qt::StringLiterals;

QString RuleSource::words() const
{
    QStringList parts{document};
    if (clause)
        parts << *clause;
    parts << date;
    if (certainty == Certainty::quoted)
        parts << u"as quoted"_s;
    if (certainty == Certainty::secondHand)
        parts << u"at second hand"_s;
    return parts.join(u", "_s);
}

} // namespace vantroque
