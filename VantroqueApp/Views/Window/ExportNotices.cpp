#include "VantroqueApp/Views/Window/ExportNotices.h"

#include "VantroqueApp/Model/Exports/Exports.h"
#include "VantroqueApp/Views/Controls/NoticeBars.h"

namespace vantroque::ExportNotices {

using namespace Qt::StringLiterals;

namespace {

QString subject()
{
    return u"export"_s;
}

Notice noticeOf(Exports& exports, const QString& message)
{
    Notice notice;
    notice.subject = subject();
    notice.text = message.section(u'\n', 0, 0);
    notice.help = message;
    notice.icon = u"export"_s;
    if (exports.savedFile()) {
        notice.icon = exports.isAllSaved() ? u"checkmark"_s : u"export"_s;
        notice.action = {u"Show"_s, {}, [&exports] { exports.showSavedFile(); }};
        notice.isPassing = exports.isAllSaved();
    }
    return notice;
}

} // namespace

void tell(Exports& exports, NoticeBars& bars)
{
    QObject::connect(&exports, &Exports::exportMessageChanged, &bars, [&exports, &bars] {
        if (const auto& message = exports.exportMessage())
            bars.tell(noticeOf(exports, *message));
        else
            bars.withdraw(subject());
    });
}

} // namespace vantroque::ExportNotices
