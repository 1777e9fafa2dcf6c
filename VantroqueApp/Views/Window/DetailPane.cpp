#include "VantroqueApp/Views/Window/DetailPane.h"

#include "VantroqueApp/Views/Analyzing/AnalyzingView.h"
#include "VantroqueApp/Views/Report/ReportView.h"
#include "VantroqueApp/Views/Window/MessagePane.h"

namespace vantroque {

using namespace Qt::StringLiterals;

DetailPane::DetailPane(const FileList& list, const AnalysisQueue& queue,
                       const ProfileChoice& profiles, QWidget* parent)
    : QStackedWidget(parent),
      m_list(list),
      m_queue(queue),
      m_message(new MessagePane(this)),
      m_analyzing(new AnalyzingView(this)),
      m_report(new ReportView(profiles, this))
{
    setObjectName(u"detail"_s);
    addWidget(m_message);
    addWidget(m_analyzing);
    addWidget(m_report);
    const auto ifSelected = [this](const QUuid& id) {
        if (id == m_list.selectedAnalysisID())
            refresh();
    };
    connect(&list, &FileList::selectionChanged, this, &DetailPane::refresh);
    connect(&list, &FileList::entryChanged, this, ifSelected);
    connect(&queue, &AnalysisQueue::progressChanged, this, ifSelected);
    connect(&profiles, &ProfileChoice::changed, this, [this] { m_shownReport.reset(); });
    refresh();
}

void DetailPane::refresh()
{
    const FileAnalysis* file = m_list.selected();
    if (file != nullptr && file->report() != nullptr) {
        showReport(*file);
        setCurrentWidget(m_report);
    } else if (file != nullptr && file->is<FileAnalysis::Running>()) {
        m_analyzing->show(*file, m_queue.progress(file->id));
        setCurrentWidget(m_analyzing);
    } else {
        showMessage(file);
        setCurrentWidget(m_message);
    }
}

void DetailPane::showReport(const FileAnalysis& file)
{
    const auto& report = std::get<FileAnalysis::Done>(file.status).report;
    if (report == m_shownReport && file.media == m_shownMedia)
        return;
    m_shownReport = report;
    m_shownMedia = file.media;
    m_report->show(file);
}

void DetailPane::showMessage(const FileAnalysis* file)
{
    if (file == nullptr)
        m_message->show(u"Select a file"_s, {});
    else if (const auto* failed = std::get_if<FileAnalysis::Failed>(&file->status))
        m_message->show(u"Could not analyze this file"_s, failed->reason.section(u'\n', 0, 0),
                        failed->reason.section(u'\n', 1));
    else if (file->is<FileAnalysis::Missing>())
        m_message->show(u"This file has moved or was deleted"_s,
                        u"Its notes are kept. Drop the file in again, from wherever it lives now, "
                        "and they come back."_s);
    else
        m_message->show(u"Waiting its turn"_s, u"Files are analysed one at a time."_s);
}

} // namespace vantroque
