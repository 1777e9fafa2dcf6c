#pragma once

#include "Analysis/Analyzer.h"
#include "Base/Result.h"
#include "VantroqueCLI/ExitStatus.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <string>

namespace vantroque {

/// One file of a call, and what became of it.
struct CheckedFile {
    std::string name; ///< As it was given.
    Result<Analyzer::Analysis> outcome = failure({});

    /// The name for people.
    QString path() const { return QString::fromStdString(name); }
    /// What a report says in a word: without platforms, what its sections say.
    static Verdict verdict(const FileReport& report);
    /// That word, the name and what there is to say.
    QString verdictLine() const;
    /// What it makes the call's.
    ExitStatus status() const;
};

/// A form in which `check` tells its results: a part for each file, in the order of the call.
struct ReportForm {
    QByteArray head;    ///< Before the first part.
    QByteArray between; ///< Two parts.
    QByteArray tail;    ///< After the last part.
    /// Fails when a record has no such form. Any thread.
    std::function<Result<QByteArray>(const CheckedFile&)> part;
};

namespace CheckReports {

ReportForm text(bool color);
/// Each problem once. `profiles` are those of the reports.
ReportForm summary(std::vector<Profile> profiles);
/// `withMedia` adds all that is known of each file.
ReportForm json(bool withMedia);
/// The object that stands for a file in that form. Fails when a record has no such form.
Result<QJsonObject> jsonObject(const CheckedFile& file, bool withMedia);
/// Its part of the document.
QByteArray jsonPart(const QJsonObject& object);
/// One suite a file, one case a row. A failing row is a failure unless it belongs to a
/// recommendation, which never fails a file; a file that could not be analysed is an error.
ReportForm junit();

} // namespace CheckReports
} // namespace vantroque
