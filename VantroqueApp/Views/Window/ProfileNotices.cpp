#include "VantroqueApp/Views/Window/ProfileNotices.h"

#include "Base/Text.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"
#include "VantroqueApp/Views/Controls/NoticeBars.h"

namespace vantroque::ProfileNotices {

using namespace Qt::StringLiterals;

namespace {

QString subject()
{
    return u"profiles of one's own"_s;
}

Notice noticeOf(const std::vector<QString>& problems, const std::function<void()>& show)
{
    return {.subject = subject(),
            .icon = u"list"_s,
            .text = problems.size() == 1
                        ? u"A profile of your own cannot be used"_s
                        : u"%1 profiles of your own cannot be used"_s.arg(problems.size()),
            .help = Text::joined(problems, u"\n"_s),
            .action = {u"Show"_s, {}, show}};
}

} // namespace

void tell(const ProfileChoice& choice, NoticeBars& bars, const std::function<void()>& show)
{
    const auto refresh = [&choice, &bars, show] {
        if (choice.own().problems.empty())
            bars.withdraw(subject());
        else
            bars.tell(noticeOf(choice.own().problems, show));
    };
    QObject::connect(&choice, &ProfileChoice::renewed, &bars, refresh);
    refresh();
}

} // namespace vantroque::ProfileNotices
