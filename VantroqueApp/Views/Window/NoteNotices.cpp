#include "VantroqueApp/Views/Window/NoteNotices.h"

#include "VantroqueApp/Model/Playback/OpenPlayer.h"
#include "VantroqueApp/Views/Controls/NoticeBars.h"

namespace vantroque::NoteNotices {

using namespace Qt::StringLiterals;

namespace {

QString subject()
{
    return u"deleted note"_s;
}

Notice noticeOf(OpenPlayer& open, const ReviewComment& comment)
{
    const QString what = comment.text.isEmpty() ? u"drawing"_s : u"note"_s;
    return {.subject = subject(),
            .icon = u"trash"_s,
            .text = u"Deleted the %1 at %2"_s.arg(what, comment.timecode().text()),
            .help = {},
            .action = {u"Undo"_s, u"undo"_s,
                       [&open] {
                           if (open.player() != nullptr)
                               open.player()->bringBackComment();
                       }},
            .isPassing = true};
}

/// Tells of the note that was deleted last, when it was deleted just now.
void follow(OpenPlayer& open, NoticeBars& bars)
{
    if (open.player() == nullptr)
        return bars.withdraw(subject());
    const Notebook& notebook = open.player()->notebook();
    QObject::connect(&notebook, &Notebook::removedChanged, &bars,
                     [&open, &bars, &notebook, before = notebook.removed().size()]() mutable {
                         const auto now = notebook.removed().size();
                         if (now > before)
                             bars.tell(noticeOf(open, notebook.removed().back()));
                         else
                             bars.withdraw(subject());
                         before = now;
                     });
}

} // namespace

void tell(OpenPlayer& open, NoticeBars& bars)
{
    QObject::connect(&open, &OpenPlayer::playerChanged, &bars,
                     [&open, &bars] { follow(open, bars); });
    follow(open, bars);
}

} // namespace vantroque::NoteNotices
