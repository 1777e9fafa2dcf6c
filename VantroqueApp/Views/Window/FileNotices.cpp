#include "VantroqueApp/Views/Window/FileNotices.h"

#include "Base/Text.h"
#include "VantroqueApp/Views/Controls/NoticeBars.h"
#include "VantroqueApp/Views/Files/SkippedDialog.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString removal()
{
    return u"removal"_s;
}

QString leaving()
{
    return u"files that are not compared"_s;
}

} // namespace

FileNotices::FileNotices(FileList& files, NoticeBars& bars)
    : QObject(&bars), m_files(files), m_bars(bars)
{
    connect(&files, &FileList::removed, this, &FileNotices::tellRemoved);
    connect(&files, &FileList::broughtBack, this, [this] { m_bars.withdraw(removal()); });
}

void FileNotices::tellRemoved()
{
    if (!m_files.lastRemoval())
        return;
    const auto count = std::ssize(m_files.lastRemoval()->entries);
    m_bars.tell({.subject = removal(),
                 .icon = u"trash"_s,
                 .text = u"Removed %1 file%2"_s.arg(QString::number(count), Text::plural(count)),
                 .help = {},
                 .action = {u"Undo"_s, u"undo"_s, [this] { m_files.bringBack(); }},
                 .isPassing = true});
}

void FileNotices::tellSkipped(const std::vector<SkippedFile>& files)
{
    if (files.empty())
        return;
    Notice notice{.subject = {}, .icon = u"skip"_s, .text = {}, .help = {}, .action = {}};
    if (files.size() == 1) {
        notice.text = u"1 file skipped: %1 %2"_s.arg(Text::printable(files.front().name),
                                                     files.front().reason);
    } else {
        notice.text = u"%1 files skipped"_s.arg(files.size());
        notice.action = {u"Show"_s, {}, [files, window = m_bars.window()] {
                             SkippedDialog::open(files, window);
                         }};
    }
    m_bars.tell(std::move(notice));
}

void FileNotices::tellLeftOut(std::size_t compared, std::size_t leftOut)
{
    m_bars.tell({.subject = leaving(),
                 .icon = u"skip"_s,
                 .text = u"Comparing the first %1 of %2 files. Select those to compare"_s.arg(
                     QString::number(compared), QString::number(compared + leftOut)),
                 .help = {},
                 .action = {}});
}

void FileNotices::withdrawLeftOut()
{
    m_bars.withdraw(leaving());
}

} // namespace vantroque
