#include "Base/Csv.h"

#include "Base/PlainText.h"

namespace vantroque::Csv {

using namespace Qt::StringLiterals;

QString text(const QString& text)
{
    QString field = PlainText::oneLine(text);
    const bool isQuoted = field.contains(u',') || field.contains(u'"') || field.contains(u'\'');
    if (!field.isEmpty() && u"=+-@"_s.contains(field.front()))
        field.prepend(u'\'');
    return isQuoted ? u'"' + field.replace(u"\""_s, u"\"\""_s) + u'"' : field;
}

QString line(const QStringList& fields)
{
    return fields.join(u',');
}

} // namespace vantroque::Csv
