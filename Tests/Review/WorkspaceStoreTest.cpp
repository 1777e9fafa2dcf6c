#include "Review/WorkspaceStore.h"

#include "Base/Json.h"
#include "Review/Reviews.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
namespace fs = std::filesystem;

QString outcome(const Result<void>& result)
{
    return result ? u"done"_s : result.error().description;
}

WorkspaceFile analysed(const QString& name)
{
    WorkspaceFile file = WorkspaceFile::of(FileUrl::fromPath("/v/" + name.toStdString()));
    file.fingerprint = Reviews::fingerprint;
    FileReport report;
    report.fileName = name;
    report.video = VideoSummary{1920, 1080, 25, 30, {}, {}, {}, {}, {}};
    file.report = std::make_shared<const FileReport>(report);
    MediaInfo media;
    media.url = FileUrl::fromPath("/v/" + name.toStdString());
    media.durationSeconds = 30;
    media.signal = SignalInfo();
    file.media = std::make_shared<const MediaInfo>(media);
    return file;
}

Workspace sample()
{
    Workspace workspace;
    workspace.files = {analysed(u"a.mov"_s), WorkspaceFile::of(FileUrl::fromPath("/v/b.mov")),
                       analysed(u"c.mov"_s)};
    workspace.select(FileUrl::fromPath("/v/c.mov"));
    workspace.savedAt = Reviews::noon;
    return workspace;
}

std::string printed(const Workspace& workspace)
{
    return Json::write(workspace).value_or("failed").toStdString();
}

std::string printed(const std::optional<Workspace>& workspace)
{
    return workspace ? printed(*workspace) : "nothing";
}

std::vector<std::string> paths(const std::optional<Workspace>& workspace)
{
    std::vector<std::string> found;
    for (const WorkspaceFile& file : workspace.value_or(Workspace()).files)
        found.push_back(file.path.toStdString());
    return found;
}

class WorkspaceFiles : public testing::Test {
protected:
    /// Loads a stored text.
    std::optional<Workspace> load(const QByteArray& bytes) const
    {
        return WorkspaceStore::load(m_home.folder().write("w.json", bytes));
    }

    DataHome m_home;
};

bool isNow(const QDateTime& time)
{
    return std::abs(time.secsTo(QDateTime::currentDateTimeUtc())) <= 5;
}

TEST_F(WorkspaceFiles, LieInTheSupportFolder)
{
    EXPECT_EQ(WorkspaceStore::path(), m_home.workspace());
    EXPECT_EQ(outcome(WorkspaceStore::save(sample())), u"done"_s);
    EXPECT_TRUE(fs::exists(m_home.workspace()));
    EXPECT_EQ(printed(WorkspaceStore::load()), printed(sample()));
}

TEST_F(WorkspaceFiles, ComeBackAsTheyWereSaved)
{
    const fs::path path = m_home.folder() / "some/where/w.json";
    EXPECT_EQ(outcome(WorkspaceStore::save(sample(), path)), u"done"_s);
    const auto loaded = WorkspaceStore::load(path);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->savedAt, Reviews::noon);
    EXPECT_EQ(loaded->selectedUrl(), FileUrl::fromPath("/v/c.mov"));
    ASSERT_EQ(loaded->files.size(), 3U);
    EXPECT_EQ(*loaded->files[0].report, *sample().files[0].report);
    EXPECT_EQ(*loaded->files[2].media, *sample().files[2].media);
    EXPECT_EQ(loaded->files[1].report, nullptr);
    EXPECT_EQ(loaded->files[1].media, nullptr);
    EXPECT_EQ(loaded->files[1].fingerprint, std::nullopt);
}

TEST_F(WorkspaceFiles, AreOneLineWithSortedKeys)
{
    Workspace workspace;
    workspace.files = {WorkspaceFile::of(FileUrl::fromPath("/v/b.mov"))};
    workspace.files[0].fingerprint = u"0f"_s;
    workspace.files[0].report = std::make_shared<const FileReport>();
    workspace.select(workspace.files[0].url());
    workspace.savedAt = Reviews::noon;
    ASSERT_TRUE(WorkspaceStore::save(workspace));
    EXPECT_EQ(contents(m_home.workspace()).toStdString(),
              R"({"files":[{"fingerprint":"0f","path":"/v/b.mov","report":{"fileName":"",)"
              R"("filePath":"","profiles":[],"summaryLine":""}}],"savedAt":"2026-03-01T12:00:00Z",)"
              R"("selectedPath":"/v/b.mov"})");
}

TEST_F(WorkspaceFiles, WithoutFilesComeBackWithoutAny)
{
    const auto loaded = load(R"({"files": [], "savedAt": "2026-03-01T12:00:00Z"})");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(*loaded, (Workspace{{}, {}, Reviews::noon}));
}

TEST_F(WorkspaceFiles, AnEntryWithoutAPathCostsOnlyThatEntry)
{
    const auto loaded = load(R"({"files": [{"path": "/a"}, {"fingerprint": "x"}, {"path": "/c"}],
                                 "selectedPath": "/c", "savedAt": "2026-03-01T12:00:00Z"})");
    EXPECT_THAT(paths(loaded), ElementsAre("/a", "/c"));
    EXPECT_EQ(loaded->selectedPath, u"/c"_s);
    EXPECT_TRUE(isNow(loaded->savedAt));
}

TEST_F(WorkspaceFiles, ARecordOfAnOlderReleaseCostsOnlyItsEntry)
{
    ASSERT_TRUE(WorkspaceStore::save(sample()));
    QJsonObject root = Json::parse(contents(m_home.workspace()))->toObject();
    for (const auto& [record, part, key] :
         {std::tuple{u"report"_s, u"video"_s, u"width"_s},
          std::tuple{u"media"_s, u"signal"_s, u"headBlackSeconds"_s}}) {
        QJsonArray files = root.value("files"_L1).toArray();
        QJsonObject entry = files[0].toObject();
        QJsonObject outer = entry.value(record).toObject();
        QJsonObject inner = outer.value(part).toObject();
        inner.remove(key);
        outer.insert(part, inner);
        entry.insert(record, outer);
        files[0] = entry;
        EXPECT_THAT(paths(load(Json::print(QJsonObject{{u"files"_s, files},
                                                       {u"savedAt"_s, root.value("savedAt"_L1)}}))),
                    ElementsAre("/v/b.mov", "/v/c.mov"))
            << key.toStdString();
    }
}

TEST_F(WorkspaceFiles, AFieldOfTheWrongTypeCostsOnlyItsEntry)
{
    EXPECT_THAT(paths(load(R"({"files": [{"path": 1}, null, 5, {"path": "/a", "media": []},
                               {"path": "/b", "media": null}]})")),
                ElementsAre("/b"));
}

TEST_F(WorkspaceFiles, WithoutTheTimeOfTheSaveAreOfThePresent)
{
    for (const char* text :
         {R"({"files": [{"path": "/a"}]})", R"({"files": [{"path": "/a"}], "savedAt": 5})"}) {
        const auto loaded = load(text);
        EXPECT_THAT(paths(loaded), ElementsAre("/a"));
        EXPECT_TRUE(isNow(loaded->savedAt));
    }
}

TEST_F(WorkspaceFiles, OfBadEntriesAloneAreNothing)
{
    EXPECT_EQ(load(R"({"files": [{}, 1], "savedAt": "2026-03-01T12:00:00Z"})"), std::nullopt);
    EXPECT_EQ(load(R"({"files": []})"), std::nullopt);
}

TEST_F(WorkspaceFiles, ThatAreNoWorkspaceAreNothingAndStayWhereTheyAre)
{
    for (const QByteArray& bytes : {QByteArray(""), QByteArray("{\"files\": ["), QByteArray("[]"),
                                    QByteArray("{}"), QByteArray(R"({"files": {"path": "/a"}})"),
                                    QByteArray(R"({"files": [{"path": "/a"}], "selectedPath": 5})"),
                                    QByteArray(R"({"files": [{"path": "/a"}], "deep": )")
                                        + QByteArray(512, '[') + QByteArray(512, ']') + '}'}) {
        EXPECT_EQ(load(bytes), std::nullopt) << bytes.left(60).toStdString();
        EXPECT_EQ(contents(m_home.folder() / "w.json"), bytes);
    }
    EXPECT_EQ(WorkspaceStore::load(m_home.folder() / "none.json"), std::nullopt);
    EXPECT_EQ(WorkspaceStore::load(m_home.folder().path()), std::nullopt);
}

TEST_F(WorkspaceFiles, MayBeLargerThanWhatElseIsRead)
{
    const QByteArray blanks(Json::maxBytes, ' ');
    EXPECT_THAT(paths(load(R"({"files": [{"path": "/a"}]})" + blanks)), ElementsAre("/a"));
}

TEST_F(WorkspaceFiles, KeepTheBytesOfAName)
{
    const FileUrl odd = FileUrl::fromPath("/v/caf\xE9 1.mov");
    Workspace workspace{{WorkspaceFile::of(odd)}, {}, Reviews::noon};
    workspace.select(odd);
    EXPECT_EQ(workspace.files[0].path, u"file:///v/caf%E9%201.mov"_s);
    ASSERT_TRUE(WorkspaceStore::save(workspace));
    const auto loaded = WorkspaceStore::load();
    EXPECT_EQ(loaded->files[0].url(), odd);
    EXPECT_EQ(loaded->selectedUrl(), odd);
    EXPECT_EQ(Workspace().selectedUrl(), std::nullopt);
}

TEST_F(WorkspaceFiles, ThatCannotBeWrittenLeaveTheOldOnes)
{
    ASSERT_TRUE(WorkspaceStore::save(sample()));
    Workspace bad = sample();
    MediaInfo media;
    media.durationSeconds = std::numeric_limits<double>::quiet_NaN();
    bad.files[1].media = std::make_shared<const MediaInfo>(media);
    EXPECT_EQ(outcome(WorkspaceStore::save(bad)),
              u".files[1].media.durationSeconds: not a finite number"_s);
    EXPECT_EQ(printed(WorkspaceStore::load()), printed(sample()));
}

TEST_F(WorkspaceFiles, OnAFullDiskStayTheOldOnes)
{
    ASSERT_TRUE(WorkspaceStore::save(sample()));
    {
        const Reviews::FullDisk full;
        EXPECT_EQ(outcome(WorkspaceStore::save(sample())),
                  QString::fromStdString(m_home.workspace().native()) + u": File too large"_s);
    }
    EXPECT_EQ(printed(WorkspaceStore::load()), printed(sample()));
    EXPECT_EQ(std::distance(fs::directory_iterator(m_home.workspace().parent_path()), {}), 1);
}

TEST_F(WorkspaceFiles, InAReadOnlyFolderStayTheOldOnes)
{
    ASSERT_TRUE(WorkspaceStore::save(sample()));
    fs::permissions(m_home.folder().path(), fs::perms::all);
    fs::permissions(m_home.workspace().parent_path(), fs::perms(0555));
    const auto save = [] {
        Reviews::becomeNobody();
        Reviews::leave(
            outcome(WorkspaceStore::save(Workspace{{}, {}, Reviews::noon})).toStdString());
    };
    EXPECT_EXIT(save(), testing::ExitedWithCode(0), "/workspace.json: Permission denied$");
    EXPECT_EQ(printed(WorkspaceStore::load()), printed(sample()));
}

TEST_F(WorkspaceFiles, WithoutAFolderToLieInAreTold)
{
    m_home.folder().write("Vantroque", "a file in its place");
    EXPECT_EQ(outcome(WorkspaceStore::save(sample())),
              QString::fromStdString((m_home.folder() / "Vantroque").native())
                  + u": Not a directory"_s);
}

} // namespace
} // namespace vantroque
