#include "Review/WorkspaceStore.h"

#include "Base/CompactJson.h"
#include "Base/Files.h"
#include "Base/Json.h"
#include "Base/PathText.h"
#include "Base/SupportFolder.h"

#include <limits>

namespace vantroque {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

WorkspaceFile WorkspaceFile::of(const FileUrl& url)
{
    return {PathText::of(url), {}, {}, {}};
}

FileUrl WorkspaceFile::url() const
{
    return PathText::url(path);
}

void Workspace::select(const FileUrl& url)
{
    selectedPath = PathText::of(url);
}

std::optional<FileUrl> Workspace::selectedUrl() const
{
    return selectedPath ? std::optional(PathText::url(*selectedPath)) : std::nullopt;
}

namespace WorkspaceStore {

namespace {

/// An entry, unless it does not decode.
struct Failable {
    std::optional<WorkspaceFile> file;

    static Failable fromJson(const QJsonValue& json)
    {
        auto decoded = RecordCoding::decode<WorkspaceFile>(json);
        return {decoded ? std::optional(*std::move(decoded)) : std::nullopt};
    }
    bool operator==(const Failable&) const = default;
};

/// The workspace as far as it can be read.
struct Lenient {
    std::vector<Failable> files;
    std::optional<QString> selectedPath;

    VANTROQUE_RECORD(Lenient, files, selectedPath)
};

} // namespace

fs::path path()
{
    return SupportFolder::path() / "workspace.json";
}

Result<void> save(const Workspace& workspace)
{
    return save(workspace, path());
}

Result<void> save(const Workspace& workspace, const fs::path& path)
{
    TRY(Files::makeFolder(path.parent_path()));
    const std::string text = TRY(CompactJson::print(workspace));
    return Files::writeAtomically(path, QByteArray::fromRawData(text.data(), std::ssize(text)));
}

std::optional<Workspace> load()
{
    return load(path());
}

std::optional<Workspace> load(const fs::path& path)
{
    // A long list of long films is larger than what else is read as JSON, and it is our own.
    constexpr qsizetype unlimited = std::numeric_limits<qsizetype>::max();
    const auto bytes = Files::read(path, unlimited);
    if (!bytes)
        return std::nullopt;
    const auto json = Json::parse(*bytes, unlimited);
    if (!json)
        return std::nullopt;
    if (auto workspace = RecordCoding::decode<Workspace>(*json))
        return *std::move(workspace);
    auto lenient = RecordCoding::decode<Lenient>(*json);
    if (!lenient)
        return std::nullopt;
    Workspace workspace{{}, std::move(lenient->selectedPath), QDateTime::currentDateTimeUtc()};
    for (Failable& slot : lenient->files)
        if (slot.file)
            workspace.files.push_back(*std::move(slot.file));
    if (workspace.files.empty())
        return std::nullopt;
    return workspace;
}

} // namespace WorkspaceStore
} // namespace vantroque
