#include "Support/SceneWords.h"

#include "Support/SceneChance.h"

#include <QStringList>

namespace vantroque::TextScenes {

using namespace Qt::StringLiterals;

namespace {

const QStringList& words(Set set)
{
    static const QStringList tuning =
        u"fresh coffee every morning drive home happy save today only best price new season colors "
        "feel the difference made for you family dinner in minutes power that lasts clean energy "
        "better sleep starts here limited offer join us now trusted by millions"_s.split(u' ');
    static const QStringList heldOut =
        u"discover your next adventure with great taste zero sugar call before friday free "
        "delivery this weekend enjoy quality built strong inside every kitchen shop online brand "
        "visit our stores more smiles less work summer sale begins watch live tonight"_s.split(
            u' ');
    return set == Set::tuning ? tuning : heldOut;
}

} // namespace

const std::vector<Face>& faces(Set set)
{
    static const std::vector<Face> tuning{
        {u"DejaVu Sans"_s},     {u"DejaVu Sans"_s, QFont::Bold}, {u"DejaVu Serif"_s},
        {u"Liberation Sans"_s}, {u"Liberation Serif"_s},         {u"Liberation Sans Narrow"_s},
        {u"Roboto"_s},          {u"Roboto"_s, QFont::Black},     {u"Roboto Condensed"_s},
    };
    static const std::vector<Face> heldOut{
        {u"Lato"_s},
        {u"Lato"_s, QFont::Bold},
        {u"Lato"_s, QFont::Light},
        {u"Open Sans"_s},
        {u"Open Sans"_s, QFont::Bold},
        {u"Open Sans Condensed"_s, QFont::Bold},
        {u"FreeSans"_s},
        {u"FreeSerif"_s},
        {u"FreeSans"_s, QFont::Bold},
    };
    return set == Set::tuning ? tuning : heldOut;
}

QString phrase(Set set, Random& random)
{
    QStringList chosen;
    for (int i = between(random, 3, 6); i > 0; --i)
        chosen << pick(words(set), random);
    QString text = chosen.join(u' ');
    text[0] = text[0].toUpper();
    return chance(random, 0.35) ? text.toUpper() : text;
}

} // namespace vantroque::TextScenes
