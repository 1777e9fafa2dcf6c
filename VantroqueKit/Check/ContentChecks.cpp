#include "Check/CheckRow.h"
#include "Check/Checker.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

void checkContent(const Profile& profile, const MediaInfo& media, Rows& rows)
{
    if (!profile.content || media.signal)
        return;
    const ContentRule& rule = *profile.content;
    if (rule.letterboxForbidden.value_or(false) || rule.headTailBlackForbidden.value_or(false)
        || rule.slate) {
        const CheckRow row{u"content"_s, u"Content checks"_s,
                           u"letterbox/slate/black-padding analysis"_s};
        rows.push_back(row.info(u"signal pass skipped"_s));
    }
}

} // namespace vantroque::Checker
