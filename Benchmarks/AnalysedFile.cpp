#include "AnalysedFile.h"

#include "Base/Files.h"
#include "Base/Json.h"

namespace vantroque {

std::optional<WorkspaceFile> analysedFile(const char* reportFile)
{
    const auto bytes = Files::read(reportFile, Json::maxBytes);
    const auto json = bytes ? Json::parse(*bytes) : failure({});
    if (!json)
        return std::nullopt;
    const QJsonObject object = json->toObject().value(u"files").toArray().at(0).toObject();
    auto report = RecordCoding::decode<FileReport>(object.value(u"report"));
    auto media = RecordCoding::decode<MediaInfo>(object.value(u"media"));
    if (!report || !media || !media->signal)
        return std::nullopt;
    WorkspaceFile file = WorkspaceFile::of(media->url);
    file.fingerprint = QString(64, u'0');
    file.report = std::make_shared<const FileReport>(*std::move(report));
    file.media = std::make_shared<const MediaInfo>(*std::move(media));
    return file;
}

} // namespace vantroque
