#include "Base/Json.h"
#include "Base/PathText.h"
#include "Probe/Prober.h"
#include "VantroqueCLI/Commands.h"
#include "VantroqueCLI/Output.h"

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

Result<void> printProbe(const std::string& name)
{
    const auto media = TRY(Prober::probe(FileUrl::fromPath(name)));
    QJsonObject record = TRY(RecordCoding::encode(media)).toObject();
    if (const auto bytes = PathText::base64(media.url.path()))
        record.insert(u"pathBytes"_s, *bytes);
    return Output::print(Json::print(record));
}

} // namespace

ExitStatus probe(const Arguments& arguments)
{
    if (arguments.files().empty()) {
        Output::complain(u"no file given"_s);
        return ExitStatus::trouble;
    }
    ExitStatus status = ExitStatus::passed;
    for (const std::string& name : arguments.files())
        if (const auto printed = printProbe(name); !printed) {
            Output::complain(QString::fromStdString(name) + u": "_s + printed.error().description);
            status = ExitStatus::trouble;
        }
    return status;
}

} // namespace vantroque
