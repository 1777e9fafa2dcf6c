#include "AnalysedFile.h"

#include "Base/Files.h"
#include "Base/Json.h"
#include "Base/Numbers.h"
#include "Review/ReviewStore.h"

#include <fstream>

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

bool storeMany(const WorkspaceFile& analysed, int count, const std::filesystem::path& folder)
{
    Workspace workspace{{}, {}, QDateTime::currentDateTimeUtc()};
    for (int i = 0; i < count; ++i) {
        const FileUrl url =
            FileUrl::fromPath(folder / (Numbers::zeroPadded(i, 3).toStdString() + ".mp4"));
        std::ofstream(url.path()) << i;
        WorkspaceFile file = WorkspaceFile::of(url);
        file.fingerprint = ReviewStore::fingerprint(url).value_or(QString());
        file.report = std::make_shared<const FileReport>(*analysed.report);
        file.media = std::make_shared<const MediaInfo>(*analysed.media);
        workspace.files.push_back(std::move(file));
    }
    return WorkspaceStore::save(workspace).has_value();
}

} // namespace vantroque
