#include "VantroqueApp/Model/Files/KeptReport.h"

#include <QSet>

#include <mutex>

namespace vantroque::KeptReport {

namespace {

class Texts {
public:
    void share(FileReport& report)
    {
        const std::lock_guard lock(m_mutex);
        for (ProfileReport& each : report.profiles)
            share(each);
        if (report.sections)
            for (ProfileReport& each : *report.sections)
                share(each);
    }

private:
    void share(ProfileReport& report)
    {
        for (QString* text : {&report.profileID, &report.profileName, &report.profileShortName,
                              &report.sourceURL, &report.verifiedDate})
            share(*text);
        for (CheckResult& row : report.checks) {
            for (QString* text : {&row.id, &row.title, &row.measured, &row.expected})
                share(*text);
            if (row.fix)
                share(*row.fix);
        }
    }

    void share(QString& text)
    {
        constexpr qsizetype most = 50'000; // what is measured differs from film to film
        if (m_texts.size() >= most)
            m_texts.clear();
        text = *m_texts.insert(text);
    }

    std::mutex m_mutex;
    QSet<QString> m_texts;
};

} // namespace

std::shared_ptr<const FileReport> of(FileReport report)
{
    static Texts texts;
    texts.share(report);
    return std::make_shared<const FileReport>(std::move(report));
}

} // namespace vantroque::KeptReport
