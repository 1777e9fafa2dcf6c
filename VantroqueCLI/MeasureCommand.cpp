#include "Export/MeasurementCSV.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/OutputTarget.h"
#include "VantroqueCLI/ProfileChoice.h"

namespace vantroque {

using namespace Qt::StringLiterals;

ExitStatus measure(const Arguments& arguments)
{
    const auto profiles = loadProfiles(arguments);
    if (arguments.files().empty() || !profiles) {
        Output::complain(profiles ? u"no file given"_s : profiles.error().description);
        return ExitStatus::trouble;
    }
    const auto target = OutputTarget::of(arguments, arguments.files());
    if (!target) {
        Output::complain(target.error().description);
        return ExitStatus::trouble;
    }
    ExitStatus status = ExitStatus::passed;
    QString table = MeasurementCSV::headerLine() + u'\n';
    for (const std::string& name : arguments.files()) {
        const auto row = MeasurementCSV::row(FileUrl::fromPath(name), profiles->all);
        if (row) {
            table += *row + u'\n';
        } else {
            Output::complain(QString::fromStdString(name) + u": "_s + row.error().description);
            status = ExitStatus::trouble;
        }
    }
    if (const auto told = target->write(table.toUtf8()); !told) {
        Output::complain(told.error().description);
        status = ExitStatus::trouble;
    }
    return status;
}

} // namespace vantroque
